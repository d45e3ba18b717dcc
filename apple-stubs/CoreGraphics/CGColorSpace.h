// <CoreGraphics/CGColorSpace.h>
#pragma once

#include <CoreGraphics/CGBase.h>

typedef struct CF_BRIDGED_TYPE(id) CGColorSpace *CGColorSpaceRef;

CF_ASSUME_NONNULL_BEGIN
extern "C" {

// The name of the sRGB colour space.
API_AVAILABLE(macos(10.5))
extern const CFStringRef kCGColorSpaceSRGB;

API_AVAILABLE(macos(10.2))
CGColorSpaceRef _Nullable CGColorSpaceCreateWithName(CFStringRef _Nullable name);

}
CF_ASSUME_NONNULL_END
