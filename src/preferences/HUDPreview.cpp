#include "preferences/HUDPreview.h"

#include "preferences/DesktopBackground.h"
#include "preferences/controls/AccessibleRole.h"

#include <QPainter>
#include <algorithm>
#include <cmath>

namespace orvantile {
namespace {

constexpr double lowestStrip = 90;
constexpr double highestStrip = 16384;   // what a window can be at all
constexpr double largestChoice = 64;     // of the font sizes
constexpr double largestDrawnFont = 400; // more than the strip's width shows

/// A number for drawing, whatever the setting is.
double within(double value, double low, double high) {
    return std::isnan(value) ? low : std::clamp(value, low, high);
}

} // namespace

HUDPreview::HUDPreview() {
    setAttribute(Qt::WA_TransparentForMouseEvents);
    setAttribute(Qt::WA_OpaquePaintEvent);
    setAccessibleRole(*this, QAccessible::Graphic);
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
    fit();
}

int HUDPreview::stripHeight(double fontSize) {
    const double height =
        std::ceil(std::max(fontSize * 1.25 + std::max(fontSize * 1.1, 24.0) + 58, lowestStrip));
    return static_cast<int>(within(height, lowestStrip, highestStrip));
}

void HUDPreview::setRoom(int height) {
    room = height;
    fit();
}

void HUDPreview::fit() {
    setFixedHeight(std::min(stripHeight(view.fontSize), std::max(room, stripHeight(largestChoice))));
}

void HUDPreview::setHUD(const HUDView& newView) {
    if (newView.fontSize != view.fontSize) {
        view.fontSize = newView.fontSize;
        fit();
    }
    view = newView;
    setAccessibleName(view.text);
    update();
}

void HUDPreview::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    background.paint(painter, QSizeF(size()), view.darkMode, palette().color(QPalette::Window));
    auto drawn = view;
    drawn.fontSize = within(view.fontSize, 1, largestDrawnFont);
    drawn.flatOpacity = within(view.flatOpacity, 0, 1);
    const auto needed = drawn.fittingSize();
    const QRectF place((width() - needed.width) / 2, (height() - needed.height) / 2, needed.width,
                       needed.height);
    const auto seen = place & QRectF(rect());
    const auto behind = drawn.translucent
                            ? platform::BackdropPicture(background.blurredBehind(seen, devicePixelRatioF()))
                            : platform::BackdropPicture(platform::NoBackdrop{});
    painter.drawImage(seen.topLeft(),
                      drawn.picture(devicePixelRatioF(), behind, seen.translated(-place.topLeft())));
}

} // namespace orvantile
