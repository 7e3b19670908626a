#include "unit/updates/Waiting.h"

#include <QCoreApplication>
#include <QDeadlineTimer>
#include <QEventLoop>
#include <QTimer>
#include <chrono>

namespace orvantile::test {

bool turnUntil(const std::function<bool()>& condition) {
    const QDeadlineTimer deadline(std::chrono::seconds(15));
    // Wakes the loop for conditions that no event of this thread announces.
    QTimer look;
    look.start(std::chrono::milliseconds(20));
    while (!condition() && !deadline.hasExpired()) {
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    }
    return condition();
}

} // namespace orvantile::test
