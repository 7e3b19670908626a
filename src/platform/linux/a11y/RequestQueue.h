#pragma once

#include "platform/linux/a11y/BusConnection.h"

#include <QTimer>
#include <cstddef>
#include <deque>
#include <functional>
#include <memory>
#include <string>

namespace orvantile::platform::a11y {

/// A question to an object of one application.
struct Request {
    std::string path;
    const char* interface;
    const char* member;
    std::function<bool(sd_bus_message& question)> fill; ///< appends the arguments; none when empty
    BusConnection::Handler answered;                    ///< gets the answer, or the application's error
};

/// Questions to one application, a limited number at a time. An application that leaves one unanswered is
/// left alone until it answers a last, patient one. Main thread only.
class RequestQueue {
public:
    RequestQueue(BusConnection& bus, std::string name);

    /// There is room for more questions and none are waiting: takes a small piece of further work; false when
    /// there is none.
    std::function<bool()> onRoom;

    /// Every question has been answered.
    std::function<void()> onDone;

    /// The application does not answer; what was asked is forgotten.
    std::function<void()> onSilent;

    /// It answers again.
    std::function<void()> onAwake;

    void ask(Request request);

    [[nodiscard]] bool isSilent() const { return silent; }

    [[nodiscard]] bool isBusy() const { return outstanding > 0 || !waiting.empty(); }

    /// Asks `onRoom` for more.
    void pump();

private:
    void send(Request request);
    void fallSilent();

    static constexpr std::size_t mostOutstanding = 96;
    static constexpr int mostPieces = 4; ///< of further work in one turn

    BusConnection& bus;
    std::string name;
    std::deque<Request> waiting;
    std::size_t outstanding = 0;
    bool silent = false;
    bool pumping = false;
    QTimer later;
    std::shared_ptr<const int> self = std::make_shared<int>();
};

} // namespace orvantile::platform::a11y
