#include "platform/linux/desktop/updates/UpdateWorker.h"

#include <QCoreApplication>
#include <QDeadlineTimer>

namespace orvantile::platform::desktop {
namespace {

/// How long the program's end may wait for the thread's.
constexpr std::chrono::milliseconds patience(1000);

} // namespace

class UpdateWorker::Inside : public QObject {
public:
    explicit Inside(UpdateSetup setup_) : setup(std::move(setup_)) {}

    UpdateEngine& engine() {
        // Made here rather than in the constructor, which runs in the main thread.
        if (!made) {
            made.emplace(setup);
        }
        return *made;
    }

private:
    UpdateSetup setup;
    std::optional<UpdateEngine> made;
};

UpdateWorker::UpdateWorker(UpdateSetup setup)
    : thread(std::make_unique<QThread>().release()),
      inside(std::make_unique<Inside>(std::move(setup)).release()) {
    thread->setObjectName(QStringLiteral("updates"));
    inside->moveToThread(thread);
    QObject::connect(thread, &QThread::finished, inside, &QObject::deleteLater);
    QObject::connect(thread, &QThread::finished, thread, &QObject::deleteLater);
    // A thread that outlived the application object would use what is gone; one may still be ending when
    // this object no longer exists.
    QObject::connect(qApp, &QCoreApplication::aboutToQuit, thread, [running = thread] {
        running->quit();
        running->wait(QDeadlineTimer(patience));
    });
    thread->start();
}

UpdateWorker::~UpdateWorker() {
    thread->quit();
}

template <typename Result>
std::function<void(Result)> UpdateWorker::onMainThread(std::function<void(Result)> receiver) const {
    return [receiver = std::move(receiver), guard = std::weak_ptr(alive)](Result result) {
        QMetaObject::invokeMethod(
            qApp,
            [receiver, guard, result = std::move(result)]() mutable {
                if (!guard.expired()) {
                    receiver(std::move(result));
                }
            },
            Qt::QueuedConnection);
    };
}

void UpdateWorker::check(std::function<void(CheckResult)> done) {
    QMetaObject::invokeMethod(
        inside, [object = inside, done = onMainThread(std::move(done))] { object->engine().check(done); });
}

void UpdateWorker::download(AvailableUpdate update, std::function<void(qint64)> progress,
                            std::function<void(DownloadResult)> done) {
    QMetaObject::invokeMethod(
        inside,
        [object = inside, update = std::move(update), progress = onMainThread(std::move(progress)),
         done = onMainThread(std::move(done))] { object->engine().download(update, progress, done); });
}

} // namespace orvantile::platform::desktop
