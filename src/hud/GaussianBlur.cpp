#include "hud/GaussianBlur.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cmath>
#include <cstdint>
#include <vector>

namespace orvantile {
namespace {

using Pixel = std::uint32_t;
using Row = std::vector<Pixel>;

constexpr int boxes = 3;

/// Radii of the boxes that in sequence have the variance of the Gaussian.
std::array<int, boxes> boxRadii(double sigma) {
    const double ideal = std::sqrt(12 * sigma * sigma / boxes + 1);
    const int radius = std::max(static_cast<int>((ideal - 1) / 2), 0);
    const double width = 2 * radius + 1;
    const double missing = 12 * sigma * sigma - boxes * (width * width - 1);
    const auto wider = std::clamp(std::lround(missing / (4 * width + 4)), 0L, static_cast<long>(boxes));
    std::array<int, boxes> radii{};
    for (int i = 0; i < boxes; ++i) {
        radii.at(static_cast<std::size_t>(i)) = radius + (i < wider ? 1 : 0);
    }
    return radii;
}

/// Sums of the four channels of some pixels.
struct Sums {
    std::array<std::uint32_t, 4> channels{};

    void add(Pixel pixel) {
        for (std::uint32_t i = 0; i < 4; ++i) {
            channels[i] += (pixel >> (8 * i)) & 255U;
        }
    }

    void subtract(Pixel pixel) {
        for (std::uint32_t i = 0; i < 4; ++i) {
            channels[i] -= (pixel >> (8 * i)) & 255U;
        }
    }

    /// `reciprocal`: 2^24 divided by the number of pixels.
    [[nodiscard]] Pixel mean(std::uint32_t reciprocal) const {
        Pixel pixel = 0;
        for (std::uint32_t i = 0; i < 4; ++i) {
            const auto mean = (std::uint64_t{channels[i]} * reciprocal + (1U << 23U)) >> 24U;
            pixel |= static_cast<Pixel>(std::min<std::uint64_t>(mean, 255)) << (8 * i);
        }
        return pixel;
    }
};

std::uint32_t reciprocalOf(int count) {
    return (1U << 24U) / static_cast<std::uint32_t>(count);
}

/// Averages over the `radius` neighbours on each side, along a line of `count` pixels that are `step` apart.
void blurLine(Pixel* line, int count, std::ptrdiff_t step, int radius, Row& scratch) {
    const auto at = [&](int index) {
        return scratch[static_cast<std::size_t>(std::clamp(index, 0, count - 1))];
    };
    scratch.resize(static_cast<std::size_t>(count));
    for (int i = 0; i < count; ++i) {
        scratch[static_cast<std::size_t>(i)] = line[i * step];
    }
    Sums sums;
    for (int i = -radius; i <= radius; ++i) {
        sums.add(at(i));
    }
    const auto reciprocal = reciprocalOf(2 * radius + 1);
    for (int i = 0; i < count; ++i) {
        line[i * step] = sums.mean(reciprocal);
        sums.subtract(at(i - radius));
        sums.add(at(i + radius + 1));
    }
}

const Pixel* row(const QImage& image, int y) {
    return reinterpret_cast<const Pixel*>(image.constScanLine(y));
}

/// The means of squares of `factor` pixels, the last ones filled up with the pixels at the edge.
QImage reduced(const QImage& picture, int factor) {
    const QSize size((picture.width() + factor - 1) / factor, (picture.height() + factor - 1) / factor);
    QImage small(size, QImage::Format_ARGB32_Premultiplied);
    const Pixel opaque = picture.format() == QImage::Format_RGB32 ? 0xff000000U : 0;
    const auto reciprocal = reciprocalOf(factor * factor);
    std::vector<Sums> sums(static_cast<std::size_t>(size.width()));
    for (int y = 0; y < size.height(); ++y) {
        std::ranges::fill(sums, Sums());
        for (int line = y * factor; line < (y + 1) * factor; ++line) {
            const auto* from = row(picture, std::min(line, picture.height() - 1));
            for (int x = 0; x < size.width(); ++x) {
                auto& sum = sums[static_cast<std::size_t>(x)];
                for (int column = x * factor; column < (x + 1) * factor; ++column) {
                    sum.add(from[std::min(column, picture.width() - 1)] | opaque);
                }
            }
        }
        auto* to = reinterpret_cast<Pixel*>(small.scanLine(y));
        for (int x = 0; x < size.width(); ++x) {
            to[x] = sums[static_cast<std::size_t>(x)].mean(reciprocal);
        }
    }
    small.setDevicePixelRatio(picture.devicePixelRatio() / factor);
    return small;
}

} // namespace

int gaussianBlurReduction(double sigma) {
    constexpr double fineEnough = 2.5; // standard deviation in pixels of the smaller picture
    const auto factor = static_cast<unsigned>(std::clamp(sigma / fineEnough, 1.0, 64.0));
    return static_cast<int>(std::bit_floor(factor));
}

QImage gaussianBlurred(const QImage& picture, double sigma) {
    if (picture.isNull() || !(sigma > 0)) {
        return picture;
    }
    const int factor = gaussianBlurReduction(sigma);
    // Averaging squares has blurred a little already.
    const double variance = std::pow(sigma / factor, 2) - (1 - 1.0 / (factor * factor)) / 12;
    auto small = reduced(picture, factor);
    auto* pixels = reinterpret_cast<Pixel*>(small.bits());
    const std::ptrdiff_t stride = small.bytesPerLine() / static_cast<qsizetype>(sizeof(Pixel));
    Row scratch;
    for (const int radius : boxRadii(std::sqrt(variance))) {
        for (int y = 0; y < small.height(); ++y) {
            blurLine(pixels + y * stride, small.width(), 1, radius, scratch);
        }
        for (int x = 0; x < small.width(); ++x) {
            blurLine(pixels + x, small.height(), stride, radius, scratch);
        }
    }
    return small;
}

} // namespace orvantile
