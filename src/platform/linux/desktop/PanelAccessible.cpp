#include "platform/linux/desktop/PanelAccessible.h"

#include <QAccessible>
#include <QAccessibleObject>
#include <QCoreApplication>

namespace orvantile::platform::desktop {

class PanelAccessible::Notification final : public QAccessibleInterface {
public:
    [[nodiscard]] bool isValid() const override { return true; }

    [[nodiscard]] QObject* object() const override { return nullptr; }

    [[nodiscard]] QAccessibleInterface* childAt(int, int) const override { return nullptr; }

    [[nodiscard]] QAccessibleInterface* parent() const override {
        return QAccessible::queryAccessibleInterface(QCoreApplication::instance());
    }

    [[nodiscard]] QAccessibleInterface* child(int) const override { return nullptr; }

    [[nodiscard]] int childCount() const override { return 0; }

    [[nodiscard]] int indexOfChild(const QAccessibleInterface*) const override { return -1; }

    [[nodiscard]] QString text(QAccessible::Text kind) const override {
        return kind == QAccessible::Name ? name : QString();
    }

    void setText(QAccessible::Text, const QString&) override {}

    [[nodiscard]] QRect rect() const override { return {}; }

    [[nodiscard]] QAccessible::Role role() const override { return QAccessible::Notification; }

    [[nodiscard]] QAccessible::State state() const override {
        QAccessible::State current;
        current.invisible = !showing;
        current.readOnly = true;
        return current;
    }

    QString name;
    bool showing = false;
};

PanelAccessible::PanelAccessible()
    : notification(std::make_unique<Notification>().release()),
      identifier(QAccessible::registerAccessibleInterface(notification)) {}

PanelAccessible::~PanelAccessible() {
    QAccessible::deleteAccessibleInterface(identifier);
}

void PanelAccessible::setName(const QString& name) {
    notification->name = name;
    if (notification->showing && QAccessible::isActive()) {
        QAccessibleEvent changed(notification, QAccessible::NameChanged);
        QAccessible::updateAccessibility(&changed);
    }
}

void PanelAccessible::setShowing(bool showing) {
    if (notification->showing == showing) {
        return;
    }
    notification->showing = showing;
    if (QAccessible::isActive()) {
        QAccessibleEvent changed(notification, showing ? QAccessible::ObjectShow : QAccessible::ObjectHide);
        QAccessible::updateAccessibility(&changed);
    }
}

} // namespace orvantile::platform::desktop
