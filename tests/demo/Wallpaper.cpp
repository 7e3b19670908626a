#include "demo/Wallpaper.h"

#include "support/desktop/XConnection.h"

#include <QImage>
#include <QLinearGradient>
#include <QPainter>
#include <QRadialGradient>

namespace orvantile::test {
namespace {

QImage picture(const QSize& size) {
    QImage image(size, QImage::Format_RGB32);
    QPainter painter(&image);
    QLinearGradient sky(0, 0, size.width(), size.height());
    sky.setColorAt(0, QColor(0x2b, 0x5a, 0x8c));
    sky.setColorAt(0.55, QColor(0x6f, 0x8f, 0xc4));
    sky.setColorAt(1, QColor(0xe8, 0xa8, 0x8c));
    painter.fillRect(image.rect(), sky);
    QRadialGradient glow(QPointF(size.width() * 0.75, size.height() * 0.9), size.height() * 0.8);
    glow.setColorAt(0, QColor(255, 220, 190, 150));
    glow.setColorAt(1, QColor(255, 220, 190, 0));
    painter.fillRect(image.rect(), glow);
    return image;
}

} // namespace

void paintWallpaper(const QString& display) {
    const XConnection x(display);
    const auto& screen = x.rootScreen();
    const auto image = picture({screen.width_in_pixels, screen.height_in_pixels});
    auto* connection = x.get();
    const auto pixmap = xcb_generate_id(connection);
    xcb_create_pixmap(connection, screen.root_depth, pixmap, x.root(), screen.width_in_pixels,
                      screen.height_in_pixels);
    const auto context = xcb_generate_id(connection);
    xcb_create_gc(connection, context, pixmap, 0, nullptr);
    // In strips, each well below the largest request.
    constexpr int strip = 32;
    for (int y = 0; y < image.height(); y += strip) {
        const int rows = std::min(strip, image.height() - y);
        xcb_put_image(connection, XCB_IMAGE_FORMAT_Z_PIXMAP, pixmap, context,
                      static_cast<std::uint16_t>(image.width()), static_cast<std::uint16_t>(rows), 0,
                      static_cast<std::int16_t>(y), 0, screen.root_depth,
                      static_cast<std::uint32_t>(image.bytesPerLine() * rows), image.constScanLine(y));
    }
    xcb_change_window_attributes(connection, x.root(), XCB_CW_BACK_PIXMAP, &pixmap);
    xcb_clear_area(connection, 0, x.root(), 0, 0, 0, 0);
    // Compositors look here for the wallpaper.
    xcb_change_property(connection, XCB_PROP_MODE_REPLACE, x.root(), x.atom("_XROOTPMAP_ID"), XCB_ATOM_PIXMAP,
                        32, 1, &pixmap);
    xcb_set_close_down_mode(connection, XCB_CLOSE_DOWN_RETAIN_PERMANENT);
    x.synchronize();
}

} // namespace orvantile::test
