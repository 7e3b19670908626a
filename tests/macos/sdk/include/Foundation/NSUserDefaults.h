#pragma once

#include <Foundation/NSCollections.h>
#include <Foundation/NSString.h>

@interface NSUserDefaults : NSObject
@property(class, readonly, strong) NSUserDefaults* standardUserDefaults;
- (void)registerDefaults:(NSDictionary<NSString*, id>*)registrationDictionary;
- (BOOL)boolForKey:(NSString*)key;
- (double)doubleForKey:(NSString*)key;
- (NSString*)stringForKey:(NSString*)key;
- (void)setBool:(BOOL)value forKey:(NSString*)key;
- (void)setDouble:(double)value forKey:(NSString*)key;
- (void)setObject:(id)value forKey:(NSString*)key;
@end
