#include "hud/HUDHostingView.h"

#include <algorithm>
#include <utility>

namespace orvantile {

HUDHostingView::HUDHostingView(HUDView view_, platform::Backdrop& backdrop_)
    : view(std::move(view_)),
      backdrop(backdrop_),
      size(this->view.fittingSize()) {}

platform::Size HUDHostingView::fittingSize() const {
    return size;
}

QString HUDHostingView::title() const {
    return view.text;
}

void HUDHostingView::prepare(const platform::Rect& frame, double scale) {
    platform::BackdropPicture behind = platform::NoBackdrop{};
    if (view.translucent) {
        behind = VisualEffectBackground::blurred(backdrop.behind(frame), scale);
    }
    picture = view.picture(scale, behind, {0, 0, frame.width, frame.height});
    blurred = {};
    if (std::holds_alternative<platform::CompositorBlurs>(behind)) {
        const auto capsule = view.capsule();
        const double radius = std::min(capsule.width(), capsule.height()) / 2;
        blurred.addRoundedRect(capsule, radius, radius);
    }
}

QPainterPath HUDHostingView::blurRegion() const {
    return blurred;
}

platform::PanelFrame HUDHostingView::frameAt(double elapsed) const {
    const auto entrance = view.entranceAt(elapsed);
    return {picture, entrance.scale, entrance.opacity, entrance.settled};
}

} // namespace orvantile
