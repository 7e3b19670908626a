// Every row of the capsule against the layers composed by hand.

#include "hud/HUDView.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <gmock/gmock.h>
#include <vector>

namespace orvantile {
namespace {

using Qt::StringLiterals::operator""_s;

/// A grey pixel, premultiplied, in parts of one.
struct Pixel {
    double grey = 0;
    double alpha = 0;

    void over(double tone, double opacity) {
        grey = tone * opacity + grey * (1 - opacity);
        alpha = opacity + alpha * (1 - opacity);
    }

    void plusWhite(double opacity) {
        grey = std::min(grey + opacity, 1.0);
        alpha = std::min(alpha + opacity, 1.0);
    }
};

struct Stop {
    double location;
    double opacity;
};

double between(const std::vector<Stop>& stops, double location) {
    if (location <= stops.front().location) {
        return stops.front().opacity;
    }
    for (std::size_t i = 1; i < stops.size(); ++i) {
        const auto& from = stops[i - 1];
        const auto& to = stops[i];
        if (location <= to.location) {
            return std::lerp(from.opacity, to.opacity,
                             (location - from.location) / (to.location - from.location));
        }
    }
    return stops.back().opacity;
}

/// The glass in the middle of the capsule, at `location` between top and bottom; `rim` is how much of the
/// pixel the line at the edge covers.
Pixel glass(Pixel pixel, bool dark, double location, double rim) {
    pixel.over(dark ? 0 : 1, dark ? 0.55 : 0.4);
    pixel.plusWhite(between({{0, 0.32}, {0.1, 0.1}, {0.3, 0}}, location));
    pixel.over(0, between({{0.18, 0}, {0.34, dark ? 0.25 : 0.14}, {0.5, 0}}, location));
    pixel.plusWhite(between({{0.65, 0}, {1, dark ? 0.18 : 0.08}}, location));
    if (dark) {
        pixel.over(1, rim * between({{0, 0.28}, {0.5, 0.06}, {1, 0.3}}, location));
    } else {
        pixel.over(0, rim * between({{0, 0.22}, {0.5, 0.04}, {1, 0.16}}, location));
    }
    return pixel;
}

constexpr double edgeTolerance = 4; // where a device pixel is partly rim
constexpr double tolerance = 2;     // of 255: rounding in six layers

struct Look {
    bool dark;
    double scale;
    int backdrop; ///< a level of grey, or -1 where the compositor blurs
};

void PrintTo(const Look& look, std::ostream* out) {
    *out << (look.dark ? "dark" : "light") << " at " << look.scale << " over " << look.backdrop;
}

class CapsuleArithmetic : public ::testing::TestWithParam<Look> {};

TEST_P(CapsuleArithmetic, composesTheLayersInOrder) {
    const auto [dark, scale, backdrop] = GetParam();
    const HUDView view{.text = u" "_s.repeated(30), .fontSize = 40, .darkMode = dark};
    const auto size = view.fittingSize();
    const QRectF whole(0, 0, size.width, size.height);

    platform::BackdropPicture behind = platform::CompositorBlurs{};
    if (backdrop >= 0) {
        QImage plain((whole.size() * scale).toSize(), QImage::Format_RGB32);
        plain.fill(QColor(backdrop, backdrop, backdrop));
        behind = VisualEffectBackground::blurred(plain, scale);
    }
    const auto image = view.picture(scale, behind, whole);
    const int column = image.width() / 2;
    const int top = qRound(view.capsule().top() * scale);
    const int bottom = qRound(view.capsule().bottom() * scale);
    for (int row = top; row < bottom; ++row) {
        const double location = (row + 0.5 - top) / (bottom - top);
        const double fromEdge = std::min(row - top, bottom - 1 - row);
        const double rim = std::clamp(scale - fromEdge, 0.0, 1.0);
        const auto expected = glass(backdrop < 0 ? Pixel() : Pixel{backdrop / 255.0, 1}, dark, location, rim);
        const auto* pixels = reinterpret_cast<const QRgb*>(image.constScanLine(row));
        const auto actual = pixels[column];
        const double allowed = rim > 0 && rim < 1 ? edgeTolerance : tolerance;
        ASSERT_NEAR(qRed(actual), 255 * expected.grey, allowed) << "row " << row - top;
        ASSERT_NEAR(qAlpha(actual), 255 * expected.alpha, allowed) << "row " << row - top;
        ASSERT_EQ(qRed(actual), qGreen(actual)) << "row " << row - top;
        ASSERT_EQ(qRed(actual), qBlue(actual)) << "row " << row - top;
    }
}

TEST(Rim, isFaintestHalfWayDown) {
    for (const bool dark : {true, false}) {
        for (const int scale : {1, 2, 3}) {
            const HUDView view{.text = u" "_s.repeated(10), .fontSize = 64, .darkMode = dark};
            const auto size = view.fittingSize();
            QImage plain(qRound(size.width * scale), qRound(size.height * scale), QImage::Format_RGB32);
            plain.fill(Qt::white);
            const auto image = view.picture(scale, VisualEffectBackground::blurred(plain, scale),
                                            {0, 0, size.width, size.height});
            const int top = qRound(view.capsule().top() * scale);
            const int height = qRound(view.capsule().bottom() * scale) - top;
            const int row = top + height / 2;
            const double location = (row + 0.5 - top) / height;
            const int left = qRound(view.capsule().left() * scale);
            const auto level = [&](int column) { return qRed(image.pixel(left + column, row)); };
            const auto expected = [&](double rim) { return 255 * glass({1, 1}, dark, location, rim).grey; };
            EXPECT_NEAR(level(scale - 1), expected(1), tolerance) << scale;
            EXPECT_NEAR(level(scale), expected(0), tolerance) << scale;
            EXPECT_NEAR(qRed(image.pixel(image.width() - 1 - left - scale + 1, row)), expected(1),
                        2 * tolerance);
        }
    }
}

std::vector<Look> looks() {
    std::vector<Look> all;
    for (const bool dark : {true, false}) {
        for (const double scale : {1.0, 1.25, 1.5, 2.0, 3.0}) {
            for (const int backdrop : {-1, 0, 90, 255}) {
                all.push_back({dark, scale, backdrop});
            }
        }
    }
    return all;
}

INSTANTIATE_TEST_SUITE_P(looks, CapsuleArithmetic, ::testing::ValuesIn(looks()));

/// The alpha of a Gaussian shadow of the capsule, convolved without any short cut.
class ExactShadow {
public:
    ExactShadow(QRectF capsule_, double opacity_) : capsule(capsule_), opacity(opacity_) {
        for (int i = -reach; i <= reach; ++i) {
            weights.push_back(std::exp(-i * i / (2 * sigma * sigma)));
            sum += weights.back();
        }
    }

    [[nodiscard]] double alphaAt(double x, double y) const {
        double total = 0;
        for (int i = -reach; i <= reach; ++i) {
            for (int j = -reach; j <= reach; ++j) {
                total += weights[static_cast<std::size_t>(i + reach)] *
                         weights[static_cast<std::size_t>(j + reach)] * coverage(x + i, y - 10 + j);
            }
        }
        return opacity * total / (sum * sum);
    }

private:
    static constexpr double sigma = 11;
    static constexpr int reach = 44;

    [[nodiscard]] double coverage(double x, double y) const {
        const double radius = capsule.height() / 2;
        const double nearest = std::clamp(x, capsule.left() + radius, capsule.right() - radius);
        const double distance = std::hypot(x - nearest, y - capsule.center().y());
        return std::clamp(radius - distance + 0.5, 0.0, 1.0);
    }

    QRectF capsule;
    double opacity;
    std::vector<double> weights;
    double sum = 0;
};

TEST(Shadow, isAGaussianOfElevenPointsTenPointsBelow) {
    for (const bool dark : {true, false}) {
        for (const double scale : {1.0, 1.5, 2.0}) {
            const HUDView view{.text = u" "_s.repeated(20), .darkMode = dark};
            const auto size = view.fittingSize();
            const auto image = view.picture(scale, platform::NoBackdrop{}, {0, 0, size.width, size.height});
            const ExactShadow shadow(view.capsule(), dark ? 0.45 : 0.25);
            const double bottom = view.capsule().bottom();
            const std::array<QPointF, 10> points{
                QPointF{size.width / 2, bottom + 3},
                {size.width / 2, bottom + 12},
                {size.width / 2, bottom + 25},
                {size.width / 2, size.height - 2},
                {size.width / 2, 12},
                {size.width / 2, 19},
                {10, size.height / 2},
                {24, size.height / 2},
                {size.width - 10, size.height / 2},
                {size.width - 20, bottom + 5},
            };
            for (const auto& point : points) {
                const QPoint pixel((point * scale).toPoint());
                const double exact = shadow.alphaAt((pixel.x() + 0.5) / scale, (pixel.y() + 0.5) / scale);
                EXPECT_NEAR(qAlpha(image.pixel(pixel)), 255 * exact, 2)
                    << point.x() << ", " << point.y() << " at scale " << scale << (dark ? " dark" : " light");
                EXPECT_EQ(qRed(image.pixel(pixel)), 0);
            }
        }
    }
}

TEST(Flat, isOneColourOverItsShadow) {
    for (const bool dark : {true, false}) {
        for (const double opacity : {0.3, 0.75, 1.0}) {
            const HUDView view{
                .text = u" "_s.repeated(20), .translucent = false, .darkMode = dark, .flatOpacity = opacity};
            const auto size = view.fittingSize();
            const auto image = view.picture(1, platform::NoBackdrop{}, {0, 0, size.width, size.height});
            const ExactShadow shadow(view.capsule(), (dark ? 0.45 : 0.25) * opacity);
            const int x = image.width() / 2;
            for (int y = 24; y < 70; y += 5) { // no sheen, no shade, no rim
                Pixel expected{0, shadow.alphaAt(x + 0.5, y + 0.5)};
                expected.over(dark ? 0 : 1, opacity);
                const auto* row = reinterpret_cast<const QRgb*>(image.constScanLine(y));
                EXPECT_NEAR(qAlpha(row[x]), 255 * expected.alpha, 2.5) << y;
                EXPECT_NEAR(qRed(row[x]), 255 * expected.grey, 1.5) << y;
            }
        }
    }
}

TEST(Flat, withoutOpacityIsTheTextAndItsShadow) {
    const HUDView view{.text = u"I"_s, .fontSize = 100, .translucent = false, .flatOpacity = 0};
    const auto size = view.fittingSize();
    const auto image = view.picture(1, platform::NoBackdrop{}, {0, 0, size.width, size.height});
    const QPoint centre(image.width() / 2, qRound(view.capsule().center().y()));
    EXPECT_EQ(image.pixel(centre), 0xffffffffU);
    const auto beside = image.pixel(centre + QPoint(16, 10));
    EXPECT_GT(qAlpha(beside), 5);
    EXPECT_EQ(qRed(beside), 0);
    EXPECT_EQ(qAlpha(image.pixel(0, 0)), 0);
}

TEST(Text, isWhiteOrBlackAtEightyFivePercent) {
    HUDView view{.text = u"I"_s, .fontSize = 100, .translucent = false, .darkMode = true, .flatOpacity = 1};
    const auto size = view.fittingSize();
    const QRectF whole(0, 0, size.width, size.height);
    const QPoint centre(qRound(size.width / 2), qRound(view.capsule().center().y()));
    EXPECT_EQ(view.picture(1, platform::NoBackdrop{}, whole).pixel(centre), 0xffffffffU);
    view.darkMode = false;
    const auto ink = view.picture(1, platform::NoBackdrop{}, whole).pixel(centre);
    EXPECT_NEAR(qRed(ink), 255 * 0.15, 1);
    EXPECT_EQ(qAlpha(ink), 255);
}

TEST(Label, standsInTheMiddleOfTheCapsule) {
    for (const double fontSize : {12.0, 22.0, 64.0}) {
        const double scale = 4;
        const HUDView view{.text = u"H"_s, .fontSize = fontSize, .translucent = false, .flatOpacity = 0};
        const auto size = view.fittingSize();
        const auto image = view.picture(scale, platform::NoBackdrop{}, {0, 0, size.width, size.height});
        QRect ink;
        for (int y = 0; y < image.height(); ++y) {
            for (int x = 0; x < image.width(); ++x) {
                if (qRed(image.pixel(x, y)) > 128) {
                    ink |= QRect(x, y, 1, 1);
                }
            }
        }
        const auto middle = QRectF(ink).center() / scale;
        EXPECT_NEAR(middle.y(), view.capsule().center().y(), 0.02 * fontSize + 0.25);
        EXPECT_NEAR(middle.x(), view.capsule().center().x(), 0.02 * fontSize + 0.25);
    }
}

TEST(NoBackdrop, getsAPlausibleOpaqueTone) {
    HUDView view{.text = u" "_s.repeated(20)};
    const auto size = view.fittingSize();
    const auto middle = [&] {
        const auto image = view.picture(1, platform::NoBackdrop{}, {0, 0, size.width, size.height});
        return image.pixelColor(image.width() / 2,
                                qRound(view.capsule().top() + 0.58 * view.capsule().height()));
    };
    EXPECT_EQ(middle().alpha(), 255);
    EXPECT_LT(middle().lightness(), 60);
    view.darkMode = false;
    EXPECT_EQ(middle().alpha(), 255);
    EXPECT_GT(middle().lightness(), 200);
}

TEST(LongLabel, hasTheSameGlassFarFromItsBeginning) {
    const HUDView view{.text = u" "_s.repeated(5000), .fontSize = 64};
    const auto size = view.fittingSize();
    ASSERT_GT(size.width, 60'000);
    QImage plain(800, qRound(size.height), QImage::Format_RGB32);
    plain.fill(QColor(90, 90, 90));
    const auto behind = VisualEffectBackground::blurred(plain, 1);
    const int left = 40'000;
    const auto image = view.picture(1, behind, QRectF(left, 0, 800, size.height));
    const int top = qRound(view.capsule().top());
    const int bottom = qRound(view.capsule().bottom());
    for (int row = top; row < bottom; ++row) {
        const bool rim = row == top || row == bottom - 1;
        const auto expected = glass({90 / 255.0, 1}, true, (row + 0.5 - top) / (bottom - top), rim ? 1 : 0);
        for (const int column : {0, 400, 799}) {
            ASSERT_NEAR(qRed(image.pixel(column, row)), 255 * expected.grey, tolerance)
                << "row " << row - top << " column " << column;
        }
    }
}

} // namespace
} // namespace orvantile
