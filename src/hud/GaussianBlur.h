#pragma once

#include <QImage>

namespace orvantile {

/// A Gaussian blur of `sigma` device pixels, close to exact: three box passes over a picture made smaller
/// first. The result is that smaller picture; its device pixel ratio makes it cover at least the same area
/// when it is drawn from the same corner, and it wants to be drawn with smooth scaling. Colours beyond the
/// edges are those at the edges.
/// `picture`: premultiplied ARGB32 or RGB32.
[[nodiscard]] QImage gaussianBlurred(const QImage& picture, double sigma);

/// How much smaller, in each direction, the result of `gaussianBlurred` is.
[[nodiscard]] int gaussianBlurReduction(double sigma);

} // namespace orvantile
