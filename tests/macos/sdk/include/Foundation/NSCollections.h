#pragma once

#include <Foundation/NSObject.h>

@interface NSArray<T> : NSObject
@property(readonly) NSUInteger count;
+ (instancetype)arrayWithObjects:(const T*)objects count:(NSUInteger)count;
- (T)objectAtIndexedSubscript:(NSUInteger)index;
@end

@interface NSDictionary<K, V> : NSObject
- (V)objectForKey:(K)key;
- (V)objectForKeyedSubscript:(K)key;
@end

@interface NSMutableDictionary<K, V> : NSDictionary <K, V>
+ (instancetype)dictionary;
- (void)setObject:(V)object forKeyedSubscript:(K)key;
@end

@interface NSValue : NSObject
@end

@interface NSNumber : NSValue
+ (NSNumber*)numberWithBool:(BOOL)value;
+ (NSNumber*)numberWithDouble:(double)value;
@end
