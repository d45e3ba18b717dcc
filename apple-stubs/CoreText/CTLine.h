// <CoreText/CTLine.h>
#pragma once

#include <CoreFoundation/CoreFoundation.h>
#include <CoreGraphics/CoreGraphics.h>

typedef const struct CF_BRIDGED_TYPE(id) __CTLine *CTLineRef;

typedef CF_ENUM(uint32_t, CTLineTruncationType){
    kCTLineTruncationStart = 0,
    kCTLineTruncationEnd = 1,
    kCTLineTruncationMiddle = 2,
};

CF_ASSUME_NONNULL_BEGIN
extern "C" {

API_AVAILABLE(macos(10.5))
CTLineRef CTLineCreateWithAttributedString(CFAttributedStringRef attrString);

// NULL when the token is wider than `width` and truncation is needed.
API_AVAILABLE(macos(10.5))
CTLineRef _Nullable CTLineCreateTruncatedLine(CTLineRef line, double width, CTLineTruncationType truncationType,
                                              CTLineRef _Nullable truncationToken);

// Draws at the context's text position, through its text matrix.
API_AVAILABLE(macos(10.5))
void CTLineDraw(CTLineRef line, CGContextRef context);

// The typographic width; ascent, descent and leading through the pointers.
API_AVAILABLE(macos(10.5))
double CTLineGetTypographicBounds(CTLineRef line, CGFloat *_Nullable ascent, CGFloat *_Nullable descent,
                                  CGFloat *_Nullable leading);

}
CF_ASSUME_NONNULL_END
