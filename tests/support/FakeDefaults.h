#pragma once

#include "platform/UserDefaults.h"
#include "support/CallLog.h"

#include <map>
#include <optional>
#include <utility>
#include <vector>

namespace orvantile::test {

class FakeDefaults final : public platform::UserDefaults {
public:
    explicit FakeDefaults(CallLog log_) : log(std::move(log_)) {}

    void registerDefaults(const std::vector<std::pair<QString, platform::DefaultsValue>>& values) override;
    [[nodiscard]] bool boolForKey(const QString& key) const override;
    [[nodiscard]] double doubleForKey(const QString& key) const override;
    [[nodiscard]] std::optional<QString> stringForKey(const QString& key) const override;
    void set(const QString& key, const platform::DefaultsValue& value) override;

    std::map<QString, platform::DefaultsValue> registered;
    std::map<QString, platform::DefaultsValue> stored;

private:
    template <typename Value>
    [[nodiscard]] std::optional<Value> find(const QString& key) const;

    CallLog log;
};

} // namespace orvantile::test
