// <CoreGraphics/CGAffineTransform.h>
#pragma once

#include <CoreGraphics/CGBase.h>

struct CGAffineTransform {
    CGFloat a, b, c, d;
    CGFloat tx, ty;
};
typedef struct CGAffineTransform CGAffineTransform;

extern "C" {

// The identity transform: [ 1 0 0 1 0 0 ].
API_AVAILABLE(macos(10.0))
extern const CGAffineTransform CGAffineTransformIdentity;

}
