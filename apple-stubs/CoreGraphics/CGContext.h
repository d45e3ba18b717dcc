// <CoreGraphics/CGContext.h>
#pragma once

#include <CoreGraphics/CGBase.h>
#include <CoreGraphics/CGAffineTransform.h>
#include <CoreGraphics/CGColor.h>
#include <CoreGraphics/CGColorSpace.h>
#include <CoreGraphics/CGGeometry.h>
#include <CoreGraphics/CGGradient.h>
#include <CoreGraphics/CGImage.h>
#include <CoreGraphics/CGPath.h>

typedef struct CGContext *CGContextRef;

typedef CF_ENUM(int32_t, CGBlendMode){
    kCGBlendModeNormal,
    kCGBlendModeMultiply,
    kCGBlendModeScreen,
    kCGBlendModeOverlay,
    kCGBlendModeDarken,
    kCGBlendModeLighten,
    kCGBlendModeColorDodge,
    kCGBlendModeColorBurn,
    kCGBlendModeSoftLight,
    kCGBlendModeHardLight,
    kCGBlendModeDifference,
    kCGBlendModeExclusion,
    kCGBlendModeHue,
    kCGBlendModeSaturation,
    kCGBlendModeColor,
    kCGBlendModeLuminosity,
    kCGBlendModeClear,
    kCGBlendModeCopy,
    kCGBlendModeSourceIn,
    kCGBlendModeSourceOut,
    kCGBlendModeSourceAtop,
    kCGBlendModeDestinationOver,
    kCGBlendModeDestinationIn,
    kCGBlendModeDestinationOut,
    kCGBlendModeDestinationAtop,
    kCGBlendModeXOR,
    kCGBlendModePlusDarker,
    kCGBlendModePlusLighter,
};

CF_ASSUME_NONNULL_BEGIN
extern "C" {

API_AVAILABLE(macos(10.0))
void CGContextSaveGState(CGContextRef _Nullable c);
API_AVAILABLE(macos(10.0))
void CGContextRestoreGState(CGContextRef _Nullable c);

API_AVAILABLE(macos(10.0))
void CGContextScaleCTM(CGContextRef _Nullable c, CGFloat sx, CGFloat sy);
API_AVAILABLE(macos(10.0))
void CGContextTranslateCTM(CGContextRef _Nullable c, CGFloat tx, CGFloat ty);

API_AVAILABLE(macos(10.0))
void CGContextSetLineWidth(CGContextRef _Nullable c, CGFloat width);
API_AVAILABLE(macos(10.0))
void CGContextSetAlpha(CGContextRef _Nullable c, CGFloat alpha);
API_AVAILABLE(macos(10.4))
void CGContextSetBlendMode(CGContextRef _Nullable c, CGBlendMode mode);

API_AVAILABLE(macos(10.0))
void CGContextBeginPath(CGContextRef _Nullable c);
API_AVAILABLE(macos(10.2))
void CGContextAddPath(CGContextRef _Nullable c, CGPathRef _Nullable path);

API_AVAILABLE(macos(10.0))
void CGContextFillPath(CGContextRef _Nullable c);
API_AVAILABLE(macos(10.0))
void CGContextStrokePath(CGContextRef _Nullable c);
API_AVAILABLE(macos(10.0))
void CGContextFillRect(CGContextRef _Nullable c, CGRect rect);

API_AVAILABLE(macos(10.0))
void CGContextClip(CGContextRef _Nullable c);

API_AVAILABLE(macos(10.3))
void CGContextSetFillColorWithColor(CGContextRef _Nullable c, CGColorRef _Nullable color);
API_AVAILABLE(macos(10.3))
void CGContextSetStrokeColorWithColor(CGContextRef _Nullable c, CGColorRef _Nullable color);

API_AVAILABLE(macos(10.0))
void CGContextDrawImage(CGContextRef _Nullable c, CGRect rect, CGImageRef _Nullable image);

// `offset` is in base space; `blur` is non-negative.
API_AVAILABLE(macos(10.3))
void CGContextSetShadowWithColor(CGContextRef _Nullable c, CGSize offset, CGFloat blur, CGColorRef _Nullable color);

API_AVAILABLE(macos(10.5))
void CGContextDrawLinearGradient(CGContextRef _Nullable c, CGGradientRef _Nullable gradient, CGPoint startPoint,
                                 CGPoint endPoint, CGGradientDrawingOptions options);

API_AVAILABLE(macos(10.0))
void CGContextSetTextPosition(CGContextRef _Nullable c, CGFloat x, CGFloat y);
API_AVAILABLE(macos(10.0))
void CGContextSetTextMatrix(CGContextRef _Nullable c, CGAffineTransform t);

API_AVAILABLE(macos(10.3))
void CGContextBeginTransparencyLayer(CGContextRef _Nullable c, CFDictionaryRef _Nullable auxiliaryInfo);
API_AVAILABLE(macos(10.5))
void CGContextBeginTransparencyLayerWithRect(CGContextRef _Nullable c, CGRect rect, CFDictionaryRef _Nullable auxInfo);
API_AVAILABLE(macos(10.3))
void CGContextEndTransparencyLayer(CGContextRef _Nullable c);

}
CF_ASSUME_NONNULL_END
