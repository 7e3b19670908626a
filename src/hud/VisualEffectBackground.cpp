#include "hud/VisualEffectBackground.h"

#include "hud/GaussianBlur.h"

#include <algorithm>
#include <array>

namespace orvantile {
namespace {

constexpr double blurSigma = 20; // points
constexpr int saturation = 340;  // of 256

/// Moves the colours away from their grey, keeping the luminance (Rec. 709 weights).
void saturate(QImage& image) {
    for (int y = 0; y < image.height(); ++y) {
        auto* line = reinterpret_cast<QRgb*>(image.scanLine(y));
        std::transform(line, line + image.width(), line, [](QRgb pixel) {
            const int grey = (54 * qRed(pixel) + 183 * qGreen(pixel) + 19 * qBlue(pixel)) / 256;
            const auto stronger = [&](int channel) {
                return std::clamp(grey + (channel - grey) * saturation / 256, 0, qAlpha(pixel));
            };
            return qRgba(stronger(qRed(pixel)), stronger(qGreen(pixel)), stronger(qBlue(pixel)),
                         qAlpha(pixel));
        });
    }
}

/// The material over a desktop of middling brightness.
QColor tone(MaterialAppearance appearance) {
    return appearance == MaterialAppearance::darkAqua ? QColor(52, 52, 56) : QColor(214, 214, 218);
}

} // namespace

platform::BackdropPicture VisualEffectBackground::blurred(const platform::BackdropPicture& behind,
                                                          double scale) {
    const auto* picture = std::get_if<QImage>(&behind);
    if (!picture) {
        return behind;
    }
    if (picture->isNull()) {
        return platform::NoBackdrop{};
    }
    const bool suitable =
        picture->format() == QImage::Format_RGB32 || picture->format() == QImage::Format_ARGB32_Premultiplied;
    const auto source = suitable ? *picture : picture->convertToFormat(QImage::Format_ARGB32_Premultiplied);
    auto result = gaussianBlurred(source, blurSigma * scale);
    result.setDevicePixelRatio(result.devicePixelRatio() * scale / source.devicePixelRatio());
    saturate(result);
    return result;
}

void VisualEffectBackground::paint(QPainter& painter, const QRectF& area,
                                   const platform::BackdropPicture& behind) const {
    if (const auto* picture = std::get_if<QImage>(&behind)) {
        painter.setRenderHint(QPainter::SmoothPixmapTransform);
        painter.drawImage(QRectF(QPointF(), picture->deviceIndependentSize()), *picture);
    } else if (std::holds_alternative<platform::NoBackdrop>(behind)) {
        painter.fillRect(area, tone(appearance));
    }
}

} // namespace orvantile
