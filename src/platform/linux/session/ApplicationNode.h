#pragma once

#include "platform/AccessibilityElement.h"

#include <cstdint>

namespace orvantile::platform::session {

/// Stands for a whole application; it has no attributes that a menu item has.
class ApplicationNode final : public AccessibilityNode {
public:
    explicit ApplicationNode(std::int32_t processIdentifier) : process(processIdentifier) {}

    [[nodiscard]] AttributeValue copyAttribute(QStringView) const override { return {}; }

    [[nodiscard]] std::int32_t processIdentifier() const { return process; }

private:
    std::int32_t process;
};

} // namespace orvantile::platform::session
