#pragma once

#include "platform/Panel.h"

#include <QImage>
#include <QPoint>
#include <QSize>

namespace orvantile::platform::desktop {

/// Draws one picture of a panel into the pixels of its window.
/// `target`: premultiplied ARGB32, device pixel ratio 1; overwritten completely.
/// `panel`: the size of the whole panel in device pixels, about whose centre the content is scaled.
/// `origin`: where the window begins within the panel, for panels that overhang the screen.
/// `beneath`: what lies on the screen under the window, where nobody else blends; a null image otherwise.
void composePanel(QImage& target, const PanelFrame& frame, QSize panel, QPoint origin, const QImage& beneath);

} // namespace orvantile::platform::desktop
