// <ImageIO/CGImageDestination.h>
#pragma once

#include <CoreFoundation/CoreFoundation.h>
#include <CoreGraphics/CGImage.h>

typedef struct CF_BRIDGED_TYPE(id) CGImageDestination *CGImageDestinationRef;

extern "C" {

// `type` is a uniform type identifier ("public.png"); `count` the number of
// images the destination will hold.
API_AVAILABLE(macos(10.4))
CGImageDestinationRef _Nullable CGImageDestinationCreateWithData(CFMutableDataRef _Nonnull data,
                                                                 CFStringRef _Nonnull type, size_t count,
                                                                 CFDictionaryRef _Nullable options);

API_AVAILABLE(macos(10.4))
void CGImageDestinationAddImage(CGImageDestinationRef _Nonnull idst, CGImageRef _Nonnull image,
                                CFDictionaryRef _Nullable properties);

// Writes the image data; true on success.
API_AVAILABLE(macos(10.4))
bool CGImageDestinationFinalize(CGImageDestinationRef _Nonnull idst);

}
