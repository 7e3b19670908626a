#pragma once

#include "platform/linux/desktop/statusitem/KeyboardSymbol.h"
#include "platform/linux/desktop/statusitem/TrayConnection.h"

#include <QColor>
#include <QImage>
#include <QPoint>
#include <functional>
#include <memory>
#include <optional>
#include <vector>

namespace orvantile::platform::desktop {

/// An icon embedded in the window of a classic system tray, whenever there is one.
class TrayIcon {
public:
    /// Shows the menu at a place on the screen, in pixels.
    using ShowMenu = std::function<void(QPoint)>;

    /// `fallbackColor` says how to draw on a tray that does not tell its colour.
    TrayIcon(std::unique_ptr<TrayConnection> connection, ShowMenu showMenu,
             std::function<QColor()> fallbackColor);
    TrayIcon(const TrayIcon&) = delete;
    TrayIcon& operator=(const TrayIcon&) = delete;
    ~TrayIcon();

    /// Whether to show the icon, if there is a tray.
    void setWanted(bool wanted);

    /// The symbol and what it is called; none shows nothing.
    void setSymbol(const std::optional<KeyboardSymbol>& symbol, const QString& description);

    /// Draws once more, for another colour.
    void repaint();

private:
    void handle(const xcb_generic_event_t& event);
    void findManager();
    void dock();
    void undock();
    void paint();
    void press(const xcb_button_press_event_t& event);

    /// What is seen where the symbol is not; absent while the window is not on the screen.
    [[nodiscard]] std::optional<QImage> background() const;
    [[nodiscard]] QColor color(const QImage& background) const;
    [[nodiscard]] std::vector<std::uint32_t> cardinals(xcb_atom_t property) const;

    std::unique_ptr<TrayConnection> connection;
    ShowMenu showMenu;
    std::function<QColor()> fallbackColor;
    std::optional<KeyboardSymbol> symbol;
    QString description;
    bool wanted = false;
    xcb_atom_t selection = XCB_ATOM_NONE;
    xcb_atom_t managerMessage = XCB_ATOM_NONE;
    xcb_atom_t colors = XCB_ATOM_NONE;
    xcb_window_t manager = XCB_WINDOW_NONE;
    xcb_window_t window = XCB_WINDOW_NONE;
    xcb_colormap_t colormap = XCB_NONE;
    bool hasAlpha = false;
    int width = 0;
    int height = 0;
};

} // namespace orvantile::platform::desktop
