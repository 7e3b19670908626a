#include "support/desktop/Deadline.h"

#include <QCoreApplication>
#include <QEventLoop>
#include <QSocketNotifier>
#include <QTimer>
#include <algorithm>
#include <limits>
#include <poll.h>

namespace orvantile::test {
namespace {

bool isReadable(int descriptor, int milliseconds) {
    pollfd entry{descriptor, POLLIN, 0};
    return ::poll(&entry, 1, milliseconds) > 0;
}

} // namespace

bool awaitReadable(int descriptor, const QDeadlineTimer& deadline) {
    if (isReadable(descriptor, 0)) {
        return true;
    }
    const auto remaining = std::clamp<qint64>(deadline.remainingTime(), 0, std::numeric_limits<int>::max());
    if (QCoreApplication::instance() == nullptr) {
        return isReadable(descriptor, static_cast<int>(remaining));
    }
    QEventLoop loop;
    QSocketNotifier notifier(descriptor, QSocketNotifier::Read);
    QObject::connect(&notifier, &QSocketNotifier::activated, &loop, [&] {
        notifier.setEnabled(false);
        loop.quit();
    });
    QTimer::singleShot(std::chrono::milliseconds(remaining), Qt::PreciseTimer, &loop, [&] { loop.quit(); });
    loop.exec();
    return isReadable(descriptor, 0);
}

} // namespace orvantile::test
