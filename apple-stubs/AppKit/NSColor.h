// <AppKit/NSColor.h>
#pragma once

#import <Foundation/Foundation.h>

NS_ASSUME_NONNULL_BEGIN

@class NSColorSpace;

@interface NSColor : NSObject <NSCopying>
- (nullable NSColor *)colorUsingColorSpace:(NSColorSpace *)space;
@property (class, strong, readonly) NSColor *blackColor; /* 0.0 white */
@property (class, strong, readonly) NSColor *whiteColor; /* 1.0 white */
@property (class, strong, readonly) NSColor *labelColor API_AVAILABLE(macos(10.10));
@property (class, strong, readonly) NSColor *secondaryLabelColor API_AVAILABLE(macos(10.10));
@property (class, strong, readonly) NSColor *tertiaryLabelColor API_AVAILABLE(macos(10.10));
@property (class, strong, readonly) NSColor *separatorColor API_AVAILABLE(macos(10.14));
@property (class, strong, readonly) NSColor *systemGreenColor API_AVAILABLE(macos(10.10));
@property (class, strong, readonly) NSColor *systemOrangeColor API_AVAILABLE(macos(10.10));
@property (class, strong, readonly) NSColor *systemPinkColor API_AVAILABLE(macos(10.10));
@property (class, strong, readonly) NSColor *systemGrayColor API_AVAILABLE(macos(10.10));
@property (class, strong, readonly) NSColor *controlAccentColor API_AVAILABLE(macos(10.14));
@property (class, strong, readonly) NSColor *keyboardFocusIndicatorColor;
- (void)setFill;
// Valid only on component based colours whose colour space model is RGB.
- (void)getRed:(nullable CGFloat *)red
         green:(nullable CGFloat *)green
          blue:(nullable CGFloat *)blue
         alpha:(nullable CGFloat *)alpha;
@end

NS_ASSUME_NONNULL_END
