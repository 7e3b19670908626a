#pragma once

#include "platform/AccessibilityElement.h"
#include "platform/macos/support/CfHandle.h"

#include <ApplicationServices/ApplicationServices.h>

namespace orvantile::platform::macos {

/// An element of an application's accessibility tree. Main thread only.
class AxElementNode final : public AccessibilityNode {
public:
    explicit AxElementNode(CfHandle<AXUIElementRef> element_) : handle(std::move(element_)) {}

    /// Asks the application, which answers by its own main thread. Strings and whole numbers have a value;
    /// everything else, and every failure, is absent.
    [[nodiscard]] AttributeValue copyAttribute(QStringView name) const override;

    /// Borrowed for the life of this node; null when the system gave no element.
    [[nodiscard]] AXUIElementRef element() const { return handle.get(); }

private:
    CfHandle<AXUIElementRef> handle;
};

/// A handle of the program's kind to `element`.
[[nodiscard]] AccessibilityElement makeAccessibilityElement(CfHandle<AXUIElementRef> element);

} // namespace orvantile::platform::macos
