#pragma once

#include "preferences/controls/KeyboardFocus.h"
#include "preferences/controls/Transition.h"

#include <QCheckBox>

namespace orvantile {

/// A row that is on or off: its text at the leading edge, a sliding switch at the trailing one. A click
/// anywhere on the row moves it.
class Switch final : public KeyboardFocus<QCheckBox> {
public:
    explicit Switch(const QString& text);

    /// Shows `on` without reporting it as the user's doing.
    void reflect(bool on);

    [[nodiscard]] QSize sizeHint() const override;
    [[nodiscard]] QSize minimumSizeHint() const override;

    [[nodiscard]] bool hasHeightForWidth() const override { return true; }

    [[nodiscard]] int heightForWidth(int width) const override;

protected:
    [[nodiscard]] bool hitButton(const QPoint& position) const override;
    void checkStateSet() override;
    void nextCheckState() override;
    void paintEvent(QPaintEvent* event) override;

private:
    void slide();
    void paintTrack(QPainter& painter, const QRectF& track) const;

    Transition knob{*this};
};

} // namespace orvantile
