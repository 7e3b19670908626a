#pragma once

#include "hud/HUDView.h"
#include "hud/TextLabel.h"

#include <QImage>
#include <QPointF>
#include <QRectF>

namespace orvantile {

/// The drawing of one view in two steps, so that what needs nothing of the backdrop is done while that is
/// still on its way. Main thread only.
class HUDDrawing {
public:
    /// Begins a picture of `part` of the view with `scale` device pixels per point: with the shadow, where
    /// that does not depend on what casts it. `view` and its `label` outlive this.
    HUDDrawing(const HUDView& view, const TextLabel& label, double scale, const QRectF& part);

    /// The whole picture. `blurred`: what lies behind `part`, as `VisualEffectBackground::blurred` gives it.
    /// Once only.
    [[nodiscard]] QImage finish(const platform::BackdropPicture& blurred);

private:
    void paintContents(QPainter& painter, const platform::BackdropPicture& blurred) const;

    const HUDView& view;
    const TextLabel& label;
    QImage image;
    QRect seen;     ///< the part of the capsule that is drawn, in device pixels from the view's corner
    QRectF area;    ///< of the capsule; all of these in points from the view's corner
    QPointF origin; ///< of the picture
    QPointF corner; ///< of `seen`
};

} // namespace orvantile
