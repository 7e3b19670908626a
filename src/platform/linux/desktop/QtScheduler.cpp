#include "platform/linux/desktop/QtScheduler.h"

#include <QGuiApplication>
#include <QScreen>
#include <QTimer>
#include <algorithm>
#include <chrono>
#include <cmath>
#include <limits>
#include <utility>

namespace orvantile::platform::desktop {
namespace {

/// A timer of the toolkit. Its work may destroy it.
class TimerScheduled final : public Scheduled {
public:
    TimerScheduled(int milliseconds, bool once, Scheduler::Work work) {
        timer.setTimerType(Qt::PreciseTimer);
        timer.setSingleShot(once);
        QObject::connect(&timer, &QTimer::timeout, &timer, [work = std::move(work)] {
            const auto running = work; // `work` goes when the timer is destroyed by what it runs
            running();
        });
        timer.start(milliseconds);
    }

    void invalidate() override { timer.stop(); }

private:
    QTimer timer;
};

/// Whole milliseconds, never early; what the toolkit's timers cannot express is as far away as they go.
int milliseconds(double seconds) {
    if (!(seconds > 0)) {
        return 0;
    }
    return static_cast<int>(std::min(std::ceil(seconds * 1000), double{std::numeric_limits<int>::max()}));
}

} // namespace

double QtScheduler::now() const {
    return std::chrono::duration<double>(std::chrono::steady_clock::now().time_since_epoch()).count();
}

void QtScheduler::runLater(Work work) {
    QMetaObject::invokeMethod(&context, std::move(work), Qt::QueuedConnection);
}

std::unique_ptr<Scheduled> QtScheduler::runAfter(double seconds, Work work) {
    return std::make_unique<TimerScheduled>(milliseconds(seconds), true, std::move(work));
}

std::unique_ptr<Scheduled> QtScheduler::runEveryFrame(Work work) {
    const auto* screen = QGuiApplication::primaryScreen();
    const double rate = screen != nullptr ? std::clamp(screen->refreshRate(), 30.0, 240.0) : 60.0;
    return std::make_unique<TimerScheduled>(static_cast<int>(1000 / rate), false, std::move(work));
}

} // namespace orvantile::platform::desktop
