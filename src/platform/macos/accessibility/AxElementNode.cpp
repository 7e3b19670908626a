#include "platform/macos/accessibility/AxElementNode.h"

#include "platform/macos/support/CfText.h"

#include <memory>

namespace orvantile::platform::macos {
namespace {

CfHandle<CFTypeRef> copyValue(AXUIElementRef element, QStringView name) {
    const auto attribute = toCfString(name);
    if (element == nullptr || !attribute) {
        return {};
    }
    CFTypeRef value = nullptr;
    if (AXUIElementCopyAttributeValue(element, attribute.get(), &value) != kAXErrorSuccess) {
        return {};
    }
    return CfHandle<CFTypeRef>::adopt(value);
}

} // namespace

AttributeValue AxElementNode::copyAttribute(QStringView name) const {
    const auto value = copyValue(element(), name);
    if (!value) {
        return {};
    }
    const CFTypeID type = CFGetTypeID(value.get());
    if (type == CFStringGetTypeID()) {
        return toQString(static_cast<CFStringRef>(value.get()));
    }
    if (type == CFNumberGetTypeID()) {
        std::int64_t number = 0;
        // Fails for what is no whole number, or too large for one.
        if (CFNumberGetValue(static_cast<CFNumberRef>(value.get()), kCFNumberSInt64Type, &number)) {
            return number;
        }
    }
    return {};
}

AccessibilityElement makeAccessibilityElement(CfHandle<AXUIElementRef> element) {
    return AccessibilityElement(std::make_shared<const AxElementNode>(std::move(element)));
}

} // namespace orvantile::platform::macos
