#pragma once

#include <QImage>
#include <QPointF>
#include <vector>

namespace orvantile {

/// How much of the light a shape takes away, softened by a Gaussian: four box passes over the shape's
/// coverage, kept as coarse as the softness allows. Lengths are in device pixels.
class ShadowMask {
public:
    /// Of a picture's alpha, nothing beyond its edges. `shape`: premultiplied ARGB32.
    /// `coarseness`: how many pixels, in each direction, one of the picture stands for already.
    ShadowMask(const QImage& shape, double sigma, int coarseness = 1);

    /// How coarse a shape of such a shadow may be drawn: a power of 2.
    [[nodiscard]] static int coarsenessFor(double sigma);

    /// Fills the picture with black of this coverage times `opacity` (0 to 1); `position` is where the
    /// shape's top left corner falls in it. `canvas`: premultiplied ARGB32; overwritten completely.
    void cast(QImage& canvas, QPointF position, double opacity) const;

private:
    void average(const QImage& shape, int factor);
    void blur(double variance);

    int cellSize; ///< pixels
    int margin;   ///< cells around the shape
    int columns = 0;
    int rows = 0;
    std::vector<float> cells; ///< coverage, 0 to 1, row by row
};

} // namespace orvantile
