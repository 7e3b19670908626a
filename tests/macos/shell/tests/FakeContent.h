#pragma once

#include "platform/Panel.h"

#include <vector>

namespace orvantile::test {

/// A content of one plain colour, with an entrance of a tenth of a second that grows and fades in.
class FakeContent final : public platform::PanelContent {
public:
    static constexpr double entrance = 0.1;

    [[nodiscard]] platform::Size fittingSize() const override { return size; }

    [[nodiscard]] QString title() const override { return QStringLiteral("⌃S  Save"); }

    void prepare(const platform::Rect& frame, double scale) override {
        prepared.emplace_back(frame, scale);
        image = QImage(QSize(static_cast<int>(frame.width * scale), static_cast<int>(frame.height * scale)),
                       QImage::Format_ARGB32_Premultiplied);
        image.setDevicePixelRatio(scale);
        image.fill(colour);
    }

    [[nodiscard]] QPainterPath blurRegion() const override { return blurred; }

    [[nodiscard]] bool isDark() const override { return dark; }

    [[nodiscard]] platform::PanelFrame frameAt(double elapsed) const override {
        if (elapsed >= entrance) {
            return {.image = image, .origin = origin};
        }
        return {
            .image = image, .scale = 0.5, .opacity = elapsed / entrance, .settled = false, .origin = origin};
    }

    platform::Size size{200, 100};
    QColor colour = QColor(10, 20, 30);
    QPainterPath blurred;
    bool dark = true;
    QPoint origin;
    QImage image;
    std::vector<std::pair<platform::Rect, double>> prepared;
};

} // namespace orvantile::test
