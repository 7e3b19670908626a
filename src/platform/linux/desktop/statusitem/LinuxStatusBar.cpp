#include "platform/linux/desktop/statusitem/LinuxStatusBar.h"

#include "platform/linux/desktop/statusitem/LinuxStatusItem.h"

#include <string>
#include <unistd.h>

namespace orvantile::platform::desktop {

std::unique_ptr<StatusItem> LinuxStatusBar::createItem() {
    return std::make_unique<LinuxStatusItem>(scheduler, appearance,
                                             "org.kde.StatusNotifierItem-" + std::to_string(::getpid()) +
                                                 '-' + std::to_string(++itemsMade));
}

std::optional<SymbolImage> LinuxStatusBar::symbolImage(const QString& name,
                                                       const QString& accessibilityDescription) {
    if (!KeyboardSymbol::named(name)) {
        return std::nullopt;
    }
    return SymbolImage{.name = name, .accessibilityDescription = accessibilityDescription};
}

} // namespace orvantile::platform::desktop
