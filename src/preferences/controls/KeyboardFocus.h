#pragma once

#include <QFocusEvent>
#include <QKeyEvent>

namespace orvantile {

/// A control that knows whether its focus should be visible: it was reached, or is used, with the keyboard.
template <typename Control>
class KeyboardFocus : public Control {
public:
    using Control::Control;

protected:
    [[nodiscard]] bool isFocusVisible() const { return visible && this->hasFocus(); }

    void focusInEvent(QFocusEvent* event) override {
        switch (event->reason()) {
        case Qt::MouseFocusReason:
            visible = false;
            break;
        case Qt::TabFocusReason:
        case Qt::BacktabFocusReason:
        case Qt::ShortcutFocusReason:
            visible = true;
            break;
        default:
            break;
        }
        Control::focusInEvent(event);
        this->update();
    }

    void focusOutEvent(QFocusEvent* event) override {
        Control::focusOutEvent(event);
        this->update();
    }

    void keyPressEvent(QKeyEvent* event) override {
        visible = true;
        this->update();
        Control::keyPressEvent(event);
    }

private:
    bool visible = false;
};

} // namespace orvantile
