#include "preferences/controls/AccessibleRole.h"

#include <QAccessibleWidget>
#include <memory>

namespace orvantile {
namespace {

constexpr auto property = "accessibleRole";

class RoleAccessible final : public QAccessibleWidget {
public:
    using QAccessibleWidget::QAccessibleWidget;

    [[nodiscard]] QAccessible::State state() const override {
        auto state = QAccessibleWidget::state();
        state.modal = widget()->isModal() ? 1 : 0;
        return state;
    }
};

QAccessibleInterface* makeInterface(const QString&, QObject* object) {
    const auto role = object == nullptr ? QVariant() : object->property(property);
    auto* widget = qobject_cast<QWidget*>(object);
    if (widget == nullptr || !role.isValid()) {
        return nullptr;
    }
    return std::make_unique<RoleAccessible>(widget, static_cast<QAccessible::Role>(role.toInt()))
        .release(); // the toolkit's from here on
}

} // namespace

void setAccessibleRole(QWidget& widget, QAccessible::Role role) {
    static const bool installed = [] {
        QAccessible::installFactory(&makeInterface);
        return true;
    }();
    static_cast<void>(installed);
    widget.setProperty(property, static_cast<int>(role));
}

} // namespace orvantile
