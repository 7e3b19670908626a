#pragma once

#include "preferences/controls/KeyboardFocus.h"

#include <QRadioButton>

namespace orvantile {

/// One choice of a segmented picker, which draws what lies behind its words.
class Segment final : public KeyboardFocus<QRadioButton> {
public:
    explicit Segment(const QString& text);

    [[nodiscard]] QSize sizeHint() const override;

    [[nodiscard]] QSize minimumSizeHint() const override { return sizeHint(); }

protected:
    [[nodiscard]] bool hitButton(const QPoint& position) const override;
    void paintEvent(QPaintEvent* event) override;
};

} // namespace orvantile
