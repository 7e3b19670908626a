#include "hud/HUDDrawing.h"

#include "hud/CapsuleLayers.h"
#include "hud/DropShadow.h"

#include <algorithm>
#include <cmath>

namespace orvantile {
namespace {

constexpr double shadowReach = 48; // points; blur and offset

QImage transparentImage(const QSize& pixels, double scale) {
    QImage image(pixels, QImage::Format_ARGB32_Premultiplied);
    image.setDevicePixelRatio(scale);
    image.fill(Qt::transparent);
    return image;
}

/// The nearest device pixels.
QRect pixelsOf(const QRectF& points, double scale) {
    const QPoint topLeft(qRound(points.left() * scale), qRound(points.top() * scale));
    const QPoint end(qRound(points.right() * scale), qRound(points.bottom() * scale));
    return {topLeft, end - QPoint(1, 1)};
}

QRectF pointsOf(const QRect& pixels, double scale) {
    return {QPointF(pixels.topLeft()) / scale, QSizeF(pixels.size()) / scale};
}

DropShadow shadowOf(const HUDView& view) {
    return {.opacity = view.darkMode ? 0.45 : 0.25};
}

} // namespace

HUDDrawing::HUDDrawing(const HUDView& view_, const TextLabel& label_, double scale, const QRectF& part)
    : view(view_),
      label(label_) {
    const auto canvas = pixelsOf(part, scale);
    const auto whole = pixelsOf(view.capsule(label.size()), scale);
    const int beyond = static_cast<int>(std::ceil(shadowReach * scale)); // casts its shadow into the picture
    seen = whole & canvas.adjusted(-beyond, -beyond, beyond, beyond);
    if (canvas.isEmpty() || seen.isEmpty()) {
        image = transparentImage(canvas.size(), scale);
        return;
    }
    area = pointsOf(whole, scale);
    origin = pointsOf(canvas, scale).topLeft();
    corner = pointsOf(seen, scale).topLeft();
    image = QImage(canvas.size(), QImage::Format_ARGB32_Premultiplied);
    image.setDevicePixelRatio(scale);
    if (view.translucent) {
        shadowOf(view).cast(image, area.translated(-origin));
    }
}

QImage HUDDrawing::finish(const platform::BackdropPicture& blurred) {
    if (image.isNull() || seen.isEmpty()) {
        return image;
    }
    auto contents = transparentImage(seen.size(), image.devicePixelRatio());
    QPainter contentsPainter(&contents);
    contentsPainter.translate(-corner);
    paintContents(contentsPainter, blurred);
    contentsPainter.end();

    if (!view.translucent) {
        shadowOf(view).cast(image, corner - origin, contents);
    }
    QPainter painter(&image);
    painter.translate(-origin);
    if (view.translucent && std::holds_alternative<platform::CompositorBlurs>(blurred)) {
        // The shadow of glass does not fall on what is seen through it.
        painter.setRenderHint(QPainter::Antialiasing);
        painter.setCompositionMode(QPainter::CompositionMode_DestinationOut);
        painter.setPen(Qt::NoPen);
        painter.setBrush(Qt::black);
        const double radius = std::min(area.width(), area.height()) / 2;
        painter.drawRoundedRect(area, radius, radius);
        painter.setCompositionMode(QPainter::CompositionMode_SourceOver);
    }
    painter.drawImage(corner, contents);
    painter.end();
    return std::exchange(image, {});
}

/// What is cut to the capsule: the background, the label and the light on them.
void HUDDrawing::paintContents(QPainter& painter, const platform::BackdropPicture& blurred) const {
    const bool dark = view.darkMode;
    painter.setRenderHints(QPainter::Antialiasing | QPainter::TextAntialiasing);
    if (view.translucent) {
        const VisualEffectBackground background{.material = Material::hudWindow,
                                                .blendingMode = view.blendingMode,
                                                .appearance = dark ? MaterialAppearance::darkAqua
                                                                   : MaterialAppearance::aqua};
        painter.translate(origin);
        background.paint(painter, area.translated(-origin), blurred);
        painter.translate(-origin);
        painter.fillRect(area, dark ? black(0.55) : white(0.4));
    } else {
        painter.fillRect(area, dark ? black(view.flatOpacity) : white(view.flatOpacity));
    }
    painter.setPen(dark ? white(1) : black(0.85));
    label.draw(painter, area.center() - QPointF(label.size().width(), label.size().height()) / 2);
    if (view.translucent) {
        paintSpecular(painter, area);
        paintInnerShadow(painter, area, dark);
        paintCatchLight(painter, area, dark);
        paintRimStroke(painter, area, dark);
    }
    clipToCapsule(painter, area);
}

} // namespace orvantile
