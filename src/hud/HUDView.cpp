#include "hud/HUDView.h"

#include "hud/CapsuleLayers.h"
#include "hud/DropShadow.h"
#include "hud/EaseOut.h"
#include "hud/Spring.h"
#include "hud/TextLabel.h"

#include <algorithm>
#include <cmath>

namespace orvantile {
namespace {

constexpr QMarginsF outerPadding(28, 22, 28, 36);
constexpr Spring popSpring(0.42, 0.62);
constexpr double popFrom = 0.6;
constexpr double popTolerance = 0.001; // of the way; less than a pixel of any label
constexpr double fadeSeconds = 0.14;
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

/// What is cut to the capsule: the background, the label and the light on them.
void paintContents(QPainter& painter, const HUDView& view, const TextLabel& label, const QRectF& area,
                   const QPointF& backdropOrigin, const platform::BackdropPicture& blurred) {
    const bool dark = view.darkMode;
    painter.setRenderHints(QPainter::Antialiasing | QPainter::TextAntialiasing);
    if (view.translucent) {
        const VisualEffectBackground background{.material = Material::hudWindow,
                                                .blendingMode = view.blendingMode,
                                                .appearance = dark ? MaterialAppearance::darkAqua
                                                                   : MaterialAppearance::aqua};
        painter.translate(backdropOrigin);
        background.paint(painter, area.translated(-backdropOrigin), blurred);
        painter.translate(-backdropOrigin);
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

} // namespace

double HUDView::horizontalPadding() const {
    return std::max(1.1 * fontSize, 22.0);
}

double HUDView::verticalPadding() const {
    return std::max(0.55 * fontSize, 12.0);
}

platform::Size HUDView::fittingSize() const {
    const auto inner = capsule();
    return {inner.width() + outerPadding.left() + outerPadding.right(),
            inner.height() + outerPadding.top() + outerPadding.bottom()};
}

QRectF HUDView::capsule() const {
    return capsuleFor(TextLabel(text, fontSize).size());
}

QRectF HUDView::capsuleFor(const QSizeF& label) const {
    return {outerPadding.left(), outerPadding.top(), label.width() + 2 * horizontalPadding(),
            label.height() + 2 * verticalPadding()};
}

QImage HUDView::picture(double scale, const platform::BackdropPicture& blurred, const QRectF& part) const {
    const TextLabel label(text, fontSize);
    const auto canvas = pixelsOf(part, scale);
    const auto whole = pixelsOf(capsuleFor(label.size()), scale);
    const int beyond = static_cast<int>(std::ceil(shadowReach * scale)); // casts its shadow into the picture
    const auto seen = whole & canvas.adjusted(-beyond, -beyond, beyond, beyond);
    if (canvas.isEmpty() || seen.isEmpty()) {
        return transparentImage(canvas.size(), scale);
    }
    const auto area = pointsOf(whole, scale);
    const auto origin = pointsOf(canvas, scale).topLeft();
    const auto corner = pointsOf(seen, scale).topLeft();

    auto contents = transparentImage(seen.size(), scale);
    QPainter contentsPainter(&contents);
    contentsPainter.translate(-corner);
    paintContents(contentsPainter, *this, label, area, origin, blurred);
    contentsPainter.end();

    QImage image(canvas.size(), QImage::Format_ARGB32_Premultiplied);
    image.setDevicePixelRatio(scale);
    const DropShadow shadow{.opacity = darkMode ? 0.45 : 0.25};
    if (translucent) {
        shadow.cast(image, area.translated(-origin));
    } else {
        shadow.cast(image, corner - origin, contents);
    }
    QPainter painter(&image);
    painter.translate(-origin);
    if (translucent && std::holds_alternative<platform::CompositorBlurs>(blurred)) {
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
    return image;
}

void HUDView::paint(QPainter& painter, const QImage& blurred, double elapsed) const {
    const auto size = fittingSize();
    const QRectF whole(0, 0, size.width, size.height);
    const auto behind = blurred.isNull() ? platform::BackdropPicture(platform::NoBackdrop{})
                                         : platform::BackdropPicture(blurred);
    const auto entrance = entranceAt(elapsed);
    painter.save();
    painter.setOpacity(painter.opacity() * entrance.opacity);
    if (entrance.scale != 1) {
        painter.setRenderHint(QPainter::SmoothPixmapTransform);
        painter.translate(whole.center());
        painter.scale(entrance.scale, entrance.scale);
        painter.translate(-whole.center());
    }
    painter.drawImage(QPointF(), picture(painter.device()->devicePixelRatioF(), behind, whole));
    painter.restore();
}

HUDView::Entrance HUDView::entranceAt(double elapsed) const {
    if (popAnimation) {
        if (elapsed >= popSpring.settlingTime(popTolerance)) {
            return {};
        }
        const double position = popSpring.positionAt(elapsed);
        return {popFrom + (1 - popFrom) * position, std::clamp(position, 0.0, 1.0), false};
    }
    const double progress = std::clamp(elapsed / fadeSeconds, 0.0, 1.0);
    return {1, easeOut(progress), progress >= 1};
}

} // namespace orvantile
