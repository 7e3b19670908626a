#pragma once

#include <QPainter>
#include <QWidget>

namespace orvantile {

/// The room around a control's face in which its focus ring is drawn.
constexpr int focusMargin = 3;

/// The face of a push button or picker that fills `area`.
[[nodiscard]] QRectF controlFace(const QRectF& area);

/// Draws the raised face that push buttons and pickers share.
void drawControlFace(QPainter& painter, const QWidget& control, const QRectF& face, bool down, bool hovered);

} // namespace orvantile
