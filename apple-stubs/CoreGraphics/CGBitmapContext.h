// <CoreGraphics/CGBitmapContext.h>
#pragma once

#include <CoreGraphics/CGBase.h>
#include <CoreGraphics/CGContext.h>

CF_ASSUME_NONNULL_BEGIN
extern "C" {

API_AVAILABLE(macos(10.0))
CGContextRef _Nullable CGBitmapContextCreate(void *_Nullable data, size_t width, size_t height,
                                             size_t bitsPerComponent, size_t bytesPerRow,
                                             CGColorSpaceRef _Nullable space, CGBitmapInfo bitmapInfo);

// A copy of the bitmap as an image (Create rule); NULL when it cannot be made.
API_AVAILABLE(macos(10.4))
CGImageRef _Nullable CGBitmapContextCreateImage(CGContextRef _Nullable context);

}
CF_ASSUME_NONNULL_END
