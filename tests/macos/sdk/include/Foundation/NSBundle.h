#pragma once

#include <Foundation/NSString.h>

@interface NSURL : NSObject
+ (instancetype)URLWithString:(NSString*)text;
@end

@interface NSBundle : NSObject
@property(class, readonly, strong) NSBundle* mainBundle;
@property(readonly, copy) NSString* privateFrameworksPath;
@property(readonly, copy) NSString* resourcePath;
+ (instancetype)bundleWithPath:(NSString*)path;
- (BOOL)load;
@end
