#pragma once

#import <Foundation/Foundation.h>
#include <QString>

// For Objective-C++ files only.
namespace orvantile::platform::macos {

[[nodiscard]] inline NSString* toNSString(const QString& text) {
    return [NSString stringWithCharacters:text.utf16() length:static_cast<NSUInteger>(text.size())];
}

/// `text` may be nil, which gives a null string.
[[nodiscard]] inline QString toQString(NSString* text) {
    if (text == nil) {
        return {};
    }
    QString result(static_cast<qsizetype>(text.length), Qt::Uninitialized);
    [text getCharacters:reinterpret_cast<unichar*>(result.data()) range:NSMakeRange(0, text.length)];
    return result;
}

} // namespace orvantile::platform::macos
