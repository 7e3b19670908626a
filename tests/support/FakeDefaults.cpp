#include "support/FakeDefaults.h"

#include <variant>

namespace orvantile::test {
namespace {

using Qt::StringLiterals::operator""_s;

QString described(const platform::DefaultsValue& value) {
    if (const auto* flag = std::get_if<bool>(&value)) {
        return *flag ? u"true"_s : u"false"_s;
    }
    if (const auto* amount = std::get_if<double>(&value)) {
        return loggedNumber(*amount);
    }
    return std::get<QString>(value);
}

} // namespace

void FakeDefaults::registerDefaults(const std::vector<std::pair<QString, platform::DefaultsValue>>& values) {
    for (const auto& [key, value] : values) {
        log->append(u"defaults.register "_s + key + u" "_s + described(value));
        registered[key] = value;
    }
}

template <typename Value>
std::optional<Value> FakeDefaults::find(const QString& key) const {
    for (const auto* domain : {&stored, &registered}) {
        if (const auto found = domain->find(key); found != domain->end()) {
            const auto* value = std::get_if<Value>(&found->second);
            return value != nullptr ? std::optional(*value) : std::nullopt;
        }
    }
    return std::nullopt;
}

bool FakeDefaults::boolForKey(const QString& key) const {
    log->append(u"defaults.bool "_s + key);
    return find<bool>(key).value_or(false);
}

double FakeDefaults::doubleForKey(const QString& key) const {
    log->append(u"defaults.double "_s + key);
    return find<double>(key).value_or(0.0);
}

std::optional<QString> FakeDefaults::stringForKey(const QString& key) const {
    log->append(u"defaults.string "_s + key);
    return find<QString>(key);
}

void FakeDefaults::set(const QString& key, const platform::DefaultsValue& value) {
    log->append(u"defaults.set "_s + key + u" "_s + described(value));
    stored[key] = value;
}

} // namespace orvantile::test
