#pragma once

#include <Foundation/NSObject.h>

typedef unsigned short unichar;

typedef struct _NSRange {
    NSUInteger location;
    NSUInteger length;
} NSRange;

static inline NSRange NSMakeRange(NSUInteger location, NSUInteger length) {
    return NSRange{location, length};
}

@interface NSString : NSObject
@property(readonly) NSUInteger length;
+ (instancetype)stringWithCharacters:(const unichar*)characters length:(NSUInteger)length;
- (void)getCharacters:(unichar*)buffer range:(NSRange)range;
- (BOOL)isEqualToString:(NSString*)other;
- (NSString*)stringByAppendingPathComponent:(NSString*)component;
@end

// What the compiler knows of string constants.
@interface NSSimpleCString : NSString {
    char* bytes;
    int numBytes;
}
@end

@interface NSConstantString : NSSimpleCString
@end
