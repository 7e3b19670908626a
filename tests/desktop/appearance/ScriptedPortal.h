#pragma once

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusVirtualObject>
#include <QString>
#include <map>
#include <utility>
#include <vector>

namespace orvantile::test {

/// A settings portal that says what a test wants, on a connection of its own. Answers while the main loop
/// turns.
class ScriptedPortal final : public QDBusVirtualObject {
public:
    explicit ScriptedPortal(const QString& bus);
    ScriptedPortal(const ScriptedPortal&) = delete;
    ScriptedPortal& operator=(const ScriptedPortal&) = delete;
    ~ScriptedPortal() override;

    using Key = std::pair<QString, QString>; ///< namespace and key

    /// What the portal answers; anything else is an error.
    std::map<Key, QVariant> values;

    /// Only the younger method for reading.
    bool knowsOnlyReadOne = false;

    /// Keeps questions instead of answering them.
    bool hangs = false;

    /// Appears on the bus, and disappears from it.
    void appear();
    void disappear();

    /// Changes a value and says so.
    void change(const Key& key, const QVariant& value);

    /// Answers what was asked while it hung.
    void resume();

    [[nodiscard]] int questions() const { return asked; }

    [[nodiscard]] QString introspect(const QString&) const override { return {}; }

    bool handleMessage(const QDBusMessage& message, const QDBusConnection& connection) override;

private:
    void answer(const QDBusMessage& message);

    QDBusConnection connection;
    std::vector<QDBusMessage> kept;
    int asked = 0;
};

inline const ScriptedPortal::Key colorScheme{QStringLiteral("org.freedesktop.appearance"),
                                             QStringLiteral("color-scheme")};
inline const ScriptedPortal::Key gnomeColorScheme{QStringLiteral("org.gnome.desktop.interface"),
                                                  QStringLiteral("color-scheme")};
inline const ScriptedPortal::Key gnomeTheme{QStringLiteral("org.gnome.desktop.interface"),
                                            QStringLiteral("gtk-theme")};

} // namespace orvantile::test
