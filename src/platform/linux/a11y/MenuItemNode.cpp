#include "platform/linux/a11y/MenuItemNode.h"

#include <utility>

namespace orvantile::platform::a11y {

MenuItemNode::MenuItemNode(QString title_, const keys::Accelerator& accelerator)
    : title(std::move(title_)),
      equivalent(keys::keyEquivalent(accelerator)) {}

AttributeValue MenuItemNode::copyAttribute(QStringView name) const {
    if (name == u"AXTitle") {
        return title;
    }
    if (name == u"AXMenuItemCmdModifiers") {
        return equivalent.modifiers;
    }
    if (name == u"AXMenuItemCmdChar" && equivalent.character) {
        return *equivalent.character;
    }
    if (name == u"AXMenuItemCmdGlyph" && equivalent.glyph) {
        return *equivalent.glyph;
    }
    return {};
}

} // namespace orvantile::platform::a11y
