#pragma once

#include <QColor>
#include <QImage>
#include <QPainter>
#include <QRectF>
#include <optional>

namespace orvantile {

/// The sample desktop as the preview draws it, scaled to fill the strip and kept from one frame to the next:
/// a strip that only grows in height shows more of the same pixels.
class PreviewBackdrop {
public:
    /// Fills a strip of `size` points; with `fallback` when there is no picture.
    void paint(QPainter& painter, const QSizeF& size, bool darkCapsule, const QColor& fallback);

    /// What the last `paint` has put behind `place` (points of the strip), blurred, in device pixels.
    [[nodiscard]] QImage blurredBehind(const QRectF& place, double scale) const;

private:
    void load(bool darkCapsule);

    /// Where the whole picture lies when it fills the strip, its aspect kept.
    [[nodiscard]] QRectF filling(const QSizeF& size) const;

    std::optional<bool> loaded; ///< which picture
    QImage picture;             ///< null without one
    QImage blurred;             ///< the whole picture, small
    QImage scaled;              ///< the whole picture at the size it is drawn at
    QRectF area;                ///< of the whole picture, in the strip
    QColor plain;               ///< where there is no picture
};

} // namespace orvantile
