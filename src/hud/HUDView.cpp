#include "hud/HUDView.h"

#include "hud/EaseOut.h"
#include "hud/HUDDrawing.h"
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

} // namespace

double HUDView::horizontalPadding() const {
    return std::max(1.1 * fontSize, 22.0);
}

double HUDView::verticalPadding() const {
    return std::max(0.55 * fontSize, 12.0);
}

platform::Size HUDView::fittingSize() const {
    return fittingSize(TextLabel(text, fontSize).size());
}

platform::Size HUDView::fittingSize(const QSizeF& label) const {
    const auto inner = capsule(label);
    return {inner.width() + outerPadding.left() + outerPadding.right(),
            inner.height() + outerPadding.top() + outerPadding.bottom()};
}

QRectF HUDView::capsule() const {
    return capsule(TextLabel(text, fontSize).size());
}

QRectF HUDView::capsule(const QSizeF& label) const {
    return {outerPadding.left(), outerPadding.top(), label.width() + 2 * horizontalPadding(),
            label.height() + 2 * verticalPadding()};
}

QImage HUDView::picture(double scale, const platform::BackdropPicture& blurred, const QRectF& part) const {
    const TextLabel label(text, fontSize);
    return HUDDrawing(*this, label, scale, part).finish(blurred);
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
