#include "support/desktop/Screenshot.h"

#include "support/desktop/XConnection.h"

#include <limits>

namespace orvantile::test {

QImage takeScreenshot(const QString& display, const QRect& part) {
    const XConnection x(display);
    const QRect whole(0, 0, x.rootScreen().width_in_pixels, x.rootScreen().height_in_pixels);
    const QRect area = part.isNull() ? whole : part.intersected(whole);
    const XReply<xcb_get_image_reply_t> reply(xcb_get_image_reply(
        x.get(),
        xcb_get_image(x.get(), XCB_IMAGE_FORMAT_Z_PIXMAP, x.root(), static_cast<std::int16_t>(area.x()),
                      static_cast<std::int16_t>(area.y()), static_cast<std::uint16_t>(area.width()),
                      static_cast<std::uint16_t>(area.height()), std::numeric_limits<std::uint32_t>::max()),
        nullptr));
    if (!reply || reply->depth != 24) {
        return {};
    }
    return QImage(xcb_get_image_data(reply.get()), area.width(), area.height(), QImage::Format_RGB32).copy();
}

} // namespace orvantile::test
