#include "platform/linux/a11y/RequestQueue.h"

#include "platform/linux/a11y/ReplyDecoder.h"

#include <utility>

namespace orvantile::platform::a11y {

RequestQueue::RequestQueue(BusConnection& bus_, std::string name_) : bus(bus_), name(std::move(name_)) {
    later.setSingleShot(true);
    later.setInterval(0);
    QObject::connect(&later, &QTimer::timeout, &later, [this] { pump(); });
}

void RequestQueue::ask(Request request) {
    if (!silent) {
        waiting.push_back(std::move(request));
        pump();
    }
}

void RequestQueue::pump() {
    if (std::exchange(pumping, true)) {
        return;
    }
    bool more = true;
    int pieces = 0;
    while (!silent && more && outstanding < mostOutstanding) {
        if (!waiting.empty()) {
            auto next = std::move(waiting.front());
            waiting.pop_front();
            send(std::move(next));
        } else if (pieces++ < mostPieces) {
            more = onRoom && onRoom();
        } else {
            later.start();
            break;
        }
    }
    pumping = false;
    if (!silent && !more && !isBusy() && onDone) {
        onDone();
    }
}

void RequestQueue::send(Request request) {
    auto question = bus.method(name, request.path, request.interface, request.member);
    if (!question || (request.fill && !request.fill(*question))) {
        return;
    }
    ++outstanding;
    bus.call(std::move(question), self,
             [this, answered = std::move(request.answered)](sd_bus_message& answer) {
                 --outstanding;
                 if (silent) {
                     return;
                 }
                 if (isSilence(answer)) {
                     fallSilent();
                     return;
                 }
                 answered(answer);
                 pump();
             });
}

void RequestQueue::fallSilent() {
    silent = true;
    waiting.clear();
    if (onSilent) {
        onSilent();
    }
    bus.call(
        bus.method(name, "/org/a11y/atspi/accessible/root", "org.a11y.atspi.Accessible", "GetRole"), self,
        [this](sd_bus_message&) {
            silent = false;
            if (onAwake) {
                onAwake();
            }
        },
        BusConnection::endless);
}

} // namespace orvantile::platform::a11y
