#pragma once

#include "platform/linux/x11/PixelRect.h"
#include "platform/linux/x11/SharedPixels.h"
#include "platform/linux/x11/X11Screens.h"

#include <QElapsedTimer>
#include <QImage>
#include <optional>

namespace orvantile::platform::x11 {

/// Pictures of the screen as it looks without the panel. Main thread only; `take` waits for the server,
/// unless its answer to `request` has come meanwhile.
class ScreenGrab {
public:
    ScreenGrab(XConnection& connection, const X11Screens& screens);
    ScreenGrab(const ScreenGrab&) = delete;
    ScreenGrab& operator=(const ScreenGrab&) = delete;
    ~ScreenGrab();

    /// Asks for what is in `area`, so that `take` of the same area finds it on its way.
    void request(const PixelRect& area);

    /// What is in `area`, opaque, black beyond the screen. Absent when the server does not tell. Until
    /// `forget`, an area within the latest is answered from memory.
    [[nodiscard]] std::optional<QImage> take(const PixelRect& area);

    /// The next picture is taken from the screen.
    void forget() {
        latest.reset();
        cancel();
    }

    /// The panel has come up over the latest picture, in `area`: from now on that stands for what it hides.
    void panelCovers(const PixelRect& area);

    /// The panel has gone. The windows below take a moment to draw themselves again.
    void panelGone();

private:
    struct Picture {
        PixelRect area;
        QImage image; ///< null when it is not known
    };

    /// A picture that the server has been asked for and writes into `pixels`.
    struct Request {
        PixelRect area; ///< on the screen
        xcb_shm_get_image_cookie_t cookie;
    };

    void cancel();
    [[nodiscard]] xcb_shm_get_image_cookie_t send(const PixelRect& area) const;
    [[nodiscard]] std::optional<QImage> grab(const PixelRect& area);
    void uncover(QImage& image, const PixelRect& area) const;
    [[nodiscard]] bool fetch(const PixelRect& area, QImage& into);

    static constexpr int repaintMilliseconds = 100;

    XConnection& connection;
    const X11Screens& screens;
    SharedPixels pixels;
    std::optional<Request> requested;
    std::optional<Picture> latest;
    std::optional<Picture> cover;
    QElapsedTimer gone; ///< since the panel went, valid while it is down
};

} // namespace orvantile::platform::x11
