#pragma once

#include "support/desktop/Deadline.h"

#include <QString>
#include <QStringList>
#include <chrono>
#include <memory>
#include <optional>
#include <systemd/sd-bus.h>
#include <vector>

namespace orvantile::test {

/// A message that somebody has sent on a bus.
struct BusMessage {
    QString sender;
    QString destination; ///< empty for signals to everybody
    QString member;      ///< empty for answers
    QString argument;    ///< the first, if it is a text

    /// Whether one of these connections has sent it or is meant by it.
    [[nodiscard]] bool concerns(const QStringList& connections) const {
        return connections.contains(sender) || connections.contains(destination);
    }
};

[[nodiscard]] QString describe(const std::vector<BusMessage>& messages);

/// Sees every message on a bus from now on.
class BusTraffic {
public:
    /// Throws std::runtime_error when the bus does not allow it.
    explicit BusTraffic(const QString& busAddress);

    /// The next message; absent at the deadline.
    [[nodiscard]] std::optional<BusMessage> next(const QDeadlineTimer& deadline) const;

    /// Lets messages pass until there is one of that name with that first argument (or any, if that is
    /// empty). False at the deadline.
    [[nodiscard]] bool await(const QString& member, const QString& argument,
                             const QDeadlineTimer& deadline = QDeadlineTimer(patience)) const;

    /// Waits for so long. Returns what has been sent since the last time.
    [[nodiscard]] std::vector<BusMessage> during(std::chrono::milliseconds time) const;

private:
    struct CloseBus {
        void operator()(sd_bus* bus) const { sd_bus_close_unref(bus); }
    };

    std::unique_ptr<sd_bus, CloseBus> bus;
};

} // namespace orvantile::test
