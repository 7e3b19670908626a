#include "platform/linux/x11/StartupIdentifier.h"

#include "platform/linux/x11/Properties.h"

#include <QSysInfo>
#include <QUuid>
#include <unistd.h>
#include <utility>

namespace orvantile::platform::x11 {
namespace {

using Qt::StringLiterals::operator""_s;

/// Unique, and with the time at its end, as the start-up notification protocol has it.
QString identifier(std::uint32_t time) {
    return u"orvantile-%1-%2-%3_TIME%4"_s.arg(QString::number(getpid()), QSysInfo::machineHostName(),
                                              QUuid::createUuid().toString(QUuid::Id128),
                                              QString::number(time));
}

} // namespace

void askStartupIdentifier(XConnection& connection, xcb_window_t window,
                          std::function<void(const QString&)> answer) {
    // Toolkits keep the time on a window of its own where the window manager can follow it there.
    connection.ask<xcb_get_property_reply_t>(
        requestProperty(connection, window, connection.atoms().userTimeWindow, 1),
        [&connection, window, answer = std::move(answer)](const auto* reply) {
            const auto other = words(reply);
            connection.ask<xcb_get_property_reply_t>(
                requestProperty(connection, other.empty() ? window : other.front(),
                                connection.atoms().userTime, 1),
                [answer](const auto* timeReply) {
                    const auto time = words(timeReply);
                    answer(time.empty() || time.front() == 0 ? QString() : identifier(time.front()));
                });
        });
}

} // namespace orvantile::platform::x11
