// <objc/objc.h>: the Objective-C base types.
#pragma once

#include <stdbool.h>

// From <objc/objc-api.h>: with the modern runtime, `isa` is marked deprecated.
#if !defined(OBJC_ISA_AVAILABILITY)
#if __OBJC2__
#define OBJC_ISA_AVAILABILITY __attribute__((deprecated))
#else
#define OBJC_ISA_AVAILABILITY /* still available */
#endif
#endif

/// An opaque type that represents an Objective-C class.
typedef struct objc_class *Class;

/// Represents an instance of a class.
struct objc_object {
    Class _Nonnull isa OBJC_ISA_AVAILABILITY;
};

/// A pointer to an instance of a class.
typedef struct objc_object *id;

/// An opaque type that represents a method selector.
typedef struct objc_selector *SEL;

/// Type to represent a boolean value. The compiler says which form the target
/// uses (bool on arm64 Macs, signed char on Intel Macs).
#if defined(__OBJC_BOOL_IS_BOOL)
#if __OBJC_BOOL_IS_BOOL
#define OBJC_BOOL_IS_BOOL 1
#else
#define OBJC_BOOL_IS_BOOL 0
#endif
#else
#if TARGET_OS_OSX || TARGET_OS_MACCATALYST || ((TARGET_OS_IOS || TARGET_OS_BRIDGE) && !__LP64__ && !__ARM_ARCH_7K)
#define OBJC_BOOL_IS_BOOL 0
#else
#define OBJC_BOOL_IS_BOOL 1
#endif
#endif

#if OBJC_BOOL_IS_BOOL
typedef bool BOOL;
#else
#define OBJC_BOOL_IS_CHAR 1
typedef signed char BOOL;
#endif

#define OBJC_BOOL_DEFINED

#if __has_feature(objc_bool)
#define YES __objc_yes
#define NO __objc_no
#else
#define YES ((BOOL)1)
#define NO ((BOOL)0)
#endif

#ifndef Nil
#if __has_feature(cxx_nullptr)
#define Nil nullptr
#else
#define Nil ((void *)0)
#endif
#endif

#ifndef nil
#if __has_feature(cxx_nullptr)
#define nil nullptr
#else
#define nil ((void *)0)
#endif
#endif
