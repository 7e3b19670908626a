#include "hud/GaussianBlur.h"

#include <QPainter>
#include <cmath>
#include <gmock/gmock.h>

namespace orvantile {
namespace {

/// The blurred picture at the size of the original.
QImage blurred(const QImage& picture, double sigma) {
    const auto small = gaussianBlurred(picture, sigma);
    QImage image(picture.size(), QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    QPainter painter(&image);
    painter.setRenderHint(QPainter::SmoothPixmapTransform);
    painter.drawImage(QRectF(QPointF(), small.deviceIndependentSize()), small);
    return image;
}

QImage edge(QSize size, bool vertical) {
    QImage image(size, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::black);
    QPainter painter(&image);
    painter.fillRect(vertical ? QRect(size.width() / 2, 0, size.width(), size.height())
                              : QRect(0, size.height() / 2, size.width(), size.height()),
                     Qt::white);
    return image;
}

class GaussianBlur : public ::testing::TestWithParam<double> {};

TEST_P(GaussianBlur, turnsAnEdgeIntoTheErrorFunction) {
    const double sigma = GetParam();
    const int length = 2 * static_cast<int>(5 * sigma) + 64;
    const auto across = blurred(edge({length, 40}, true), sigma);
    const auto down = blurred(edge({40, length}, false), sigma);
    for (int i = 0; i < length; ++i) {
        const double distance = i + 0.5 - length / 2;
        const double expected = 255 * (1 + std::erf(distance / sigma / std::sqrt(2))) / 2;
        ASSERT_NEAR(qRed(across.pixel(i, 20)), expected, 4) << "column " << i;
        ASSERT_NEAR(qRed(down.pixel(20, i)), expected, 4) << "row " << i;
    }
}

INSTANTIATE_TEST_SUITE_P(sigmas, GaussianBlur, ::testing::Values(1.5, 4.0, 11.0, 16.5, 22.0, 40.0),
                         [](const auto& given) {
                             return "sigma" + std::to_string(static_cast<int>(given.param * 10));
                         });

TEST(GaussianBlurOf, aPlainPictureIsThatPicture) {
    for (const auto color : {0xff000000U, 0xffffffffU, 0xff3c78b4U, 0x80402010U}) {
        QImage plain(123, 57, QImage::Format_ARGB32_Premultiplied);
        plain.fill(color);
        const auto result = blurred(plain, 20);
        for (const auto at : {QPoint(0, 0), QPoint(61, 28), QPoint(122, 56)}) {
            EXPECT_EQ(result.pixel(at), plain.pixel(at));
        }
    }
}

TEST(GaussianBlurOf, nothingIsNothing) {
    EXPECT_TRUE(gaussianBlurred(QImage(), 10).isNull());
    QImage one(1, 1, QImage::Format_ARGB32_Premultiplied);
    one.fill(Qt::red);
    EXPECT_EQ(gaussianBlurred(one, 30).pixel(0, 0), one.pixel(0, 0));
    EXPECT_EQ(gaussianBlurred(one, 0).pixel(0, 0), one.pixel(0, 0));
}

TEST(GaussianBlurOf, pixelsWithoutAlphaIsOpaque) {
    QImage plain(64, 64, QImage::Format_RGB32);
    plain.fill(0x00102030U);
    EXPECT_EQ(blurred(plain, 8).pixel(32, 32), 0xff102030U);
}

} // namespace
} // namespace orvantile
