// <CoreGraphics/CGColor.h>
#pragma once

#include <CoreGraphics/CGBase.h>
#include <CoreGraphics/CGColorSpace.h>

typedef struct CF_BRIDGED_TYPE(id) CGColor *CGColorRef;

CF_ASSUME_NONNULL_BEGIN
extern "C" {

// A colour in the sRGB colour space (Create rule).
API_AVAILABLE(macos(10.15))
CGColorRef CGColorCreateSRGB(CGFloat red, CGFloat green, CGFloat blue, CGFloat alpha);

}
CF_ASSUME_NONNULL_END
