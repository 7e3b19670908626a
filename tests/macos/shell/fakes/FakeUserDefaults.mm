#include "macos/shell/fakes/DesktopState.h"
#include "macos/shell/fakes/FakeCollections.h"
#include "macos/shell/fakes/FakeString.h"

using namespace orvantile::test;
using desktop::state;

namespace {

template <typename Value>
std::optional<Value> find(NSString* key) {
    for (const auto* domain : {&state().stored, &state().registered}) {
        if (const auto found = domain->find(utf8(key)); found != domain->end()) {
            const auto* value = std::get_if<Value>(&found->second);
            return value != nullptr ? std::optional(*value) : std::nullopt;
        }
    }
    return std::nullopt;
}

} // namespace

@implementation NSUserDefaults

+ (NSUserDefaults*)standardUserDefaults {
    static NSUserDefaults* const defaults = [[NSUserDefaults alloc] init];
    return defaults;
}

- (void)registerDefaults:(NSDictionary*)dictionary {
    for (const auto& [key, value] : dictionary->values) {
        state().registered.insert_or_assign(key, defaultsObject(value));
    }
}

- (BOOL)boolForKey:(NSString*)key {
    return find<bool>(key).value_or(false);
}

- (double)doubleForKey:(NSString*)key {
    return find<double>(key).value_or(0);
}

- (NSString*)stringForKey:(NSString*)key {
    const auto text = find<std::string>(key);
    return text ? nsString(*text) : nil;
}

- (void)setBool:(BOOL)value forKey:(NSString*)key {
    state().stored.insert_or_assign(utf8(key), static_cast<bool>(value));
}

- (void)setDouble:(double)value forKey:(NSString*)key {
    state().stored.insert_or_assign(utf8(key), value);
}

- (void)setObject:(id)value forKey:(NSString*)key {
    state().stored.insert_or_assign(utf8(key), defaultsObject(value));
}

@end

const std::map<std::string, desktop::DefaultsObject>& desktop::registeredDefaults() {
    return state().registered;
}

std::map<std::string, desktop::DefaultsObject>& desktop::storedDefaults() {
    return state().stored;
}
