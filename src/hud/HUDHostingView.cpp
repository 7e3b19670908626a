#include "hud/HUDHostingView.h"

#include "hud/HUDDrawing.h"
#include "trace/Trace.h"

#include <algorithm>
#include <cstdlib>
#include <optional>
#include <utility>

namespace orvantile {
namespace {

constexpr int rounding = 2; // device pixels

TextLabel layOut(const HUDView& view) {
    const trace::Span span(trace::Step::measure);
    return {view.text, view.fontSize};
}

} // namespace

HUDHostingView::HUDHostingView(HUDView view_, platform::Backdrop& backdrop_,
                               const platform::Screens& screens_)
    : view(std::move(view_)),
      label(layOut(this->view)),
      backdrop(backdrop_),
      screens(screens_),
      size(this->view.fittingSize(label.size())) {}

platform::Size HUDHostingView::fittingSize() const {
    return size;
}

QString HUDHostingView::title() const {
    return view.text;
}

platform::Rect HUDHostingView::onScreens(const platform::Rect& frame) const {
    QRectF everything;
    for (const auto& screen : screens.screens()) {
        everything |= QRectF(screen.frame.x, screen.frame.y, screen.frame.width, screen.frame.height);
    }
    const auto seen = everything & QRectF(frame.x, frame.y, frame.width, frame.height);
    return {seen.x(), seen.y(), seen.width(), seen.height()};
}

platform::BackdropPicture HUDHostingView::pictureBehind(const platform::Rect& visible) {
    const trace::Span span(trace::Step::backdrop);
    return backdrop.behind(visible);
}

platform::BackdropPicture HUDHostingView::behind(const platform::Rect& visible, const QSize& pixels,
                                                 double scale) {
    if (!view.translucent) {
        return platform::NoBackdrop{};
    }
    auto found = pictureBehind(visible);
    if (auto* image = std::get_if<QImage>(&found)) {
        const auto missing = pixels - image->size();
        if (std::max(std::abs(missing.width()), std::abs(missing.height())) > rounding) {
            *image = image->scaled(pixels); // once blurred, nobody sees that some lies off the screens
        }
    }
    const trace::Span span(trace::Step::blur);
    return VisualEffectBackground::blurred(found, scale);
}

void HUDHostingView::prepare(const platform::Rect& frame, double scale) {
    // A label may be far longer than the screens are wide, so only what the entrance brings onto them is
    // drawn.
    const auto visible = onScreens(frame);
    const double smallest = std::min(view.entranceAt(0).scale, 1.0);
    const QPointF centre(frame.width / 2, frame.height / 2);
    const QRectF whole(0, 0, frame.width, frame.height);
    const QRectF seen(visible.x - frame.x, frame.maxY() - visible.maxY(), visible.width, visible.height);
    const QRectF part =
        QRectF(centre + (seen.topLeft() - centre) / smallest, seen.size() / smallest).intersected(whole);
    const auto pixels = QRectF(part.topLeft() * scale, part.size() * scale).toAlignedRect();
    pictureOrigin = pixels.topLeft();
    if (view.translucent) {
        backdrop.prepare(visible);
    }
    std::optional<trace::Span> step(std::in_place, trace::Step::shadow);
    HUDDrawing drawing(view, label, scale,
                       {QPointF(pixels.topLeft()) / scale, QSizeF(pixels.size()) / scale});
    step.reset();
    const auto behind = this->behind(visible, pixels.size(), scale);
    step.emplace(trace::Step::paint);
    picture = drawing.finish(behind);
    step.reset();
    blurred = {};
    if (std::holds_alternative<platform::CompositorBlurs>(behind)) {
        const auto capsule = view.capsule(label.size());
        const double radius = std::min(capsule.width(), capsule.height()) / 2;
        blurred.addRoundedRect(capsule, radius, radius);
    }
}

QPainterPath HUDHostingView::blurRegion() const {
    return blurred;
}

platform::PanelFrame HUDHostingView::frameAt(double elapsed) const {
    const auto entrance = view.entranceAt(elapsed);
    return {picture, entrance.scale, entrance.opacity, entrance.settled, pictureOrigin};
}

} // namespace orvantile
