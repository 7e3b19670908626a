#pragma once

#include "platform/AccessibilityElement.h"
#include "platform/linux/keys/KeyEquivalent.h"

#include <QString>

namespace orvantile::platform::a11y {

/// A menu item as it stood at one moment.
class MenuItemNode final : public AccessibilityNode {
public:
    MenuItemNode(QString title, const keys::Accelerator& accelerator);

    [[nodiscard]] AttributeValue copyAttribute(QStringView name) const override;

private:
    QString title;
    keys::KeyEquivalent equivalent;
};

} // namespace orvantile::platform::a11y
