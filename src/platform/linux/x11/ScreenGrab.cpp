#include "platform/linux/x11/ScreenGrab.h"

#include <QPainter>
#include <cstring>
#include <limits>

namespace orvantile::platform::x11 {
namespace {

/// Grabs are kept as pixels of this kind, in the server's and the program's byte order.
constexpr auto pixelFormat = QImage::Format_RGB32;
constexpr auto allPlanes = std::numeric_limits<std::uint32_t>::max();

/// Whether the pixels of the root window are laid out like a QImage's.
bool hasPlainPixels(const XConnection& connection) {
    constexpr std::uint8_t colours = 24;
    constexpr std::uint8_t wordBits = 32;
    const auto* setup = xcb_get_setup(connection.get());
    const auto depth = connection.screen().root_depth;
    for (auto format = xcb_setup_pixmap_formats_iterator(setup); format.rem > 0; xcb_format_next(&format)) {
        if (format.data->depth == depth) {
            return (depth == colours || depth == wordBits) && format.data->bits_per_pixel == wordBits &&
                   setup->image_byte_order == XCB_IMAGE_ORDER_LSB_FIRST;
        }
    }
    return false;
}

} // namespace

ScreenGrab::ScreenGrab(XConnection& connection_, const X11Screens& screens_)
    : connection(connection_),
      screens(screens_),
      pixels(connection) {}

ScreenGrab::~ScreenGrab() {
    cancel();
}

void ScreenGrab::request(const PixelRect& area) {
    const auto visible = area.intersected(screens.bounds());
    if ((latest && latest->area.contains(area)) || visible.isEmpty() || !hasPlainPixels(connection)) {
        return;
    }
    cancel();
    const auto bytes =
        std::size_t{4} * static_cast<std::size_t>(visible.width) * static_cast<std::size_t>(visible.height);
    if (pixels.reserve(bytes) && pixels.segment() != 0) {
        requested = Request{visible, send(visible)};
        connection.flush();
    }
}

/// The server still writes what it was asked for; nobody reads it.
void ScreenGrab::cancel() {
    if (requested) {
        xcb_discard_reply(connection.get(), requested->cookie.sequence);
        requested.reset();
    }
}

xcb_shm_get_image_cookie_t ScreenGrab::send(const PixelRect& area) const {
    return xcb_shm_get_image(connection.get(), connection.root(), static_cast<std::int16_t>(area.x),
                             static_cast<std::int16_t>(area.y), static_cast<std::uint16_t>(area.width),
                             static_cast<std::uint16_t>(area.height), allPlanes, XCB_IMAGE_FORMAT_Z_PIXMAP,
                             pixels.segment(), 0);
}

std::optional<QImage> ScreenGrab::take(const PixelRect& area) {
    if (!latest || !latest->area.contains(area)) {
        auto image = grab(area);
        if (!image) {
            return std::nullopt;
        }
        uncover(*image, area);
        latest = Picture{area, std::move(*image)};
    }
    if (latest->area == area) {
        return latest->image;
    }
    return latest->image.copy(area.x - latest->area.x, area.y - latest->area.y, area.width, area.height);
}

std::optional<QImage> ScreenGrab::grab(const PixelRect& area) {
    const auto visible = area.intersected(screens.bounds());
    if (visible.isEmpty() || !hasPlainPixels(connection)) {
        return std::nullopt;
    }
    QImage image(visible.width, visible.height, pixelFormat);
    if (image.isNull() || !fetch(visible, image)) {
        return std::nullopt;
    }
    if (visible == area) {
        return image;
    }
    QImage whole(area.width, area.height, pixelFormat);
    if (whole.isNull()) {
        return std::nullopt;
    }
    whole.fill(Qt::black);
    QPainter(&whole).drawImage(visible.x - area.x, visible.y - area.y, image);
    return whole;
}

bool ScreenGrab::fetch(const PixelRect& area, QImage& into) {
    const auto bytes = static_cast<std::size_t>(into.sizeInBytes());
    const auto x = static_cast<std::int16_t>(area.x);
    const auto y = static_cast<std::int16_t>(area.y);
    const auto width = static_cast<std::uint16_t>(area.width);
    const auto height = static_cast<std::uint16_t>(area.height);
    if (!requested || requested->area != area) {
        cancel();
    }
    if (requested || (pixels.reserve(bytes) && pixels.segment() != 0)) {
        const auto cookie = requested ? requested->cookie : send(area);
        requested.reset();
        const Reply<xcb_shm_get_image_reply_t> reply(
            xcb_shm_get_image_reply(connection.get(), cookie, nullptr));
        if (reply) {
            std::memcpy(into.bits(), pixels.bytes(), bytes);
            return true;
        }
    }
    const Reply<xcb_get_image_reply_t> reply(
        xcb_get_image_reply(connection.get(),
                            xcb_get_image(connection.get(), XCB_IMAGE_FORMAT_Z_PIXMAP, connection.root(), x,
                                          y, width, height, allPlanes),
                            nullptr));
    if (!reply || static_cast<std::size_t>(xcb_get_image_data_length(reply.get())) < bytes) {
        return false;
    }
    std::memcpy(into.bits(), xcb_get_image_data(reply.get()), bytes);
    return true;
}

void ScreenGrab::uncover(QImage& image, const PixelRect& area) const {
    if (!cover || cover->image.isNull() || (gone.isValid() && gone.hasExpired(repaintMilliseconds))) {
        return;
    }
    QPainter(&image).drawImage(cover->area.x - area.x, cover->area.y - area.y, cover->image);
}

void ScreenGrab::panelCovers(const PixelRect& area) {
    gone.invalidate();
    QImage beneath;
    if (latest && latest->area.contains(area)) {
        beneath = take(area).value_or(QImage());
    }
    cover = Picture{area, beneath};
}

void ScreenGrab::panelGone() {
    gone.start();
    latest.reset();
}

} // namespace orvantile::platform::x11
