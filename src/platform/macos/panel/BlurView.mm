#include "platform/macos/panel/BlurView.h"

#include "platform/macos/cocoa/Picture.h"

#include <QImage>
#include <QPainter>
#include <cmath>

namespace orvantile::platform::macos {
namespace {

QImage drawMask(const QPainterPath& region, double scale) {
    const auto area = region.boundingRect();
    const QSize pixels(static_cast<int>(std::ceil(area.width() * scale)),
                       static_cast<int>(std::ceil(area.height() * scale)));
    QImage mask(pixels, QImage::Format_ARGB32_Premultiplied);
    if (mask.isNull()) {
        return mask;
    }
    mask.fill(Qt::transparent);
    mask.setDevicePixelRatio(scale);
    QPainter painter(&mask);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.translate(-area.topLeft());
    painter.fillPath(region, Qt::black);
    return mask;
}

} // namespace

NSVisualEffectView* makeBlurView(const QPainterPath& region, bool dark, double scale) {
    const auto area = region.boundingRect();
    NSVisualEffectView* view =
        [[NSVisualEffectView alloc] initWithFrame:NSMakeRect(0, 0, area.width(), area.height())];
    view.material = NSVisualEffectMaterialHUDWindow;
    view.blendingMode = NSVisualEffectBlendingModeBehindWindow;
    view.state = NSVisualEffectStateActive;
    view.emphasized = YES;
    view.appearance = [NSAppearance appearanceNamed:dark ? NSAppearanceNameDarkAqua : NSAppearanceNameAqua];
    view.maskImage = toNSImage(drawMask(region, scale));
    return view;
}

} // namespace orvantile::platform::macos
