#pragma once

#include "support/desktop/Deadline.h"

#include <QCoreApplication>
#include <QEventLoop>
#include <QTimer>
#include <functional>

namespace orvantile::test {

/// Turns the main loop until `done` holds; false at the deadline.
inline bool awaitThat(const std::function<bool()>& done, QDeadlineTimer deadline = QDeadlineTimer(patience)) {
    QTimer wake; // ends a rest of the loop now and then, for what no event announces
    wake.start(20);
    while (!done()) {
        if (deadline.hasExpired()) {
            return false;
        }
        QCoreApplication::processEvents(QEventLoop::AllEvents | QEventLoop::WaitForMoreEvents);
    }
    return true;
}

/// Turns the main loop for so long, for what must not happen.
inline void turnFor(int milliseconds) {
    const QDeadlineTimer deadline(milliseconds);
    static_cast<void>(awaitThat([] { return false; }, deadline));
}

} // namespace orvantile::test
