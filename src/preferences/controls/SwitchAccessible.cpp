#include "preferences/controls/SwitchAccessible.h"

#include <memory>

namespace orvantile {
namespace {

QAccessibleInterface* makeInterface(const QString&, QObject* object) {
    if (auto* control = dynamic_cast<Switch*>(object)) {
        return std::make_unique<SwitchAccessible>(*control).release(); // the toolkit's from here on
    }
    return nullptr;
}

} // namespace

SwitchAccessible::SwitchAccessible(Switch& control_)
    : QAccessibleWidget(&control_, QAccessible::CheckBox),
      control(control_) {}

void SwitchAccessible::install() {
    static const bool installed = [] {
        QAccessible::installFactory(&makeInterface);
        return true;
    }();
    static_cast<void>(installed);
}

QString SwitchAccessible::text(QAccessible::Text kind) const {
    return kind == QAccessible::Name ? control.text() : QAccessibleWidget::text(kind);
}

QAccessible::State SwitchAccessible::state() const {
    auto state = QAccessibleWidget::state();
    state.checkable = 1;
    state.checked = control.isChecked() ? 1 : 0;
    state.pressed = control.isDown() ? 1 : 0;
    return state;
}

QStringList SwitchAccessible::actionNames() const {
    return control.isEnabled() ? QStringList(toggleAction()) + QAccessibleWidget::actionNames()
                               : QStringList();
}

void SwitchAccessible::doAction(const QString& name) {
    if (name == toggleAction()) {
        if (control.isEnabled()) {
            control.click();
        }
    } else {
        QAccessibleWidget::doAction(name);
    }
}

} // namespace orvantile
