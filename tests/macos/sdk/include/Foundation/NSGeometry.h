#pragma once

#include <Foundation/NSObjCRuntime.h>

typedef double CGFloat;

typedef struct CGPoint {
    CGFloat x, y;
} CGPoint;

typedef struct CGSize {
    CGFloat width, height;
} CGSize;

typedef struct CGRect {
    CGPoint origin;
    CGSize size;
} CGRect;

typedef CGPoint NSPoint;
typedef CGSize NSSize;
typedef CGRect NSRect;

static inline NSSize NSMakeSize(CGFloat width, CGFloat height) {
    return NSSize{width, height};
}

static inline NSRect NSMakeRect(CGFloat x, CGFloat y, CGFloat width, CGFloat height) {
    return NSRect{{x, y}, {width, height}};
}
