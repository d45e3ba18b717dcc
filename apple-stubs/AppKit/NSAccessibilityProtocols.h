// <AppKit/NSAccessibilityProtocols.h>
#pragma once

#import <Foundation/Foundation.h>
#import <AppKit/NSAccessibilityConstants.h>

NS_ASSUME_NONNULL_BEGIN

@protocol NSAccessibility <NSObject>
@required
@property (nullable, copy) NSString *accessibilityLabel API_AVAILABLE(macos(10.10));
@property (nullable, copy) NSArray *accessibilityChildren API_AVAILABLE(macos(10.10));
// Invokes when clients perform NSAccessibilityPressAction
- (BOOL)accessibilityPerformPress API_AVAILABLE(macos(10.10));
@property (getter = isAccessibilityElement) BOOL accessibilityElement API_AVAILABLE(macos(10.10));
@property (nullable, copy) NSAccessibilityRole accessibilityRole API_AVAILABLE(macos(10.10));
// The deepest element at `point`, in screen coordinates from the bottom left.
- (nullable id)accessibilityHitTest:(NSPoint)point API_AVAILABLE(macos(10.10));
@end

NS_ASSUME_NONNULL_END
