#pragma once

#include "preferences/controls/KeyboardFocus.h"

#include <QPushButton>

namespace orvantile {

/// A push button in the preferences' look.
class PushButton final : public KeyboardFocus<QPushButton> {
public:
    enum class Role { plain, destructive };

    explicit PushButton(const QString& text, Role role = Role::plain);

    [[nodiscard]] QSize sizeHint() const override;

    [[nodiscard]] QSize minimumSizeHint() const override { return sizeHint(); }

protected:
    void keyPressEvent(QKeyEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    void enterEvent(QEnterEvent* event) override;
    void leaveEvent(QEvent* event) override;

private:
    Role role;
};

} // namespace orvantile
