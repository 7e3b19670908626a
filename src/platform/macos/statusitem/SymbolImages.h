#pragma once

#import <AppKit/AppKit.h>
#include <map>
#include <utility>

#include "platform/StatusBar.h"

// For Objective-C++ files only.
namespace orvantile::platform::macos {

/// The system's symbols that have been asked for.
class SymbolImages {
public:
    /// Asks the system; nil when it has no such symbol.
    NSImage* find(const QString& name, const QString& accessibilityDescription);

    /// What `find` has found, ready to be shown; asks the system for what has not been asked for yet.
    [[nodiscard]] NSImage* image(const SymbolImage& symbol);

private:
    std::map<std::pair<QString, QString>, NSImage*> found;
};

} // namespace orvantile::platform::macos
