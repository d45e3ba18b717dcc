// <AppKit/NSView.h>
#pragma once

#import <AppKit/NSAccessibilityProtocols.h>
#import <AppKit/NSResponder.h>

@class NSWindow;

NS_ASSUME_NONNULL_BEGIN

@interface NSView : NSResponder <NSAccessibility>
- (instancetype)initWithFrame:(NSRect)frameRect NS_DESIGNATED_INITIALIZER;
@property (nullable, readonly, assign) NSWindow *window;
@property NSRect bounds;
@end

NS_ASSUME_NONNULL_END
