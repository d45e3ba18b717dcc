// <AppKit/NSAccessibilityElement.h>
#pragma once

#import <AppKit/NSAccessibilityProtocols.h>
#import <AppKit/NSAccessibilityConstants.h>

NS_ASSUME_NONNULL_BEGIN

API_AVAILABLE(macos(10.10))
@interface NSAccessibilityElement : NSObject <NSAccessibility>
+ (id)accessibilityElementWithRole:(NSAccessibilityRole)role
                             frame:(NSRect)frame
                             label:(nullable NSString *)label
                            parent:(nullable id)parent;
// Accessibility frame in the coordinate system of the accessibility parent
@property NSRect accessibilityFrameInParentSpace;
@end

NS_ASSUME_NONNULL_END
