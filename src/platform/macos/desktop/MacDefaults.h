#pragma once

#include "platform/UserDefaults.h"

namespace orvantile::platform::macos {

/// The user's defaults of the application's own domain.
class MacDefaults final : public UserDefaults {
public:
    void registerDefaults(const std::vector<std::pair<QString, DefaultsValue>>& values) override;
    [[nodiscard]] bool boolForKey(const QString& key) const override;
    [[nodiscard]] double doubleForKey(const QString& key) const override;
    [[nodiscard]] std::optional<QString> stringForKey(const QString& key) const override;
    void set(const QString& key, const DefaultsValue& value) override;
};

} // namespace orvantile::platform::macos
