#pragma once

#include "platform/linux/x11/PixelRect.h"
#include "platform/linux/x11/SharedPixels.h"

#include <QImage>
#include <QSize>
#include <array>
#include <functional>
#include <optional>

namespace orvantile::platform::x11 {

/// The picture of a panel's window: a pixmap that the server itself paints as the window's background, so
/// that the window has its content in the moment it appears and needs no redrawing. Main thread only.
class PanelSurface {
public:
    PanelSurface(XConnection& connection, xcb_window_t window, std::uint8_t depth);
    PanelSurface(const PanelSurface&) = delete;
    PanelSurface& operator=(const PanelSurface&) = delete;
    ~PanelSurface();

    /// Pixels to draw the next picture into, valid until `commit`; premultiplied ARGB32, not cleared. Absent
    /// while the server has not read the earlier pictures; `onReady` is called when it has.
    [[nodiscard]] std::optional<QImage> begin(QSize size);

    /// Sends what was drawn.
    void commit(const QImage& pixels);

    /// Whether the server has not read everything yet. `onReady` is called when it has read some of it, if
    /// asked for.
    [[nodiscard]] bool isBehind() const;

    void tellWhenReady() { waiting = true; }

    std::function<void()> onReady;

private:
    struct Buffer {
        explicit Buffer(XConnection& connection) : pixels(connection) {}

        SharedPixels pixels;
        bool busy = false; ///< the server still reads it
    };

    void handle(const xcb_generic_event_t& event);
    void fitPixmap(QSize size);
    void putPlainly(const QImage& pixels) const;

    XConnection& connection;
    xcb_window_t window;
    std::uint8_t depth;
    xcb_gcontext_t context;
    xcb_pixmap_t pixmap = XCB_PIXMAP_NONE;
    QSize pixmapSize{0, 0};
    std::uint8_t completionEvent = 0;
    std::array<Buffer, 2> buffers;
    Buffer* drawing = nullptr;
    bool waiting = false;
    XConnection::Token token;
};

} // namespace orvantile::platform::x11
