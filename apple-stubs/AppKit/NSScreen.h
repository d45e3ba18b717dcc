// <AppKit/NSScreen.h>
#pragma once

#import <Foundation/Foundation.h>

NS_ASSUME_NONNULL_BEGIN

@interface NSScreen : NSObject
@property (class, readonly, copy) NSArray<NSScreen *> *screens;
@property (class, readonly, nullable, strong) NSScreen *mainScreen;
@property (readonly) CGFloat backingScaleFactor API_AVAILABLE(macos(10.7));
@property (readonly) NSRect frame;
/* The following two rects are at the top of the screen, outside the rectangle defined by safeAreaInsets, but also unobscured.  These rects are empty if there are no additional unobscured areas */
@property (readonly) NSRect auxiliaryTopLeftArea API_AVAILABLE(macos(12.0));
@property (readonly) NSRect auxiliaryTopRightArea API_AVAILABLE(macos(12.0));
@end

NS_ASSUME_NONNULL_END
