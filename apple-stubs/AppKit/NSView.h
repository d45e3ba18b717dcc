// <AppKit/NSView.h>
#pragma once

#import <AppKit/NSAccessibilityProtocols.h>
#import <AppKit/NSResponder.h>
#import <AppKit/NSAppearance.h>

@class NSWindow, NSTrackingArea, NSEvent;

typedef NSInteger NSToolTipTag;

NS_ASSUME_NONNULL_BEGIN

@interface NSView : NSResponder <NSAccessibility>
- (instancetype)initWithFrame:(NSRect)frameRect NS_DESIGNATED_INITIALIZER;
@property (nullable, readonly, assign) NSWindow *window;
@property NSRect bounds;
@property (nullable, readonly, assign) NSView *superview;
- (void)addSubview:(NSView *)view;
- (void)removeFromSuperview;
- (void)setFrameSize:(NSSize)newSize;
@property NSRect frame;
@property (getter=isFlipped, readonly) BOOL flipped;
- (NSPoint)convertPoint:(NSPoint)point fromView:(nullable NSView *)view;
@property BOOL needsDisplay;
- (void)drawRect:(NSRect)dirtyRect;
- (BOOL)performKeyEquivalent:(NSEvent *)event;
- (BOOL)acceptsFirstMouse:(nullable NSEvent *)event;
- (void)addTrackingArea:(NSTrackingArea *)trackingArea API_AVAILABLE(macos(10.5));
- (void)removeTrackingArea:(NSTrackingArea *)trackingArea API_AVAILABLE(macos(10.5));
- (void)updateTrackingAreas API_AVAILABLE(macos(10.5));
- (NSToolTipTag)addToolTipRect:(NSRect)rect owner:(id)owner userData:(nullable void *)data;
- (void)removeAllToolTips;
@property (nullable, copy) NSString *toolTip;
- (void)viewDidMoveToWindow;
@property (readonly) BOOL canBecomeKeyView;
// Sent when the view's backing scale factor or colour space changes (the
// window moved to another display, say).
- (void)viewDidChangeBackingProperties API_AVAILABLE(macos(10.7));
@end

@interface NSView () <NSAppearanceCustomization>
@end

@interface NSView (NSConstraintBasedLayoutLayering)
@property (readonly) NSSize intrinsicContentSize API_AVAILABLE(macos(10.7));
- (void)invalidateIntrinsicContentSize API_AVAILABLE(macos(10.7));
@end

@interface NSView (NSConstraintBasedLayoutFittingSize)
// The smallest size that satisfies the view's constraints.
@property (readonly) NSSize fittingSize API_AVAILABLE(macos(10.7));
@end

NS_ASSUME_NONNULL_END
