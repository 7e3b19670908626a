#pragma once

#include "platform/StatusBar.h"
#include "support/CallLog.h"

#include <memory>
#include <optional>

namespace orvantile::test {

class FakeStatusBar final : public platform::StatusBar {
public:
    explicit FakeStatusBar(CallLog log_) : log(std::move(log_)) {}

    [[nodiscard]] std::unique_ptr<platform::StatusItem> createItem() override;
    [[nodiscard]] std::optional<platform::SymbolImage>
    symbolImage(const QString& name, const QString& accessibilityDescription) override;

    struct State {
        std::optional<platform::SymbolImage> image;
        std::shared_ptr<platform::Menu> menu;
    };

    std::weak_ptr<State> item; ///< the latest, while it is in the bar
    bool knowsSymbols = true;

private:
    CallLog log;
};

} // namespace orvantile::test
