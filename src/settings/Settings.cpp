#include "settings/Settings.h"

#include "platform/Platform.h"

#include <memory>
#include <tuple>
#include <type_traits>

namespace orvantile {
namespace {

using platform::DefaultsValue;
using platform::UserDefaults;

/// One setting: where it lives, its key in the defaults and its default value.
template <typename Value>
struct Row {
    Published<Value> Settings::*member;
    QStringView key;
    Value value;
};

template <typename Value>
Row(Published<Value> Settings::*, const char16_t*, Value) -> Row<Value>;

constexpr std::tuple table{
    Row{&Settings::enabled, u"enabled", true},
    Row{&Settings::showInMenuBar, u"showInMenuBar", true},
    Row{&Settings::displaySeconds, u"displaySeconds", 1.2},
    Row{&Settings::position, u"position", HUDPosition(HUDPosition::bottomCenter)},
    Row{&Settings::fontSize, u"fontSize", 22.0},
    Row{&Settings::soundEnabled, u"soundEnabled", true},
    Row{&Settings::sound, u"sound", HUDSound(HUDSound::pop)},
    Row{&Settings::popAnimation, u"popAnimation", true},
    Row{&Settings::translucent, u"translucent", true},
    Row{&Settings::showShortcut, u"showShortcut", true},
    Row{&Settings::appearance, u"appearance", HUDAppearance(HUDAppearance::auto_)},
    Row{&Settings::flatOpacity, u"flatOpacity", 0.75},
};

template <auto member, std::size_t index = 0>
constexpr const auto& rowOf() {
    constexpr const auto& row = std::get<index>(table);
    if constexpr (std::is_same_v<std::remove_const_t<decltype(row.member)>, decltype(member)>) {
        if constexpr (row.member == member) {
            return row;
        } else {
            return rowOf<member, index + 1>();
        }
    } else {
        return rowOf<member, index + 1>();
    }
}

template <typename Visitor>
void forEachRow(Visitor visit) {
    std::apply([&](const auto&... row) { (visit(row), ...); }, table);
}

DefaultsValue storedForm(bool value) {
    return value;
}

DefaultsValue storedForm(double value) {
    return value;
}

template <typename Option>
DefaultsValue storedForm(const Option& option) {
    return option.rawValue();
}

template <typename Value>
Value load(const UserDefaults& defaults, const QString& key) {
    if constexpr (std::is_same_v<Value, bool>) {
        return defaults.boolForKey(key);
    } else if constexpr (std::is_same_v<Value, double>) {
        return defaults.doubleForKey(key);
    } else {
        return Value::fromRawValue(defaults.stringForKey(key).value_or(QString())).value_or(Value::fallback);
    }
}

UserDefaults& registered(UserDefaults& defaults) {
    std::vector<std::pair<QString, DefaultsValue>> values;
    forEachRow([&](const auto& row) { values.emplace_back(row.key.toString(), storedForm(row.value)); });
    defaults.registerDefaults(values);
    return defaults;
}

} // namespace

Settings& Settings::shared() {
    static auto& instance = *std::make_unique<Settings>(*platform::Platform::current().defaults).release();
    return instance;
}

template <auto member>
auto Settings::property() {
    using Value = std::remove_const_t<decltype(rowOf<member>().value)>;
    const auto key = rowOf<member>().key.toString();
    return Published<Value>(load<Value>(defaults, key), objectWillChange,
                            [this, key](const Value& value) { defaults.set(key, storedForm(value)); });
}

// Loaded in this order, which is the order of the members.
Settings::Settings(platform::UserDefaults& store)
    : defaults(registered(store)),
      enabled(property<&Settings::enabled>()),
      showInMenuBar(property<&Settings::showInMenuBar>()),
      displaySeconds(property<&Settings::displaySeconds>()),
      position(property<&Settings::position>()),
      fontSize(property<&Settings::fontSize>()),
      soundEnabled(property<&Settings::soundEnabled>()),
      sound(property<&Settings::sound>()),
      popAnimation(property<&Settings::popAnimation>()),
      translucent(property<&Settings::translucent>()),
      showShortcut(property<&Settings::showShortcut>()),
      appearance(property<&Settings::appearance>()),
      flatOpacity(property<&Settings::flatOpacity>()) {}

void Settings::resetToDefaults() {
    forEachRow([this](const auto& row) { this->*row.member = row.value; });
}

} // namespace orvantile
