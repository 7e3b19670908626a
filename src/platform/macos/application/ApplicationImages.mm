#include "platform/macos/application/ApplicationImages.h"

#include "platform/macos/cocoa/Text.h"

#include <QDir>

namespace orvantile::platform::macos {

void registerApplicationImages() {
    @autoreleasepool { // no loop turns yet that would bring one
        QDir::setSearchPaths(QStringLiteral("images"), {toQString(NSBundle.mainBundle.resourcePath)});
    }
}

} // namespace orvantile::platform::macos
