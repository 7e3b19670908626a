#pragma once

#import <Foundation/Foundation.h>

#include "macos/shell/fakes/Desktop.h"

#include <map>
#include <string>
#include <vector>

@interface NSArray () {
@public
    std::vector<id> objects;
}

@end

@interface NSDictionary () {
@public
    std::map<std::string, id> values;
}

@end

@interface NSNumber () {
@public
    std::variant<bool, double> value;
}

@end

namespace orvantile::test {

/// Of a number or a string.
[[nodiscard]] desktop::DefaultsObject defaultsObject(id object);

} // namespace orvantile::test
