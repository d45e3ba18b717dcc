// <Foundation/NSObjCRuntime.h>
#pragma once

#include <stdint.h>

#include <objc/objc.h>
#include <os/availability.h>

typedef long NSInteger;
typedef unsigned long NSUInteger;

#define FOUNDATION_EXPORT extern "C"
#define NS_ASSUME_NONNULL_BEGIN _Pragma("clang assume_nonnull begin")
#define NS_ASSUME_NONNULL_END _Pragma("clang assume_nonnull end")
#define NS_DESIGNATED_INITIALIZER __attribute__((objc_designated_initializer))
#define NS_UNAVAILABLE __attribute__((unavailable))
#define NS_RETURNS_INNER_POINTER __attribute__((objc_returns_inner_pointer))
#define NS_FORMAT_ARGUMENT(A) __attribute__((format_arg(A)))
#define NS_FORMAT_FUNCTION(F,A) __attribute__((format(__NSString__, F, A)))
#define NS_NOESCAPE __attribute__((noescape))

// NS_ENUM and NS_OPTIONS as the SDK spells them for C++.
#define NS_ENUM(_type, _name) \
    enum _name : _type _name; \
    enum _name : _type
#define NS_OPTIONS(_type, _name) \
    _type _name;                 \
    enum : _type
