// <CoreGraphics/CGGradient.h>
#pragma once

#include <CoreGraphics/CGBase.h>
#include <CoreGraphics/CGColorSpace.h>

typedef struct CF_BRIDGED_TYPE(id) CGGradient *CGGradientRef;

typedef CF_OPTIONS(uint32_t, CGGradientDrawingOptions){
    kCGGradientDrawsBeforeStartLocation = (1 << 0),
    kCGGradientDrawsAfterEndLocation = (1 << 1),
};

CF_ASSUME_NONNULL_BEGIN
extern "C" {

API_AVAILABLE(macos(10.5))
CGGradientRef _Nullable CGGradientCreateWithColorComponents(CGColorSpaceRef _Nullable space,
                                                            const CGFloat *_Nullable components,
                                                            const CGFloat *_Nullable locations, size_t count);

}
CF_ASSUME_NONNULL_END
