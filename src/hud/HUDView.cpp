#include "hud/HUDView.h"

#include "hud/Spring.h"

#include <QFont>
#include <QFontMetricsF>
#include <algorithm>
#include <cmath>

namespace orvantile {
namespace {

constexpr QMarginsF outerPadding(28, 22, 28, 36);
constexpr Spring popSpring(0.42, 0.62);
constexpr double popFrom = 0.6;
constexpr double fadeSeconds = 0.14;

QFont labelFont(double fontSize) {
    QFont font;
    font.setPixelSize(std::max(1, static_cast<int>(std::lround(fontSize))));
    font.setWeight(QFont::DemiBold);
    font.setHintingPreference(QFont::PreferNoHinting);
    return font;
}

QSizeF labelSize(const HUDView& view) {
    const QFontMetricsF metrics(labelFont(view.fontSize));
    return metrics.size(0, view.text.isEmpty() ? QStringLiteral(" ") : view.text);
}

/// CSS and the toolkits agree on this curve for ease-out: cubic Bézier (0, 0, 0.58, 1).
double easeOut(double progress) {
    const double x2 = 0.58;
    double low = 0;
    double high = 1;
    for (int i = 0; i < 40; ++i) {
        const double t = (low + high) / 2;
        const double x = 3 * (1 - t) * t * t * x2 + t * t * t;
        (x < progress ? low : high) = t;
    }
    return 3 * (1 - low) * low * low + low * low * low;
}

} // namespace

platform::Size HUDView::fittingSize() const {
    const auto inner = capsule();
    return {inner.width() + outerPadding.left() + outerPadding.right(),
            inner.height() + outerPadding.top() + outerPadding.bottom()};
}

QRectF HUDView::capsule() const {
    const auto label = labelSize(*this);
    return {outerPadding.left(), outerPadding.top(), label.width() + 2 * std::max(1.1 * fontSize, 22.0),
            label.height() + 2 * std::max(0.55 * fontSize, 12.0)};
}

void HUDView::paint(QPainter& painter, const QImage&) const {
    const auto area = capsule();
    const int tone = darkMode ? 0 : 255;
    QColor background(tone, tone, tone);
    background.setAlphaF(static_cast<float>(flatOpacity));
    painter.setRenderHints(QPainter::Antialiasing | QPainter::TextAntialiasing);
    painter.setPen(Qt::NoPen);
    painter.setBrush(background);
    painter.drawRoundedRect(area, area.height() / 2, area.height() / 2);
    QColor ink(Qt::white);
    if (!darkMode) {
        ink = Qt::black;
        ink.setAlphaF(0.85F);
    }
    painter.setPen(ink);
    painter.setFont(labelFont(fontSize));
    painter.drawText(area, Qt::AlignCenter, text);
}

HUDView::Entrance HUDView::entranceAt(double elapsed) const {
    if (popAnimation) {
        const double position = popSpring.positionAt(elapsed);
        const bool settled = elapsed >= popSpring.settlingTime(0.001);
        return {settled ? 1.0 : popFrom + (1 - popFrom) * position,
                settled ? 1.0 : std::clamp(position, 0.0, 1.0), settled};
    }
    const double progress = std::clamp(elapsed / fadeSeconds, 0.0, 1.0);
    return {1, easeOut(progress), progress >= 1};
}

} // namespace orvantile
