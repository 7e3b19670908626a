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

/// A box with soft ends, so that it can have any variance.
struct Box {
    int radius = 0;         ///< of the pixels that count in full
    std::uint32_t ends = 0; ///< how much the next one on each side counts, of 256
    std::uint64_t unit = 0; ///< 2^32 divided by the sum of all weights
    static constexpr int one = 256;

    explicit Box(double variance) : radius(static_cast<int>((std::sqrt(12 * variance + 1) - 1) / 2)) {
        const double r = radius;
        const double soft = (2 * r + 1) * (3 * variance - r * (r + 1)) / (6 * ((r + 1) * (r + 1) - variance));
        ends = static_cast<std::uint32_t>(std::lround(soft * one));
        unit = (std::uint64_t{1} << 32U) / (static_cast<std::uint64_t>(2 * radius + 1) * one + 2 * ends);
    }
};

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

    /// With the pixels at the soft ends of the box.
    [[nodiscard]] Pixel mean(const Box& box, Pixel before, Pixel after) const {
        Pixel pixel = 0;
        for (std::uint32_t i = 0; i < 4; ++i) {
            const std::uint32_t both = ((before >> (8 * i)) & 255U) + ((after >> (8 * i)) & 255U);
            const std::uint64_t sum = std::uint64_t{channels[i]} * Box::one + both * box.ends;
            const auto mean = (sum * box.unit + (std::uint64_t{1} << 31U)) >> 32U;
            pixel |= static_cast<Pixel>(std::min<std::uint64_t>(mean, 255)) << (8 * i);
        }
        return pixel;
    }
};

/// Averages over the box around each pixel, along a line of `count` pixels that are `step` apart.
void blurLine(Pixel* line, int count, std::ptrdiff_t step, const Box& box, Row& scratch) {
    // With the edges repeated, so that every box is full.
    const int border = box.radius + 1;
    scratch.resize(static_cast<std::size_t>(count) + 2 * static_cast<std::size_t>(border));
    for (int i = 0; i < count; ++i) {
        scratch[static_cast<std::size_t>(border) + static_cast<std::size_t>(i)] = line[i * step];
    }
    std::fill_n(scratch.begin(), border, line[0]);
    std::fill_n(scratch.end() - border, border, line[(count - 1) * step]);

    Sums sums;
    const auto* first = scratch.data(); // before the box
    const auto* last = first + 2 * border;
    for (const auto* pixel = first + 1; pixel != last; ++pixel) {
        sums.add(*pixel);
    }
    for (int i = 0; i < count; ++i, ++first, ++last) {
        line[i * step] = sums.mean(box, *first, *last);
        if (i + 1 < count) {
            sums.add(*last);
            sums.subtract(first[1]);
        }
    }
}

const Pixel* row(const QImage& image, int y) {
    return reinterpret_cast<const Pixel*>(image.constScanLine(y));
}

/// The sums of two channels each in the halves of a word; of 256 pixels at most.
struct PackedSums {
    static constexpr std::uint32_t half = 0x00ff00ffU;
    std::uint32_t even = 0;
    std::uint32_t odd = 0;

    void add(Pixel pixel) {
        even += pixel & half;
        odd += (pixel >> 8U) & half;
    }

    [[nodiscard]] Pixel mean(unsigned countShift) const {
        const std::uint32_t rounding = ((1U << countShift) >> 1U) * 0x00010001U;
        // Rounding up cannot carry into the other half: the sums of whole squares stay below it.
        return (((even + rounding) >> countShift) & half) | ((((odd + rounding) >> countShift) & half) << 8U);
    }
};

/// The means of squares of `factor` pixels, the last ones filled up with the pixels at the edge.
QImage reduced(const QImage& picture, int factor) {
    const QSize size((picture.width() + factor - 1) / factor, (picture.height() + factor - 1) / factor);
    QImage small(size, QImage::Format_ARGB32_Premultiplied);
    const Pixel opaque = picture.format() == QImage::Format_RGB32 ? 0xff000000U : 0;
    const auto countShift = 2 * static_cast<unsigned>(std::countr_zero(static_cast<unsigned>(factor)));
    std::vector<PackedSums> sums(static_cast<std::size_t>(size.width()));
    const int whole = picture.width() / factor;
    for (int y = 0; y < size.height(); ++y) {
        std::ranges::fill(sums, PackedSums());
        for (int line = y * factor; line < (y + 1) * factor; ++line) {
            const auto* pixels = row(picture, std::min(line, picture.height() - 1));
            for (int x = 0; x < whole; ++x) {
                auto sum = sums[static_cast<std::size_t>(x)];
                for (const auto* pixel = pixels + x * factor; pixel != pixels + (x + 1) * factor; ++pixel) {
                    sum.add(*pixel | opaque);
                }
                sums[static_cast<std::size_t>(x)] = sum;
            }
            for (int column = whole * factor; column < size.width() * factor; ++column) {
                sums[static_cast<std::size_t>(whole)].add(pixels[std::min(column, picture.width() - 1)] |
                                                          opaque);
            }
        }
        auto* to = reinterpret_cast<Pixel*>(small.scanLine(y));
        std::ranges::transform(sums, to, [&](const PackedSums& sum) { return sum.mean(countShift); });
    }
    small.setDevicePixelRatio(picture.devicePixelRatio() / factor);
    return small;
}

} // namespace

int gaussianBlurReduction(double sigma) {
    constexpr double fineEnough = 2.5; // standard deviation in pixels of the smaller picture
    const auto factor = static_cast<unsigned>(std::clamp(sigma / fineEnough, 1.0, 16.0));
    return static_cast<int>(std::bit_floor(factor));
}

QImage gaussianBlurred(const QImage& picture, double sigma) {
    if (picture.isNull() || !(sigma > 0)) {
        return picture;
    }
    const int factor = gaussianBlurReduction(sigma);
    // Averaging squares and drawing the result with smooth scaling blur a little, too.
    const double scaling = 0.25 * (1 - 1.0 / (factor * factor));
    const Box box((std::pow(sigma / factor, 2) - scaling) / boxes);
    auto small = reduced(picture, factor);
    auto* pixels = reinterpret_cast<Pixel*>(small.bits());
    const std::ptrdiff_t stride = small.bytesPerLine() / static_cast<qsizetype>(sizeof(Pixel));
    Row scratch;
    for (int pass = 0; pass < boxes; ++pass) {
        for (int y = 0; y < small.height(); ++y) {
            blurLine(pixels + y * stride, small.width(), 1, box, scratch);
        }
        for (int x = 0; x < small.width(); ++x) {
            blurLine(pixels + x, small.height(), stride, box, scratch);
        }
    }
    return small;
}

} // namespace orvantile
