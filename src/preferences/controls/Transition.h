#pragma once

#include <QVariantAnimation>
#include <QWidget>

namespace orvantile {

/// A short movement of a control from one look to another; nothing runs before it starts and after it ends.
/// Follows the desktop's wish to have no animations.
class Transition {
public:
    /// Repaints `owner` while it moves.
    explicit Transition(QWidget& owner);

    /// Moves to `target` from wherever it is, or jumps there when the owner cannot be seen.
    void moveTo(double target);

    [[nodiscard]] double position() const { return current; }

private:
    QWidget& owner;
    QVariantAnimation animation;
    double current = 0;
};

} // namespace orvantile
