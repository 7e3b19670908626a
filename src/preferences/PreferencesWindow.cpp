#include "preferences/PreferencesWindow.h"

#include "preferences/Localized.h"
#include "preferences/controls/AccessibleRole.h"
#include "preferences/controls/FormPalette.h"

#include <QCloseEvent>
#include <QCursor>
#include <QGuiApplication>
#include <QKeyEvent>
#include <QScreen>
#include <QToolTip>

namespace orvantile {
namespace {

constexpr int titleBarRoom = 40; // for what the window manager adds

const QScreen* screenOfUser() {
    const auto* underPointer = QGuiApplication::screenAt(QCursor::pos());
    return underPointer != nullptr ? underPointer : QGuiApplication::primaryScreen();
}

} // namespace

PreferencesWindow::PreferencesWindow(Settings& settings, platform::Platform& platform_)
    : QWidget(nullptr, Qt::Window | Qt::CustomizeWindowHint | Qt::WindowTitleHint | Qt::WindowSystemMenuHint |
                           Qt::WindowMinimizeButtonHint | Qt::WindowCloseButtonHint),
      platform(platform_),
      content(settings, platform),
      layout(this) {
    setAccessibleRole(*this, QAccessible::Window);
    setWindowTitle(localized("Orvantile Preferences"));
    setWindowRole(QStringLiteral("preferences"));
    layout.setContentsMargins(0, 0, 0, 0);
    layout.setSizeConstraint(QLayout::SetFixedSize);
    layout.addWidget(&content);
    followAppearance();
    appearanceToken = platform.appearance->observeChanges([this] { followAppearance(); });
    center();
}

void PreferencesWindow::followAppearance() {
    const auto colours = formPalette(platform.appearance->isDark());
    setPalette(colours);
    QToolTip::setPalette(colours);
}

void PreferencesWindow::center() {
    const auto* screen = screenOfUser();
    if (screen == nullptr) {
        return;
    }
    const auto room = screen->availableGeometry();
    content.setHeightLimit(room.height() - titleBarRoom);
    layout.activate();
    const auto size = sizeHint();
    move(room.x() + (room.width() - size.width()) / 2,
         room.y() + std::max(0, (room.height() - size.height() - titleBarRoom) / 2));
}

void PreferencesWindow::present() {
    if (isMinimized()) {
        setWindowState(windowState() & ~Qt::WindowMinimized);
    }
    if (!isVisible()) {
        if (placeWhenClosed) {
            move(*placeWhenClosed);
        }
        show();
    }
    raise();
    activateWindow();
    platform.activation->bringToFront(winId());
}

void PreferencesWindow::closeEvent(QCloseEvent* event) {
    placeWhenClosed = pos();
    QWidget::closeEvent(event);
}

void PreferencesWindow::keyPressEvent(QKeyEvent* event) {
    constexpr QKeyCombination closing(Qt::ControlModifier,
                                      Qt::Key_W); // not on every desktop among the standard ones
    if (event->matches(QKeySequence::Cancel) || event->matches(QKeySequence::Close) ||
        event->keyCombination() == closing) {
        close();
    } else {
        QWidget::keyPressEvent(event);
    }
}

} // namespace orvantile
