#pragma once

#include <QProxyStyle>

namespace orvantile::test {

/// The toolkit's own style without movements, so that pictures show the end of each.
class StillStyle final : public QProxyStyle {
public:
    StillStyle() : QProxyStyle(QStringLiteral("Fusion")) {}

    [[nodiscard]] int styleHint(StyleHint hint, const QStyleOption* option, const QWidget* widget,
                                QStyleHintReturn* result) const override {
        return hint == SH_Widget_Animation_Duration ? 0
                                                    : QProxyStyle::styleHint(hint, option, widget, result);
    }
};

} // namespace orvantile::test
