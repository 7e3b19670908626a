#include "platform/linux/wayland/CompositorLoss.h"

#include <QString>
#include <QtGlobal>
#include <cstdio>
#include <cstdlib>
#include <poll.h>

namespace orvantile::platform::wayland {
namespace {

using Qt::StringLiterals::operator""_s;

/// A message handler can be handed nothing.
int& watchedSocket() {
    static int socket = -1;
    return socket;
}

QtMessageHandler& previousHandler() {
    static QtMessageHandler handler = nullptr;
    return handler;
}

bool compositorIsGone() {
    // One that ends closes its connections one after the other.
    constexpr int patienceMilliseconds = 500;
    pollfd state{watchedSocket(), 0, 0};
    return state.fd >= 0 && poll(&state, 1, patienceMilliseconds) > 0 &&
           (state.revents & (POLLHUP | POLLERR | POLLNVAL)) != 0;
}

void handleMessage(QtMsgType type, const QMessageLogContext& context, const QString& text) {
    if (type != QtDebugMsg && type != QtInfoMsg && text.startsWith(u"The Wayland connection"_s) &&
        compositorIsGone()) {
        std::fflush(nullptr);
        std::_Exit(EXIT_SUCCESS);
    }
    previousHandler()(type, context, text);
}

} // namespace

void leaveCleanlyWithoutCompositor() {
    previousHandler() = qInstallMessageHandler(handleMessage);
}

void watchCompositor(int socket) {
    watchedSocket() = socket;
}

} // namespace orvantile::platform::wayland
