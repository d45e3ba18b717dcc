// <AppKit/NSGraphicsContext.h>
#pragma once

#import <AppKit/NSGraphics.h>
#include <CoreGraphics/CGContext.h>

NS_ASSUME_NONNULL_BEGIN

@interface NSGraphicsContext : NSObject
// `initialFlippedState`: what -isFlipped answers when no view is focused.
+ (NSGraphicsContext *)graphicsContextWithCGContext:(CGContextRef)graphicsPort
                                            flipped:(BOOL)initialFlippedState API_AVAILABLE(macos(10.10));
+ (void)saveGraphicsState;
+ (void)restoreGraphicsState;
@property (readonly) CGContextRef CGContext NS_RETURNS_INNER_POINTER API_AVAILABLE(macos(10.10));
@property (class, nullable, strong) NSGraphicsContext *currentContext;
@end

@interface NSGraphicsContext (NSGraphicsContext_RenderingOptions)
@property NSCompositingOperation compositingOperation;
@end

NS_ASSUME_NONNULL_END
