#include "platform/linux/desktop/statusitem/KeyboardSymbol.h"

#include <QPainter>
#include <QPainterPath>

namespace orvantile::platform::desktop {
namespace {

using Qt::StringLiterals::operator""_s;

/// The drawing's units per side, the same as in the icon files. Edges lie on whole units so that they are
/// sharp at 16 pixels.
constexpr double grid = 16;

QPainterPath outline(double inset, double radius) {
    QPainterPath path;
    path.addRoundedRect(QRectF(0, 3, 15, 9).adjusted(inset, inset, -inset, -inset), radius, radius);
    return path;
}

QPainterPath keys() {
    QPainterPath path;
    for (const double y : {5.0, 7.0}) {
        for (int column = 0; column < 6; ++column) {
            path.addRect(QRectF(2 + 2 * column, y, 1, 1));
        }
    }
    path.addRect(QRectF(2, 9, 1, 1));
    path.addRect(QRectF(4, 9, 7, 1));
    path.addRect(QRectF(12, 9, 1, 1));
    return path;
}

} // namespace

std::optional<KeyboardSymbol> KeyboardSymbol::named(QStringView name) {
    if (name == u"keyboard") {
        return KeyboardSymbol{u"org.orvantile.Orvantile-keyboard-symbolic"_s, false};
    }
    if (name == u"keyboard.fill") {
        return KeyboardSymbol{u"org.orvantile.Orvantile-keyboard-fill-symbolic"_s, true};
    }
    return std::nullopt;
}

QImage KeyboardSymbol::draw(int size, const QColor& color) const {
    QImage image(size, size, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    QPainter painter(&image);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.scale(size / grid, size / grid);
    const auto body = outline(0, 2);
    painter.fillPath(filled ? body - keys() : (body - outline(1, 1)) + keys(), color);
    return image;
}

QColor inkOn(const QColor& background) {
    constexpr int middleGray = 128;
    return qGray(background.rgb()) < middleGray ? QColor(0xff, 0xff, 0xff) : QColor(0x2e, 0x34, 0x36);
}

} // namespace orvantile::platform::desktop
