#pragma once

#include "preferences/controls/Switch.h"

#include <QAccessible>
#include <QAccessibleWidget>

namespace orvantile {

/// A switch as assistive technology sees it: a check box as large as its row, where the toolkit would tell
/// the place of a box that is not drawn.
class SwitchAccessible final : public QAccessibleWidget {
public:
    explicit SwitchAccessible(Switch& control);

    /// Makes the toolkit use this for switches; harmless when done already.
    static void install();

    [[nodiscard]] QString text(QAccessible::Text kind) const override;
    [[nodiscard]] QAccessible::State state() const override;
    [[nodiscard]] QStringList actionNames() const override;
    void doAction(const QString& name) override;

private:
    Switch& control;
};

} // namespace orvantile
