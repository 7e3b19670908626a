#include "platform/linux/menus/MenuLayout.h"

#include "platform/linux/a11y/ReplyDecoder.h"
#include "platform/linux/keys/KeyBinding.h"
#include "platform/linux/menus/Dictionary.h"

#include <QStringList>
#include <algorithm>
#include <utility>

namespace orvantile::platform::menus {
namespace {

constexpr int deepest = 16;
constexpr const char* itemType = "(ia{sv}av)";

/// A list of key strokes, each a list of modifiers and a key. One of several strokes is no combination.
bool readShortcut(sd_bus_message& message, std::optional<keys::Accelerator>& accelerator) {
    QStringList strokes;
    const bool read = sd_bus_message_enter_container(&message, SD_BUS_TYPE_VARIANT, "aas") > 0 &&
                      readArray(message, "as",
                                [&](sd_bus_message& stroke) {
                                    QStringList names;
                                    if (!readArray(stroke, "s", [&](sd_bus_message& part) {
                                            const auto name = a11y::readText(part);
                                            names += name.value_or(QString());
                                            return name.has_value();
                                        })) {
                                        return false;
                                    }
                                    strokes += names.join(u'+');
                                    return true;
                                }) &&
                      sd_bus_message_exit_container(&message) >= 0;
    accelerator =
        strokes.size() == 1 ? keys::parseAccelerator(strokes.front()) : std::optional<keys::Accelerator>();
    return read;
}

bool readFlag(sd_bus_message& message, bool& flag) {
    const auto value = a11y::readVariantBoolean(message);
    flag = value.value_or(flag);
    return value.has_value();
}

} // namespace

std::optional<MenuLayout> MenuLayout::read(sd_bus_message& message) {
    MenuLayout layout;
    if (!a11y::isAnswer(message) || !a11y::readNumber(message) || !layout.readItem(message, 0, 0)) {
        return std::nullopt;
    }
    return layout;
}

bool MenuLayout::readItem(sd_bus_message& message, std::size_t parent, int depth) {
    if (depth > deepest || items.size() >= mostItems ||
        sd_bus_message_enter_container(&message, SD_BUS_TYPE_STRUCT, "ia{sv}av") <= 0) {
        return false;
    }
    const auto number = a11y::readInteger(message);
    Item item{.number = number.value_or(0), .parent = parent};
    if (!number || !readProperties(message, item)) {
        return false;
    }
    const auto index = items.size();
    indices.emplace(*number, index);
    items.push_back(std::move(item));
    const bool read = readArray(message, "v", [&](sd_bus_message& child) {
        return sd_bus_message_enter_container(&child, SD_BUS_TYPE_VARIANT, itemType) > 0 &&
               readItem(child, index, depth + 1) && sd_bus_message_exit_container(&child) >= 0;
    });
    return read && sd_bus_message_exit_container(&message) >= 0;
}

bool MenuLayout::readProperties(sd_bus_message& message, Item& item) {
    return readDictionary(message, [&](std::string_view name, sd_bus_message& value) {
        if (name == "label" && holdsVariant(value, "s")) {
            const auto label = a11y::readVariantText(value);
            item.title = withoutMnemonic(label.value_or(QString()));
            return label.has_value();
        }
        if (name == "enabled" && holdsVariant(value, "b")) {
            return readFlag(value, item.enabled);
        }
        if (name == "visible" && holdsVariant(value, "b")) {
            return readFlag(value, item.visible);
        }
        if (name == "shortcut" && holdsVariant(value, "aas")) {
            return readShortcut(value, item.accelerator);
        }
        return true;
    });
}

bool MenuLayout::readRemoved(sd_bus_message& message, Item& item) {
    const Item plain;
    return readArray(message, "s", [&](sd_bus_message& part) {
        const auto name = a11y::readBytes(part);
        if (name == "label") {
            item.title = plain.title;
        } else if (name == "enabled") {
            item.enabled = plain.enabled;
        } else if (name == "visible") {
            item.visible = plain.visible;
        } else if (name == "shortcut") {
            item.accelerator = plain.accelerator;
        }
        return name.has_value();
    });
}

void MenuLayout::update(sd_bus_message& message) {
    const auto each = [this](const char* contents, bool (*decode)(sd_bus_message&, Item&)) {
        return [this, contents, decode](sd_bus_message& entry) {
            if (sd_bus_message_enter_container(&entry, SD_BUS_TYPE_STRUCT, contents) <= 0) {
                return false;
            }
            const auto number = a11y::readInteger(entry);
            Item unknown;
            const auto known = indices.find(number.value_or(0));
            return number && decode(entry, known != indices.end() ? items[known->second] : unknown) &&
                   sd_bus_message_exit_container(&entry) >= 0;
        };
    };
    if (readArray(message, "(ia{sv})", each("ia{sv}", readProperties))) {
        static_cast<void>(readArray(message, "(ias)", each("ias", readRemoved)));
    }
}

bool MenuLayout::canBeFired(std::size_t index) const {
    while (items[index].enabled && items[index].visible) {
        if (items[index].parent == index) {
            return true;
        }
        index = items[index].parent;
    }
    return false;
}

Commands MenuLayout::commands() const {
    Commands commands;
    for (std::size_t index = 0; index < items.size(); ++index) {
        if (const auto& item = items[index]; item.accelerator) {
            commands.push_back({item.title, *item.accelerator, canBeFired(index)});
        }
    }
    return commands;
}

} // namespace orvantile::platform::menus
