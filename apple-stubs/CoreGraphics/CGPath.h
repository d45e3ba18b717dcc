// <CoreGraphics/CGPath.h>
#pragma once

#include <CoreGraphics/CGBase.h>
#include <CoreGraphics/CGAffineTransform.h>
#include <CoreGraphics/CGGeometry.h>

typedef struct CF_BRIDGED_TYPE(id) CGPath *CGMutablePathRef;
typedef const struct CF_BRIDGED_TYPE(id) CGPath *CGPathRef;

CF_ASSUME_NONNULL_BEGIN
extern "C" {

API_AVAILABLE(macos(10.2))
CGMutablePathRef CGPathCreateMutable(void);

API_AVAILABLE(macos(10.2))
void CGPathMoveToPoint(CGMutablePathRef _Nullable path, const CGAffineTransform *_Nullable m, CGFloat x, CGFloat y);

API_AVAILABLE(macos(10.2))
void CGPathAddLineToPoint(CGMutablePathRef _Nullable path, const CGAffineTransform *_Nullable m, CGFloat x,
                          CGFloat y);

API_AVAILABLE(macos(10.2))
void CGPathAddCurveToPoint(CGMutablePathRef _Nullable path, const CGAffineTransform *_Nullable m, CGFloat cp1x,
                           CGFloat cp1y, CGFloat cp2x, CGFloat cp2y, CGFloat x, CGFloat y);

API_AVAILABLE(macos(10.2))
void CGPathCloseSubpath(CGMutablePathRef _Nullable path);

API_AVAILABLE(macos(10.2))
void CGPathAddRect(CGMutablePathRef _Nullable path, const CGAffineTransform *_Nullable m, CGRect rect);

API_AVAILABLE(macos(10.4))
void CGPathAddEllipseInRect(CGMutablePathRef _Nullable path, const CGAffineTransform *_Nullable m, CGRect rect);

// The types of path elements returned by CGPathApply.
typedef CF_ENUM(int32_t, CGPathElementType) {
    kCGPathElementMoveToPoint,
    kCGPathElementAddLineToPoint,
    kCGPathElementAddQuadCurveToPoint,
    kCGPathElementAddCurveToPoint,
    kCGPathElementCloseSubpath
};

struct CGPathElement {
    CGPathElementType type;
    CGPoint *points;
};
typedef struct CGPathElement CGPathElement;

typedef void (*CGPathApplierFunction)(void *_Nullable info, const CGPathElement *element);

API_AVAILABLE(macos(10.2))
void CGPathApply(CGPathRef _Nullable path, void *_Nullable info, CGPathApplierFunction _Nullable function);

}
CF_ASSUME_NONNULL_END
