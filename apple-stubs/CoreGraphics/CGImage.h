// <CoreGraphics/CGImage.h>
#pragma once

#include <CoreGraphics/CGBase.h>

typedef struct CF_BRIDGED_TYPE(id) CGImage *CGImageRef;

typedef CF_ENUM(uint32_t, CGImageAlphaInfo){
    kCGImageAlphaNone,               /* For example, RGB. */
    kCGImageAlphaPremultipliedLast,  /* For example, premultiplied RGBA */
    kCGImageAlphaPremultipliedFirst, /* For example, premultiplied ARGB */
    kCGImageAlphaLast,               /* For example, non-premultiplied RGBA */
    kCGImageAlphaFirst,              /* For example, non-premultiplied ARGB */
    kCGImageAlphaNoneSkipLast,       /* For example, RBGX. */
    kCGImageAlphaNoneSkipFirst,      /* For example, XRGB. */
    kCGImageAlphaOnly                /* No color data, alpha data only */
};

typedef CF_OPTIONS(uint32_t, CGBitmapInfo){
    kCGBitmapAlphaInfoMask = 0x1F,
};

extern "C" {

size_t CGImageGetWidth(CGImageRef _Nullable image);
size_t CGImageGetHeight(CGImageRef _Nullable image);

}
