#include "platform/macos/desktop/MacDefaults.h"

#include "platform/macos/cocoa/Text.h"

namespace orvantile::platform::macos {
namespace {

id objectFor(const DefaultsValue& value) {
    if (const auto* boolean = std::get_if<bool>(&value)) {
        return [NSNumber numberWithBool:*boolean];
    }
    if (const auto* number = std::get_if<double>(&value)) {
        return [NSNumber numberWithDouble:*number];
    }
    return toNSString(std::get<QString>(value));
}

} // namespace

void MacDefaults::registerDefaults(const std::vector<std::pair<QString, DefaultsValue>>& values) {
    NSMutableDictionary<NSString*, id>* dictionary = [NSMutableDictionary dictionary];
    for (const auto& [key, value] : values) {
        dictionary[toNSString(key)] = objectFor(value);
    }
    [NSUserDefaults.standardUserDefaults registerDefaults:dictionary];
}

bool MacDefaults::boolForKey(const QString& key) const {
    return [NSUserDefaults.standardUserDefaults boolForKey:toNSString(key)];
}

double MacDefaults::doubleForKey(const QString& key) const {
    return [NSUserDefaults.standardUserDefaults doubleForKey:toNSString(key)];
}

std::optional<QString> MacDefaults::stringForKey(const QString& key) const {
    NSString* text = [NSUserDefaults.standardUserDefaults stringForKey:toNSString(key)];
    return text != nil ? std::optional(toQString(text)) : std::nullopt;
}

void MacDefaults::set(const QString& key, const DefaultsValue& value) {
    NSUserDefaults* defaults = NSUserDefaults.standardUserDefaults;
    if (const auto* boolean = std::get_if<bool>(&value)) {
        [defaults setBool:*boolean forKey:toNSString(key)];
    } else if (const auto* number = std::get_if<double>(&value)) {
        [defaults setDouble:*number forKey:toNSString(key)];
    } else {
        [defaults setObject:toNSString(std::get<QString>(value)) forKey:toNSString(key)];
    }
}

} // namespace orvantile::platform::macos
