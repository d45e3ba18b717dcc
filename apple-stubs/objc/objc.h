// <objc/objc.h>: the Objective-C base types.
#pragma once

#include <stdbool.h>

typedef struct objc_class *Class;
struct objc_object {
    Class isa;
};
typedef struct objc_object *id;
typedef struct objc_selector *SEL;

// BOOL is bool on arm64 and signed char on Intel Macs.
#if defined(__x86_64__)
typedef signed char BOOL;
#else
typedef bool BOOL;
#endif

#define OBJC_BOOL_DEFINED
#if __has_feature(objc_bool)
#define YES __objc_yes
#define NO __objc_no
#else
#define YES ((BOOL)1)
#define NO ((BOOL)0)
#endif

#ifndef nil
#if __has_feature(cxx_nullptr)
#define nil nullptr
#else
#define nil ((void *)0)
#endif
#endif
