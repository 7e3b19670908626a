#include "support/desktop/BusTraffic.h"

#include <QDeadlineTimer>
#include <stdexcept>

namespace orvantile::test {

QString describe(const std::vector<BusMessage>& messages) {
    QStringList lines;
    for (const auto& message : messages) {
        lines.append(message.sender % u" → " % message.destination % u' ' % message.member);
    }
    return lines.join(u'\n');
}

BusTraffic::BusTraffic(const QString& busAddress) {
    sd_bus* opened = nullptr;
    sd_bus_new(&opened);
    bus.reset(opened);
    if (sd_bus_set_address(opened, busAddress.toLatin1().constData()) < 0 ||
        sd_bus_set_bus_client(opened, 1) < 0 || sd_bus_set_monitor(opened, 1) < 0 ||
        sd_bus_start(opened) < 0 ||
        sd_bus_call_method(opened, "org.freedesktop.DBus", "/org/freedesktop/DBus",
                           "org.freedesktop.DBus.Monitoring", "BecomeMonitor", nullptr, nullptr, "asu", 0,
                           0) < 0) {
        throw std::runtime_error("no monitor of the bus " + busAddress.toStdString());
    }
}

std::optional<BusMessage> BusTraffic::next(const QDeadlineTimer& deadline) const {
    using std::chrono::duration_cast;
    using std::chrono::microseconds;
    for (;;) {
        sd_bus_message* message = nullptr;
        const int result = sd_bus_process(bus.get(), &message);
        if (message != nullptr) {
            BusMessage seen{QString::fromLatin1(sd_bus_message_get_sender(message)),
                            QString::fromLatin1(sd_bus_message_get_destination(message)),
                            QString::fromLatin1(sd_bus_message_get_member(message)),
                            {}};
            const char* text = nullptr;
            if (sd_bus_message_has_signature(message, "") == 0 &&
                sd_bus_message_read(message, "s", &text) > 0) {
                seen.argument = QString::fromUtf8(text);
            }
            sd_bus_message_unref(message);
            return seen;
        }
        if (result < 0) {
            throw std::runtime_error("the bus no longer tells what is sent on it");
        }
        if (result == 0) {
            if (deadline.hasExpired()) {
                return std::nullopt;
            }
            const auto left = duration_cast<microseconds>(deadline.remainingTimeAsDuration());
            sd_bus_wait(bus.get(), static_cast<std::uint64_t>(left.count()));
        }
    }
}

bool BusTraffic::await(const QString& member, const QString& argument, const QDeadlineTimer& deadline) const {
    while (const auto message = next(deadline)) {
        if (message->member == member && (argument.isEmpty() || message->argument == argument)) {
            return true;
        }
    }
    return false;
}

std::vector<BusMessage> BusTraffic::during(std::chrono::milliseconds time) const {
    std::vector<BusMessage> messages;
    const QDeadlineTimer deadline(time);
    while (auto message = next(deadline)) {
        messages.push_back(std::move(*message));
    }
    return messages;
}

} // namespace orvantile::test
