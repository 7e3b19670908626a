// The looks of the HUD against pictures that have been looked at.

#include "hud/HUDView.h"
#include "render/PictureComparison.h"

#include <array>
#include <gmock/gmock.h>

namespace orvantile {
namespace {

using Qt::StringLiterals::operator""_s;

struct Golden {
    bool dark;
    bool translucent;
    double scale;

    [[nodiscard]] QString name() const {
        return (dark ? u"dark-"_s : u"light-"_s) + (translucent ? u"glass-"_s : u"flat-"_s) +
               QString::number(static_cast<int>(scale * 100)) + u".png"_s;
    }
};

void PrintTo(const Golden& golden, std::ostream* out) {
    *out << golden.name().toStdString();
}

/// Three sizes below each other.
QImage drawn(const Golden& golden) {
    constexpr int width = 460;
    constexpr int height = 400;
    constexpr std::array sizes{12.0, 22.0, 64.0};
    HUDView view{.text = u"⌥⇧S  Ay"_s, .translucent = golden.translucent, .darkMode = golden.dark};
    const QSize pixels(qRound(width * golden.scale), qRound(height * golden.scale));
    QImage image(pixels, QImage::Format_RGB32);
    image.fill(QColor(200, 90, 60));
    for (int x = 0; x < pixels.width() / 2; ++x) { // two colours, since pictures of them are small
        for (int y = 0; y < pixels.height(); ++y) {
            image.setPixel(x, y, qRgb(60, 120, 200));
        }
    }
    image.setDevicePixelRatio(golden.scale);
    const auto wallpaper = image;
    QPainter painter(&image);
    double top = 0;
    for (const double fontSize : sizes) {
        view.fontSize = fontSize;
        const auto size = view.fittingSize();
        const double left = std::round((width - size.width) / 2);
        const auto place = QRectF(left * golden.scale, top * golden.scale, size.width * golden.scale,
                                  size.height * golden.scale)
                               .toAlignedRect();
        painter.drawImage(QPointF(left, top),
                          view.picture(golden.scale,
                                       VisualEffectBackground::blurred(wallpaper.copy(place), golden.scale),
                                       {0, 0, size.width, size.height}));
        top += std::ceil(size.height);
    }
    return image.convertToFormat(QImage::Format_RGB32);
}

class GoldenTest : public ::testing::TestWithParam<Golden> {};

TEST_P(GoldenTest, looksAsItDid) {
    test::expectGolden(drawn(GetParam()), QStringLiteral(GOLDEN_FOLDER "/") + GetParam().name());
}

std::vector<Golden> goldens() {
    std::vector<Golden> all;
    for (const bool dark : {true, false}) {
        for (const bool translucent : {true, false}) {
            for (const double scale : {1.0, 1.5, 2.0}) {
                all.push_back({dark, translucent, scale});
            }
        }
    }
    return all;
}

INSTANTIATE_TEST_SUITE_P(looks, GoldenTest, ::testing::ValuesIn(goldens()));

} // namespace
} // namespace orvantile
