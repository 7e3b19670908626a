#pragma once

#include "desktop/compatibility/Program.h"
#include "support/desktop/FileDescriptor.h"
#include "support/desktop/PrivateSession.h"
#include "support/desktop/Window.h"

#include <QJsonObject>
#include <memory>
#include <vector>

namespace orvantile::test {

/// What a menu item shows.
struct MenuEntry {
    QString title; ///< without the marks of mnemonics
    QString keys;  ///< as the program writes them; empty when it has none
    QString menu;  ///< in the menu bar, that it is in
    bool enabled = false;
    QStringList otherKeys{}; ///< that fire it as well, where that is known
};

/// Knows what the menus of a program show, from another source than the program under test.
class Truth {
public:
    /// To be made before the program is started.
    Truth(PrivateSession& session, const Program& program);
    ~Truth();

    /// Environment of the program alone, set and taken back around its start.
    void enterEnvironment();
    void leaveEnvironment();

    /// The items of the program's main window. Throws std::runtime_error when nobody answers.
    [[nodiscard]] std::vector<MenuEntry> read(const Window& window);

    /// The items with these keys among those read last, as they are now.
    [[nodiscard]] std::vector<MenuEntry> again(const Window& window, const QString& keys);

    /// Whether it is known what has been triggered.
    [[nodiscard]] bool knowsTriggered() const { return source == TruthSource::insideQt; }

    /// The menu actions triggered since the last call.
    [[nodiscard]] std::vector<MenuEntry> triggered();

    /// Forgets the program, which has ended.
    void disconnect();

private:
    [[nodiscard]] std::vector<MenuEntry> declaredEntries() const;
    void readShortcutsWindow(const QString& file, const QString& resource);
    void connectTo(const Window& window);
    QJsonObject ask(const QJsonObject& request);
    [[nodiscard]] std::vector<MenuEntry> entriesOf(const QJsonObject& answer) const;

    PrivateSession& session;
    TruthSource source;
    std::vector<std::pair<QString, QString>> declared;
    QString folder;
    std::unique_ptr<ChildProcess> reader;
    FileDescriptor client;
};

} // namespace orvantile::test
