#pragma once

#include "support/desktop/Deadline.h"

#include <QByteArray>
#include <QString>
#include <QStringList>
#include <functional>
#include <memory>
#include <systemd/sd-bus.h>

namespace orvantile::test {

/// A bar that shows status items, as far as an item can tell: what collects items on the session bus
/// (org.kde.StatusNotifierWatcher), and a host behind it. Works while one of its members waits.
class ScriptedBar {
public:
    /// On a connection of its own. Throws std::runtime_error when there is no such bus.
    explicit ScriptedBar(const QString& busAddress);
    ScriptedBar(const ScriptedBar&) = delete;
    ScriptedBar& operator=(const ScriptedBar&) = delete;
    ~ScriptedBar() = default;

    /// So many registrations are refused from now on.
    int refusals = 0;

    /// Takes its name on the bus, or gives it back and forgets its items. Throws std::runtime_error when the
    /// name is somebody else's.
    void appear();
    void disappear();

    /// Whether there is a host; says so.
    void setHost(bool present);

    /// The items' names on the bus.
    [[nodiscard]] const QStringList& items() const { return registered; }

    /// How often an item has tried to register, and has asked whether there is a host.
    [[nodiscard]] int registrations() const { return tried; }

    [[nodiscard]] int hostQuestions() const { return asked; }

    /// Serves the bus until the condition holds, which is asked again and again. False at the deadline.
    [[nodiscard]] bool await(const std::function<bool()>& condition,
                             const QDeadlineTimer& deadline = QDeadlineTimer(patience)) const;

    /// Whether the entry of that title is checked when the menu of the first item opens; false without such
    /// an entry.
    [[nodiscard]] bool isChecked(const QString& title) const;

    /// Chooses an entry of the menu of the first item, as a bar does for a click. False when there is none.
    [[nodiscard]] bool choose(const QString& title) const;

    /// Gives the first item a token for the window that the user's next choice opens. False when it takes
    /// none.
    [[nodiscard]] bool giveToken(const QByteArray& token) const;

private:
    friend struct ScriptedBarMethods;

    struct CloseBus {
        void operator()(sd_bus* bus) const { sd_bus_flush_close_unref(bus); }
    };

    /// The entry's identifier; 0 when there is none.
    [[nodiscard]] int find(const QString& title) const;
    void announce(const char* signal) const;
    void forget(const QString& item);

    std::unique_ptr<sd_bus, CloseBus> bus;
    QStringList registered;
    int hasHost = 1;
    int tried = 0;
    int asked = 0;
};

} // namespace orvantile::test
