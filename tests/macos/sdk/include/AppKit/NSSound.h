#pragma once

#include <Foundation/Foundation.h>

typedef NSString* NSSoundName;

@interface NSSound : NSObject
+ (NSSound*)soundNamed:(NSSoundName)name;
- (BOOL)play;
@end
