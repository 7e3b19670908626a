#pragma once

#include <objc/objc.h>

typedef long NSInteger;
typedef unsigned long NSUInteger;
typedef double NSTimeInterval;

#define NS_ENUM(type, name)                                                                                  \
    enum name : type name;                                                                                   \
    enum name : type
#define NS_OPTIONS(type, name)                                                                               \
    type name;                                                                                               \
    enum : type

@class NSString;

extern "C" Class NSClassFromString(NSString* name);
extern "C" NSString* NSStringFromSelector(SEL selector);
extern "C" SEL NSSelectorFromString(NSString* name);
