#pragma once

// The basic types of the Objective-C runtime.

typedef struct objc_class* Class;

typedef struct objc_object {
    Class isa;
} * id;

typedef struct objc_selector* SEL;
typedef bool BOOL;

#define YES __objc_yes
#define NO __objc_no
#define nil nullptr
#define Nil nullptr
