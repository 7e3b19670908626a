#pragma once

#include <QScrollBar>

namespace orvantile {

/// A vertical scroll bar that is a narrow thumb and nothing else.
class SlimScrollBar final : public QScrollBar {
public:
    SlimScrollBar();

    [[nodiscard]] QSize sizeHint() const override;

protected:
    void paintEvent(QPaintEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void enterEvent(QEnterEvent* event) override;
    void leaveEvent(QEvent* event) override;

private:
    [[nodiscard]] QRectF thumb() const;

    double grip = 0; ///< from the thumb's top to where it was taken
};

} // namespace orvantile
