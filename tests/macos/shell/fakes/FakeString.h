#pragma once

#import <Foundation/Foundation.h>
#include <string>

namespace orvantile::test {

[[nodiscard]] std::string utf8(NSString* text);
[[nodiscard]] NSString* nsString(const std::string& utf8);

} // namespace orvantile::test

/// What the recorder writes for an object; class names where an object has no description.
@protocol FakeDescribed
- (NSString*)fakeDescription;
@end
