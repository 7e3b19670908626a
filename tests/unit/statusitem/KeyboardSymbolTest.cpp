#include "platform/linux/desktop/statusitem/KeyboardSymbol.h"

#include <QFile>
#include <QPainter>
#include <QSvgRenderer>
#include <cstdlib>
#include <gmock/gmock.h>

namespace orvantile::platform::desktop {
namespace {

using Qt::StringLiterals::operator""_s;

/// The icon file in black, as bars show it that use the theme.
QImage renderFile(const QString& iconName, int size) {
    QFile file(QStringLiteral(ORVANTILE_ICONS "/") + iconName + u".svg"_s);
    if (!file.open(QIODevice::ReadOnly)) {
        return {};
    }
    QSvgRenderer renderer(file.readAll().replace("currentColor", "#000000"));
    QImage image(size, size, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    QPainter painter(&image);
    painter.setRenderHint(QPainter::Antialiasing);
    renderer.render(&painter);
    return image;
}

/// How much the pictures' coverage differs on average, of 255. Single pixels at the round corners may differ
/// more: the two ways of drawing flatten curves differently.
double meanDifference(const QImage& left, const QImage& right) {
    if (left.size() != right.size()) {
        return 255;
    }
    int sum = 0;
    for (int y = 0; y < left.height(); ++y) {
        for (int x = 0; x < left.width(); ++x) {
            sum += std::abs(qAlpha(left.pixel(x, y)) - qAlpha(right.pixel(x, y)));
        }
    }
    return static_cast<double>(sum) / (left.width() * left.height());
}

TEST(KeyboardSymbol, isKnownByTwoNames) {
    EXPECT_FALSE(KeyboardSymbol::named(u"keyboard")->filled);
    EXPECT_TRUE(KeyboardSymbol::named(u"keyboard.fill")->filled);
    EXPECT_FALSE(KeyboardSymbol::named(u"keyboard.circle"));
    EXPECT_FALSE(KeyboardSymbol::named(u""));
}

class EverySymbol : public ::testing::TestWithParam<const char*> {};

TEST_P(EverySymbol, looksLikeItsIconFileInEverySize) {
    const auto symbol = KeyboardSymbol::named(QString::fromLatin1(GetParam()));
    for (const int size : {16, 22, 24, 32, 44, 48, 64}) {
        const auto file = renderFile(symbol->iconName, size);
        ASSERT_FALSE(file.isNull());
        EXPECT_LE(meanDifference(symbol->draw(size, Qt::black), file), 3) << size << " pixels";
    }
}

TEST_P(EverySymbol, isDrawnInTheGivenColorAlone) {
    const auto image = KeyboardSymbol::named(QString::fromLatin1(GetParam()))->draw(16, QColor(1, 2, 3));
    bool anyOpaque = false;
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x) {
            if (const QColor pixel = image.pixelColor(x, y); pixel.alpha() == 255) {
                anyOpaque = true;
                EXPECT_EQ(pixel, QColor(1, 2, 3));
            }
        }
    }
    EXPECT_TRUE(anyOpaque);
}

INSTANTIATE_TEST_SUITE_P(, EverySymbol, ::testing::Values("keyboard", "keyboard.fill"));

TEST(KeyboardSymbol, filledHoldsMoreInk) {
    const auto ink = [](const char* name) {
        const auto image = KeyboardSymbol::named(QString::fromLatin1(name))->draw(16, Qt::black);
        int total = 0;
        for (int y = 0; y < image.height(); ++y) {
            for (int x = 0; x < image.width(); ++x) {
                total += qAlpha(image.pixel(x, y));
            }
        }
        return total;
    };
    EXPECT_GT(ink("keyboard.fill"), ink("keyboard"));
}

TEST(InkOn, contrastsWithTheBackground) {
    EXPECT_GT(qGray(inkOn(Qt::black).rgb()), 200);
    EXPECT_LT(qGray(inkOn(Qt::white).rgb()), 60);
}

} // namespace
} // namespace orvantile::platform::desktop
