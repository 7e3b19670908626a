#include "platform/linux/helper/CommandNode.h"

#include <algorithm>
#include <span>

namespace orvantile::platform::helper {
namespace {

using keys::KeyEquivalent;

/// A stroke after the first, in the order in which menus show modifiers.
QString textOf(const KeyEquivalent& stroke) {
    QString text;
    if ((stroke.modifiers & KeyEquivalent::control) != 0) {
        text += u'⌃';
    }
    if ((stroke.modifiers & KeyEquivalent::option) != 0) {
        text += u'⌥';
    }
    if ((stroke.modifiers & KeyEquivalent::shift) != 0) {
        text += u'⇧';
    }
    if ((stroke.modifiers & KeyEquivalent::withoutCommand) == 0) {
        text += u'⌘';
    }
    return text + *stroke.character;
}

std::optional<KeyEquivalent> equivalentOf(std::span<const keys::Accelerator> strokes) {
    if (strokes.empty()) {
        return std::nullopt;
    }
    auto equivalent = keys::keyEquivalent(strokes.front());
    for (const auto& stroke : strokes.subspan(1)) {
        const auto next = keys::keyEquivalent(stroke);
        if (!equivalent.character || !next.character) {
            return std::nullopt;
        }
        equivalent.character->append(u' ' + textOf(next));
    }
    return equivalent;
}

} // namespace

CommandNode::CommandNode(const FiredCommand& command)
    : title(command.title),
      equivalent(equivalentOf(command.keys)) {}

AttributeValue CommandNode::copyAttribute(QStringView name) const {
    if (name == u"AXTitle") {
        return title;
    }
    if (!equivalent) {
        return {};
    }
    if (name == u"AXMenuItemCmdModifiers") {
        return equivalent->modifiers;
    }
    if (name == u"AXMenuItemCmdChar" && equivalent->character) {
        return *equivalent->character;
    }
    if (name == u"AXMenuItemCmdGlyph" && equivalent->glyph) {
        return *equivalent->glyph;
    }
    return {};
}

} // namespace orvantile::platform::helper
