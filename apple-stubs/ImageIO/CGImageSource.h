// <ImageIO/CGImageSource.h>
#pragma once

#include <CoreFoundation/CoreFoundation.h>
#include <CoreGraphics/CGImage.h>

typedef struct CF_BRIDGED_TYPE(id) CGImageSource *CGImageSourceRef;

extern "C" {

API_AVAILABLE(macos(10.4))
extern const CFStringRef kCGImageSourceCreateThumbnailFromImageAlways;
API_AVAILABLE(macos(10.4))
extern const CFStringRef kCGImageSourceThumbnailMaxPixelSize;
API_AVAILABLE(macos(10.4))
extern const CFStringRef kCGImageSourceCreateThumbnailWithTransform;

API_AVAILABLE(macos(10.4))
CGImageSourceRef _Nullable CGImageSourceCreateWithData(CFDataRef _Nonnull data, CFDictionaryRef _Nullable options);

API_AVAILABLE(macos(10.4))
CGImageRef _Nullable CGImageSourceCreateThumbnailAtIndex(CGImageSourceRef _Nonnull isrc, size_t index,
                                                         CFDictionaryRef _Nullable options);

}
