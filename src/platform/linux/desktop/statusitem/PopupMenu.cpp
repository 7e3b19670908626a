#include "platform/linux/desktop/statusitem/PopupMenu.h"

#include <QAction>
#include <QGuiApplication>
#include <QKeyEvent>
#include <QScreen>
#include <utility>

namespace orvantile::platform::desktop {
namespace {

/// Where the toolkit sees a pixel of the device.
QPoint toPoints(QPoint place) {
    for (const auto* screen : QGuiApplication::screens()) {
        const double scale = screen->devicePixelRatio();
        const QPoint origin = screen->geometry().topLeft(); // the same in pixels and in points
        if (QRect(origin, (QSizeF(screen->size()) * scale).toSize()).contains(place)) {
            return origin + QPointF(QPointF(place - origin) / scale).toPoint();
        }
    }
    return place;
}

} // namespace

PopupMenu::PopupMenu(std::shared_ptr<Menu> menu_, Choice choose_)
    : menu(std::move(menu_)),
      choose(std::move(choose_)) {
    for (std::size_t index = 0; index < menu->items().size(); ++index) {
        addItem(index);
    }
    update();
}

void PopupMenu::addItem(std::size_t index) {
    const auto& item = menu->items()[index];
    if (item.isSeparator()) {
        addSeparator();
        return;
    }
    QString title = item.title;
    auto* action = addAction(title.replace(u'&', QStringLiteral("&&")));
    action->setCheckable(item.tag != 0);
    if (!item.keyEquivalent.isEmpty()) {
        action->setShortcut(QKeySequence(u"Ctrl+" % item.keyEquivalent.toUpper()));
    }
    connect(action, &QAction::triggered, this, [this, index] { choose(menu->items()[index]); });
}

void PopupMenu::openAt(QPoint place) {
    if (menu->willOpen) {
        menu->willOpen(*menu);
    }
    update();
    popup(toPoints(place));
}

void PopupMenu::update() {
    const auto shown = actions();
    for (qsizetype index = 0; index < shown.size(); ++index) {
        shown[index]->setChecked(menu->items()[static_cast<std::size_t>(index)].on);
    }
}

void PopupMenu::keyPressEvent(QKeyEvent* event) {
    const QKeySequence pressed(event->keyCombination());
    for (auto* action : actions()) {
        if (!action->shortcut().isEmpty() && action->shortcut() == pressed) {
            close();
            action->trigger();
            return;
        }
    }
    QMenu::keyPressEvent(event);
}

} // namespace orvantile::platform::desktop
