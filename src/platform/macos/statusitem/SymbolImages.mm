#include "platform/macos/statusitem/SymbolImages.h"

#include "platform/macos/cocoa/Text.h"

namespace orvantile::platform::macos {

NSImage* SymbolImages::find(const QString& name, const QString& accessibilityDescription) {
    NSImage* image = [NSImage imageWithSystemSymbolName:toNSString(name)
                               accessibilityDescription:toNSString(accessibilityDescription)];
    if (image != nil) {
        found.insert_or_assign({name, accessibilityDescription}, image);
    }
    return image;
}

NSImage* SymbolImages::image(const SymbolImage& symbol) {
    const auto known = found.find({symbol.name, symbol.accessibilityDescription});
    NSImage* image =
        known != found.end() ? known->second : find(symbol.name, symbol.accessibilityDescription);
    [image setTemplate:symbol.isTemplate];
    return image;
}

} // namespace orvantile::platform::macos
