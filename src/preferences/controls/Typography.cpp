#include "preferences/controls/Typography.h"

#include <QApplication>
#include <QFontInfo>
#include <algorithm>
#include <cmath>

namespace orvantile {
namespace {

constexpr int smallestBody = 13;
constexpr double footnoteRatio = 11.0 / 13;

QFont sized(double pixels) {
    auto font = QApplication::font();
    font.setPixelSize(std::max(1, static_cast<int>(std::lround(pixels))));
    return font;
}

int bodyPixels() {
    return std::max(smallestBody, QFontInfo(QApplication::font()).pixelSize());
}

} // namespace

QFont bodyFont() {
    return sized(bodyPixels());
}

QFont headerFont() {
    auto font = bodyFont();
    font.setWeight(QFont::DemiBold);
    return font;
}

QFont footnoteFont() {
    return sized(bodyPixels() * footnoteRatio);
}

} // namespace orvantile
