#pragma once

#include <QString>
#include <QStringList>
#include <chrono>
#include <cstddef>
#include <memory>
#include <sys/types.h>
#include <systemd/sd-bus.h>

namespace orvantile::test {

struct CloseBus {
    void operator()(sd_bus* bus) const { sd_bus_flush_close_unref(bus); }
};

/// What a private session asks of a message bus, on a connection of its own. Each call waits for the answer.
class SessionBusCalls {
public:
    /// Throws std::runtime_error when there is no such bus.
    explicit SessionBusCalls(const QString& address);

    /// Starts the accessibility bus unless it runs. Empty when that fails.
    [[nodiscard]] QString accessibilityBusAddress() const;
    [[nodiscard]] bool accessibilityEnabled() const;
    void setAccessibilityEnabled(bool enabled) const;

    /// The process that owns `name`; 0 when nobody does.
    [[nodiscard]] pid_t ownerOf(const QString& name) const;

    /// The unique names of the connections that a process has to the bus.
    [[nodiscard]] QStringList connectionsOf(pid_t process) const;

    /// Whether the owner of `name` answers a ping: it handles what comes from the bus.
    [[nodiscard]] bool answers(const QString& name, std::chrono::milliseconds patience) const;

    /// How many match rules the bus keeps for a connection; 0 when it does not tell.
    [[nodiscard]] std::size_t matchRules(const QString& connection) const;

    /// The process of the bus itself.
    [[nodiscard]] pid_t daemon() const { return ownerOf(QStringLiteral("org.freedesktop.DBus")); }

private:
    std::unique_ptr<sd_bus, CloseBus> bus;
};

} // namespace orvantile::test
