#pragma once

#include "support/desktop/Deadline.h"

#include <QString>
#include <deque>
#include <memory>
#include <optional>
#include <string>
#include <sys/types.h>
#include <systemd/sd-bus.h>

namespace orvantile::test {

/// Hears every HUD that a program shows as a screen reader does: as a notification on the accessibility bus
/// whose name is the label. For desktops where windows cannot be watched.
class HudListener {
public:
    /// Throws std::runtime_error when there is no such bus.
    explicit HudListener(const QString& busAddress);
    HudListener(const HudListener&) = delete;
    HudListener& operator=(const HudListener&) = delete;
    ~HudListener();

    /// Listens to that process from now on.
    void attendTo(pid_t process);

    /// The label of the next HUD not yet taken; absent at the deadline.
    std::optional<QString> awaitNext(QDeadlineTimer deadline = QDeadlineTimer(patience));

    /// Waits until no HUD is shown. False at the deadline.
    bool awaitHidden(QDeadlineTimer deadline = QDeadlineTimer(patience));

private:
    struct CloseBus {
        void operator()(sd_bus* bus) const { sd_bus_flush_close_unref(bus); }
    };

    bool turn(const QDeadlineTimer& deadline);
    void handle(sd_bus_message& message);
    [[nodiscard]] pid_t processOf(const std::string& sender) const;
    [[nodiscard]] bool isNotification(const std::string& sender, const std::string& path) const;
    [[nodiscard]] QString nameOf(const std::string& sender, const std::string& path) const;

    std::unique_ptr<sd_bus, CloseBus> bus;
    pid_t attended = 0;
    std::deque<QString> heard;
    bool shown = false;
};

} // namespace orvantile::test
