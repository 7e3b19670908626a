#pragma once

#include "platform/Menu.h"

#include <QMenu>
#include <QPoint>
#include <cstddef>
#include <functional>
#include <memory>

namespace orvantile::platform::desktop {

/// The status menu with the toolkit's widgets, for bars that do not show menus by themselves.
class PopupMenu final : public QMenu {
public:
    using Choice = std::function<void(const MenuItem&)>;

    PopupMenu(std::shared_ptr<Menu> menu, Choice choose);

    /// Opens the menu near a place on the screen, in pixels of the device.
    void openAt(QPoint place);

    /// Shows the states as they are now.
    void update();

protected:
    /// The items' shortcuts work while the menu is open.
    void keyPressEvent(QKeyEvent* event) override;

private:
    void addItem(std::size_t index);

    std::shared_ptr<Menu> menu;
    Choice choose;
};

} // namespace orvantile::platform::desktop
