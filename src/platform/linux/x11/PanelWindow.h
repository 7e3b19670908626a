#pragma once

#include "platform/linux/x11/PixelRect.h"
#include "platform/linux/x11/XConnection.h"

#include <QRegion>
#include <QString>

namespace orvantile::platform::x11 {

/// A window out of the window manager's hands: translucent, above everything, on all workspaces, never
/// focused, transparent for the mouse. Main thread only.
class PanelWindow {
public:
    explicit PanelWindow(XConnection& connection);
    PanelWindow(const PanelWindow&) = delete;
    PanelWindow& operator=(const PanelWindow&) = delete;
    ~PanelWindow();

    [[nodiscard]] xcb_window_t handle() const { return window; }

    [[nodiscard]] std::uint8_t depth() const { return visualDepth; }

    [[nodiscard]] bool isShown() const { return shown; }

    void setTitle(const QString& title);
    void place(const PixelRect& frame);

    /// Asks the compositor to blur what lies behind a part of the window, in its pixels; nothing when empty.
    void setBlur(const QRegion& region);

    void show();
    void hide();

private:
    void create();
    void describe();
    void handle(const xcb_generic_event_t& event);
    void raise();

    /// How often it goes back to the top in one showing; two windows that both insist must not fight forever.
    static constexpr int mostRaises = 50;

    XConnection& connection;
    xcb_window_t window;
    xcb_colormap_t colormap = XCB_NONE;
    std::uint8_t visualDepth = 0;
    PixelRect placed;
    QRegion blurred;
    bool shown = false;
    int raises = 0;
    XConnection::Token token;
};

} // namespace orvantile::platform::x11
