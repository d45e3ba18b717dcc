// <CoreGraphics/CGBase.h>
#pragma once

#include <CoreFoundation/CoreFoundation.h>

#define CGFLOAT_TYPE double
#define CGFLOAT_IS_DOUBLE 1
typedef CGFLOAT_TYPE CGFloat;
