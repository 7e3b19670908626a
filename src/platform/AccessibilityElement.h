#pragma once

#include <QString>
#include <cstdint>
#include <memory>
#include <utility>
#include <variant>

namespace orvantile::platform {

/// The value of an accessibility attribute: absent (unreadable or of a type nobody asks for), a string or an
/// integer.
using AttributeValue = std::variant<std::monostate, QString, std::int64_t>;

/// What an element handle refers to. Implemented by each platform.
class AccessibilityNode {
public:
    AccessibilityNode() = default;
    AccessibilityNode(const AccessibilityNode&) = delete;
    AccessibilityNode& operator=(const AccessibilityNode&) = delete;
    virtual ~AccessibilityNode() = default;

    /// Copies the attribute called `name`. Never blocks for long and never fails: what cannot be read is
    /// absent.
    [[nodiscard]] virtual AttributeValue copyAttribute(QStringView name) const = 0;
};

/// A cheap handle to an element of another application's accessibility tree; copies share the element.
class AccessibilityElement {
public:
    explicit AccessibilityElement(std::shared_ptr<const AccessibilityNode> node_) : node(std::move(node_)) {}

    [[nodiscard]] AttributeValue copyAttribute(QStringView name) const { return node->copyAttribute(name); }

    /// What the handle refers to, for the platform that made it.
    [[nodiscard]] const AccessibilityNode& target() const { return *node; }

    friend bool operator==(const AccessibilityElement&, const AccessibilityElement&) = default;

private:
    std::shared_ptr<const AccessibilityNode> node;
};

} // namespace orvantile::platform
