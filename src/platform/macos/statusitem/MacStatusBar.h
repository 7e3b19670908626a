#pragma once

#include "platform/StatusBar.h"

namespace orvantile::platform::macos {

class SymbolImages;

/// The system status bar. Its one item at a time gets the menu whose commands the application's delegate
/// carries out.
class MacStatusBar final : public StatusBar {
public:
    MacStatusBar();

    [[nodiscard]] std::unique_ptr<StatusItem> createItem() override;
    [[nodiscard]] std::optional<SymbolImage> symbolImage(const QString& name,
                                                         const QString& accessibilityDescription) override;

private:
    std::shared_ptr<SymbolImages> images;
};

} // namespace orvantile::platform::macos
