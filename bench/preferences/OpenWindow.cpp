#include "preferences/OpenWindow.h"

#include "platform/linux/desktop/DesktopAppearance.h"
#include "platform/linux/desktop/IniDefaults.h"
#include "platform/linux/desktop/QtScheduler.h"
#include "platform/null/NullPlatform.h"

#include <QCoreApplication>
#include <QDeadlineTimer>
#include <QEventLoop>
#include <QGuiApplication>
#include <cstdlib>
#include <stdexcept>
#include <xcb/xcb.h>

namespace orvantile::bench {
namespace {

using Qt::StringLiterals::operator""_s;

/// Sees that a widget has been painted.
class PaintWatch final : public QObject {
public:
    explicit PaintWatch(QWidget& watched) { watched.installEventFilter(this); }

    [[nodiscard]] bool painted() const { return seen; }

protected:
    bool eventFilter(QObject* watched, QEvent* event) override {
        seen = seen || event->type() == QEvent::Paint;
        return QObject::eventFilter(watched, event);
    }

private:
    bool seen = false;
};

/// Returns when the server has drawn what was sent to it.
void synchronize() {
    auto* connection = qGuiApp->nativeInterface<QNativeInterface::QX11Application>()->connection();
    const auto cookie = xcb_get_input_focus(connection);
    std::free(xcb_get_input_focus_reply(connection, cookie, nullptr));
}

std::unique_ptr<platform::Platform> makePlatform(const QTemporaryDir& directory) {
    auto platform = platform::makeNullPlatform();
    platform->scheduler = std::make_unique<platform::desktop::QtScheduler>();
    platform->appearance = std::make_unique<platform::desktop::DesktopAppearance>();
    platform->defaults = std::make_unique<platform::desktop::IniDefaults>(
        directory.filePath(u"orvantile.ini"_s).toStdString());
    return platform;
}

} // namespace

OpenWindow::OpenWindow() : platform(makePlatform(directory)), store(*platform->defaults) {}

void OpenWindow::open() {
    if (!made) {
        made = std::make_unique<PreferencesWindow>(store, *platform);
    }
    made->present();
    awaitPicture();
}

void OpenWindow::awaitPicture() {
    const PaintWatch watch(*made);
    const QDeadlineTimer deadline(std::chrono::seconds(10));
    while (!watch.painted()) {
        if (deadline.hasExpired()) {
            throw std::runtime_error("the window is not painted");
        }
        QCoreApplication::processEvents(QEventLoop::AllEvents | QEventLoop::WaitForMoreEvents);
    }
    synchronize();
}

void OpenWindow::close() {
    made->close();
    QCoreApplication::processEvents();
    synchronize();
    QCoreApplication::processEvents();
}

void OpenWindow::discard() {
    made.reset();
    QCoreApplication::processEvents();
}

void OpenWindow::select(PreferencesTab tab) {
    made->view().select(tab);
    made->update();
    awaitPicture();
}

} // namespace orvantile::bench
