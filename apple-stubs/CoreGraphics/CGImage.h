// <CoreGraphics/CGImage.h>
#pragma once

#include <CoreGraphics/CGBase.h>

typedef struct CF_BRIDGED_TYPE(id) CGImage *CGImageRef;

extern "C" {

size_t CGImageGetWidth(CGImageRef _Nullable image);
size_t CGImageGetHeight(CGImageRef _Nullable image);

}
