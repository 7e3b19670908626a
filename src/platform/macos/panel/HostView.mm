#include "platform/macos/panel/HostView.h"

#include "platform/macos/cocoa/Picture.h"
#include "platform/macos/cocoa/Text.h"
#include "platform/macos/panel/BlurView.h"
#include "platform/macos/panel/PictureView.h"

namespace {

/// `rect`: points from the top left corner of a panel of `panel`. The result counts upwards and is scaled
/// about the panel's centre.
NSRect placed(const QRectF& rect, NSSize panel, double scale) {
    const double centreX = panel.width / 2;
    const double centreY = panel.height / 2;
    const double bottom = panel.height - rect.bottom();
    return NSMakeRect(centreX + (rect.left() - centreX) * scale, centreY + (bottom - centreY) * scale,
                      rect.width() * scale, rect.height() * scale);
}

} // namespace

@implementation OrvantileHostView {
    NSSize contentSize;
    NSSize panelSize;
    NSVisualEffectView* blurView;
    QRectF blurArea; ///< points from the top left corner
    OrvantilePictureView* pictureView;
    QImage picture;
}

- (instancetype)initWithContent:(const orvantile::platform::PanelContent&)content {
    const auto fitting = content.fittingSize();
    self = [super initWithFrame:NSMakeRect(0, 0, fitting.width, fitting.height)];
    contentSize = NSMakeSize(fitting.width, fitting.height);
    panelSize = contentSize;
    self.wantsLayer = YES;
    pictureView = [[OrvantilePictureView alloc] initWithFrame:NSMakeRect(0, 0, 0, 0)];
    [self addSubview:pictureView];
    [self setAccessibilityElement:YES];
    [self setAccessibilityRole:NSAccessibilityStaticTextRole];
    [self setAccessibilityLabel:orvantile::platform::macos::toNSString(content.title())];
    return self;
}

- (NSSize)intrinsicContentSize {
    return contentSize;
}

- (void)showBlurBehind:(const QPainterPath&)region
                  dark:(BOOL)dark
             panelSize:(NSSize)size
                 scale:(double)scale {
    panelSize = size;
    blurArea = region.boundingRect();
    [blurView removeFromSuperview];
    blurView = nil;
    if (!region.isEmpty()) {
        blurView = orvantile::platform::macos::makeBlurView(region, dark, scale);
        [self addSubview:blurView positioned:NSWindowBelow relativeTo:pictureView];
    }
}

- (void)showFrame:(const orvantile::platform::PanelFrame&)frame {
    blurView.frame = placed(blurArea, panelSize, frame.scale);
    blurView.alphaValue = frame.opacity;
    if (picture.cacheKey() != frame.image.cacheKey()) {
        picture = frame.image;
        pictureView.picture = orvantile::platform::macos::toNSImage(picture);
    }
    const double ratio = picture.devicePixelRatio();
    const QRectF area(QPointF(frame.origin) / ratio, picture.deviceIndependentSize());
    pictureView.frame = placed(area, panelSize, frame.scale);
    pictureView.alphaValue = frame.opacity;
}

@end
