// <CoreFoundation/CFBase.h>
#pragma once

#include <stdbool.h>
#include <stddef.h>
#include <stdint.h>

#include <MacTypes.h>
#include <os/availability.h>

#define CF_BRIDGED_TYPE(T) __attribute__((objc_bridge(T)))
#define CF_BRIDGED_MUTABLE_TYPE(T) __attribute__((objc_bridge_mutable(T)))

#define __CF_NAMED_ENUM(_type, _name) \
    enum _name : _type _name;         \
    enum _name : _type
#define CF_ENUM(_type, _name) __CF_NAMED_ENUM(_type, _name)

// Functions in the audited regions follow the Create/Copy naming convention,
// which lets ARC bridge their results implicitly.
#if __has_feature(arc_cf_code_audited)
#define CF_IMPLICIT_BRIDGING_ENABLED _Pragma("clang arc_cf_code_audited begin")
#define CF_IMPLICIT_BRIDGING_DISABLED _Pragma("clang arc_cf_code_audited end")
#else
#define CF_IMPLICIT_BRIDGING_ENABLED
#define CF_IMPLICIT_BRIDGING_DISABLED
#endif

#define CF_ASSUME_NONNULL_BEGIN _Pragma("clang assume_nonnull begin")
#define CF_ASSUME_NONNULL_END _Pragma("clang assume_nonnull end")

// CF_OPTIONS as the SDK spells it for C++ (the same shape as NS_OPTIONS).
#define CF_OPTIONS(_type, _name) \
    _type _name;                 \
    enum : _type

typedef unsigned long CFTypeID;
typedef signed long CFIndex;

typedef struct {
    CFIndex location;
    CFIndex length;
} CFRange;

typedef const CF_BRIDGED_TYPE(id) void *CFTypeRef;
typedef const struct CF_BRIDGED_TYPE(NSString) __CFString *CFStringRef;
typedef const struct CF_BRIDGED_TYPE(id) __CFAllocator *CFAllocatorRef;

extern "C" {

extern const CFAllocatorRef kCFAllocatorDefault;

CF_IMPLICIT_BRIDGING_ENABLED

CFTypeID CFGetTypeID(CFTypeRef cf);
CFTypeRef CFRetain(CFTypeRef cf);
void CFRelease(CFTypeRef cf);
Boolean CFEqual(CFTypeRef cf1, CFTypeRef cf2);

CF_IMPLICIT_BRIDGING_DISABLED

}
