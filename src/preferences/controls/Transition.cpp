#include "preferences/controls/Transition.h"

#include <QStyle>

namespace orvantile {
namespace {

constexpr int milliseconds = 140;

} // namespace

Transition::Transition(QWidget& owner_) : owner(owner_) {
    animation.setEasingCurve(QEasingCurve::OutCubic);
    QObject::connect(&animation, &QVariantAnimation::valueChanged, &animation, [this](const QVariant& value) {
        current = value.toDouble();
        owner.update();
    });
}

void Transition::moveTo(double target) {
    animation.stop();
    const bool animates = owner.isVisible() &&
                          owner.style()->styleHint(QStyle::SH_Widget_Animation_Duration, nullptr, &owner) > 0;
    if (!animates) {
        current = target;
        owner.update();
        return;
    }
    animation.setDuration(milliseconds);
    animation.setStartValue(current);
    animation.setEndValue(target);
    animation.start();
}

} // namespace orvantile
