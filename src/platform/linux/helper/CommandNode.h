#pragma once

#include "platform/AccessibilityElement.h"
#include "platform/linux/helper/HelperReport.h"
#include "platform/linux/keys/KeyEquivalent.h"

#include <QString>
#include <optional>

namespace orvantile::platform::helper {

/// A fired command as a menu item. Of a shortcut of several strokes the first is its key equivalent, with the
/// others written behind its character ("⌃K ⌃C"); where that cannot be written it has no key equivalent.
class CommandNode final : public AccessibilityNode {
public:
    explicit CommandNode(const FiredCommand& command);

    [[nodiscard]] AttributeValue copyAttribute(QStringView name) const override;

private:
    QString title;
    std::optional<keys::KeyEquivalent> equivalent;
};

} // namespace orvantile::platform::helper
