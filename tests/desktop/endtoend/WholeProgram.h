#pragma once

#include "desktop/applications/Stage.h"
#include "desktop/preferences/PreferencesControls.h"
#include "desktop/statusitem/ScriptedBar.h"

#include <memory>

namespace orvantile::test {

/// The program with an editor in front of it and a bar that has its item, on a grey desktop.
class WholeProgram final : public PreferencesControls {
public:
    /// `settings` is what the settings file holds when the program starts.
    explicit WholeProgram(const QByteArray& settings);

    [[nodiscard]] Stage& stage() { return desktop; }

    [[nodiscard]] ScriptedBar& bar() { return statusBar; }

    [[nodiscard]] const AccessibleClient& reader() const override { return client; }

    [[nodiscard]] ChildProcess& process() { return *program; }

    /// Starts the program, waits for its preferences and its item.
    void start();

    /// Brings the preferences to the front by the item's menu.
    void showPreferences();

    void closePreferences();

    /// Gives the focus to the editor, waits until it is known and its commands are, and fires its fence.
    /// Throws std::runtime_error when it is not named.
    ShownHud fire();

    /// Fires the editor's fence, which is not to be named.
    QString fireInVain();

    /// Waits until the HUD has gone; how long it was there since it has come.
    std::chrono::duration<double> awaitHidden(const ShownHud& hud);

    /// Chooses the entry next to the present one in a picker, as people do.
    void chooseNeighbour(const QString& present, const QString& key, const QString& wanted);

    /// The contents of the settings file.
    [[nodiscard]] QByteArray settings();

private:
    void paintDesktopGrey();

    Stage desktop;
    ScriptedBar statusBar;
    AccessibleClient client;
    Window editor;
    std::unique_ptr<ChildProcess> program;
};

} // namespace orvantile::test
