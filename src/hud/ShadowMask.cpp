#include "hud/ShadowMask.h"

#include <algorithm>
#include <bit>
#include <cmath>
#include <cstdint>

namespace orvantile {
namespace {

constexpr int boxes = 4;
constexpr double reach = 3; // standard deviations; less than a grey level of the darkest shadow lies beyond

/// A box with soft ends, so that it can have any variance.
struct Box {
    int radius;    ///< of the cells that count in full
    float ends;    ///< how much the next one on each side counts
    float portion; ///< 1 divided by the sum of all weights

    explicit Box(double variance) : radius(static_cast<int>((std::sqrt(12 * variance + 1) - 1) / 2)) {
        const double r = radius;
        const double soft = (2 * r + 1) * (3 * variance - r * (r + 1)) / (6 * ((r + 1) * (r + 1) - variance));
        ends = static_cast<float>(soft);
        portion = static_cast<float>(1 / (2 * r + 1 + 2 * soft));
    }
};

/// Where each pixel of a line lies among the cells.
struct Sample {
    int cell;    ///< the one before
    float after; ///< how far on the way to the next one, 0 to 1
};

class Samples {
public:
    /// `origin`: where the first cell begins, in pixels.
    Samples(int pixels, double origin, int cellSize, int cells) {
        line.resize(static_cast<std::size_t>(pixels));
        for (int pixel = 0; pixel < pixels; ++pixel) {
            const double place = (pixel + 0.5 - origin) / cellSize - 0.5;
            const double before = std::floor(place);
            if (before >= 0 && before < cells - 1) {
                first = std::min(first, pixel);
                end = pixel + 1;
                line[static_cast<std::size_t>(pixel)] = {static_cast<int>(before),
                                                         static_cast<float>(place - before)};
            }
        }
        first = std::min(first, end);
    }

    [[nodiscard]] const Sample& operator[](int pixel) const { return line[static_cast<std::size_t>(pixel)]; }

    [[nodiscard]] bool has(int pixel) const { return pixel >= first && pixel < end; }

    int first = 1 << 30; ///< the pixels that are covered by cells
    int end = 0;

private:
    std::vector<Sample> line;
};

} // namespace

int ShadowMask::coarsenessFor(double sigma) {
    constexpr double fineEnough = 2.5; // standard deviation in cells
    return static_cast<int>(std::bit_floor(static_cast<unsigned>(std::clamp(sigma / fineEnough, 1.0, 16.0))));
}

ShadowMask::ShadowMask(const QImage& shape, double sigma, int coarseness)
    : cellSize(std::max(coarsenessFor(sigma), coarseness)),
      margin(static_cast<int>(std::ceil(reach * sigma / cellSize))) {
    average(shape, cellSize / coarseness);
    // Averaging squares and interpolating between their middles blur a little, too.
    const double scaling = 0.25 * (1 - 1.0 / (cellSize * cellSize));
    blur(std::max(std::pow(sigma / cellSize, 2) - scaling, 0.0));
}

void ShadowMask::average(const QImage& shape, int factor) {
    columns = (shape.width() + factor - 1) / factor + 2 * margin;
    rows = (shape.height() + factor - 1) / factor + 2 * margin;
    cells.assign(static_cast<std::size_t>(columns) * static_cast<std::size_t>(rows), 0);
    constexpr float opaque = 255;
    const float portion = 1 / (opaque * static_cast<float>(factor * factor));
    constexpr unsigned alphaShift = 24;
    for (int y = 0; y < shape.height(); ++y) {
        const auto* pixel = reinterpret_cast<const QRgb*>(shape.constScanLine(y));
        const auto* end = pixel + shape.width();
        auto* cell = cells.data() + static_cast<std::ptrdiff_t>(margin + y / factor) * columns + margin;
        for (; pixel < end; ++cell) {
            const auto* next = std::min(pixel + factor, end);
            unsigned sum = 0;
            for (; pixel < next; ++pixel) {
                sum += *pixel >> alphaShift;
            }
            *cell += static_cast<float>(sum) * portion;
        }
    }
}

void ShadowMask::blur(double variance) {
    const Box box(variance / boxes);
    std::vector<float> source(cells.size());
    std::vector<float> sums(static_cast<std::size_t>(columns));
    const auto at = [&](std::ptrdiff_t row) { return source.data() + row * columns; };
    for (int pass = 0; pass < boxes; ++pass) {
        // 1. Along the rows.
        source.swap(cells);
        for (int row = 0; row < rows; ++row) {
            const auto* from = at(row);
            auto* to = cells.data() + (from - source.data());
            const auto value = [&](int column) {
                return column >= 0 && column < columns ? from[column] : 0.F;
            };
            float sum = 0;
            for (int column = 0; column < box.radius; ++column) {
                sum += value(column);
            }
            for (int column = 0; column < columns; ++column) {
                const float enters = value(column + box.radius);
                sum += enters;
                to[column] =
                    (sum + box.ends * (value(column - box.radius - 1) + value(column + box.radius + 1))) *
                    box.portion;
                sum -= value(column - box.radius);
            }
        }
        // 2. Down the columns, all of them at once.
        source.swap(cells);
        std::ranges::fill(sums, 0.F);
        const std::vector<float> nothing(static_cast<std::size_t>(columns), 0.F);
        const auto line = [&](int row) { return row >= 0 && row < rows ? at(row) : nothing.data(); };
        for (int row = -box.radius; row < rows; ++row) {
            const auto* enters = line(row + box.radius);
            const auto* leaves = line(row - box.radius - 1);
            for (std::size_t column = 0; column < sums.size(); ++column) {
                sums[column] += enters[column] - leaves[column];
            }
            if (row < 0) {
                continue;
            }
            const auto* after = line(row + box.radius + 1);
            auto* to = cells.data() + static_cast<std::ptrdiff_t>(row) * columns;
            for (std::size_t column = 0; column < sums.size(); ++column) {
                to[column] = (sums[column] + box.ends * (leaves[column] + after[column])) * box.portion;
            }
        }
    }
}

void ShadowMask::cast(QImage& canvas, QPointF position, double opacity) const {
    const Samples across(canvas.width(), position.x() - margin * cellSize, cellSize, columns);
    const Samples down(canvas.height(), position.y() - margin * cellSize, cellSize, rows);
    constexpr unsigned alphaShift = 24;
    const auto strength = static_cast<float>(255 * std::clamp(opacity, 0.0, 1.0));
    std::vector<float> row(static_cast<std::size_t>(columns));
    for (int y = 0; y < canvas.height(); ++y) {
        auto* line = reinterpret_cast<QRgb*>(canvas.scanLine(y));
        if (!down.has(y)) {
            std::fill_n(line, canvas.width(), 0U);
            continue;
        }
        const auto* above = cells.data() + static_cast<std::ptrdiff_t>(down[y].cell) * columns;
        const auto* below = above + columns;
        for (std::size_t column = 0; column < row.size(); ++column) {
            row[column] = (above[column] + (below[column] - above[column]) * down[y].after) * strength + 0.5F;
        }
        std::fill_n(line, across.first, 0U);
        for (int x = across.first; x < across.end; ++x) {
            const auto* left = row.data() + across[x].cell;
            const float coverage = left[0] + (left[1] - left[0]) * across[x].after;
            line[x] = static_cast<unsigned>(static_cast<int>(coverage)) << alphaShift;
        }
        std::fill(line + across.end, line + canvas.width(), 0U);
    }
}

} // namespace orvantile
