#include "platform/macos/statusitem/MacStatusBar.h"

#include "platform/macos/statusitem/MacStatusItem.h"

namespace orvantile::platform::macos {

MacStatusBar::MacStatusBar() : images(std::make_shared<SymbolImages>()) {}

std::unique_ptr<StatusItem> MacStatusBar::createItem() {
    return std::make_unique<MacStatusItem>(images);
}

std::optional<SymbolImage> MacStatusBar::symbolImage(const QString& name,
                                                     const QString& accessibilityDescription) {
    if (images->find(name, accessibilityDescription) == nil) {
        return std::nullopt;
    }
    return SymbolImage{.name = name, .accessibilityDescription = accessibilityDescription};
}

} // namespace orvantile::platform::macos
