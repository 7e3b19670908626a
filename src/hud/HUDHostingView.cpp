#include "hud/HUDHostingView.h"

#include <QPainter>
#include <cmath>
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
    const QSize pixels(static_cast<int>(std::ceil(frame.width * scale)),
                       static_cast<int>(std::ceil(frame.height * scale)));
    picture = QImage(pixels, QImage::Format_ARGB32_Premultiplied);
    picture.setDevicePixelRatio(scale);
    picture.fill(Qt::transparent);
    QPainter painter(&picture);
    view.paint(painter);
}

platform::PanelFrame HUDHostingView::frameAt(double elapsed) const {
    const auto entrance = view.entranceAt(elapsed);
    return {picture, entrance.scale, entrance.opacity, entrance.settled};
}

} // namespace orvantile
