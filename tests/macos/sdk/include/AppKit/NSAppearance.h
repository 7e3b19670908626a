#pragma once

#include <Foundation/Foundation.h>

typedef NSString* NSAppearanceName;
extern "C" NSAppearanceName const NSAppearanceNameAqua;
extern "C" NSAppearanceName const NSAppearanceNameDarkAqua;

@interface NSAppearance : NSObject
+ (NSAppearance*)appearanceNamed:(NSAppearanceName)name;
- (NSAppearanceName)bestMatchFromAppearancesWithNames:(NSArray<NSAppearanceName>*)names;
@end
