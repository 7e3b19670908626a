#pragma once

#include <QString>
#include <optional>
#include <utility>
#include <variant>
#include <vector>

namespace orvantile::platform {

using DefaultsValue = std::variant<bool, double, QString>;

/// The user's persistent key-value store. Never reports failures: a value that cannot be written stays in
/// memory. Main thread only.
class UserDefaults {
public:
    UserDefaults() = default;
    UserDefaults(const UserDefaults&) = delete;
    UserDefaults& operator=(const UserDefaults&) = delete;
    virtual ~UserDefaults() = default;

    /// Values for keys that have none. They are never written.
    virtual void registerDefaults(const std::vector<std::pair<QString, DefaultsValue>>& values) = 0;

    /// A stored value of another type reads as false, 0.0 or absent.
    [[nodiscard]] virtual bool boolForKey(const QString& key) const = 0;
    [[nodiscard]] virtual double doubleForKey(const QString& key) const = 0;
    [[nodiscard]] virtual std::optional<QString> stringForKey(const QString& key) const = 0;

    virtual void set(const QString& key, const DefaultsValue& value) = 0;
};

} // namespace orvantile::platform
