// <AppKit/NSWindow.h>
#pragma once

#import <AppKit/NSResponder.h>
#import <AppKit/NSGraphics.h>

@class NSView;

NS_ASSUME_NONNULL_BEGIN

typedef NS_OPTIONS(NSUInteger, NSWindowStyleMask) {
    NSWindowStyleMaskBorderless = 0,
    NSWindowStyleMaskTitled = 1 << 0,
    NSWindowStyleMaskClosable = 1 << 1,
};

typedef NS_OPTIONS(NSUInteger, NSWindowOcclusionState) {
    NSWindowOcclusionStateVisible = 1UL << 1,
} API_AVAILABLE(macos(10.9));

@interface NSWindow : NSResponder
- (instancetype)initWithContentRect:(NSRect)contentRect styleMask:(NSWindowStyleMask)style backing:(NSBackingStoreType)backingStoreType defer:(BOOL)flag NS_DESIGNATED_INITIALIZER;
@property (copy) NSString *title;
@property (nullable, strong) __kindof NSView *contentView;
- (void)setContentSize:(NSSize)size;
@property (readonly) NSRect frame;
- (void)close;
@property (getter=isReleasedWhenClosed) BOOL releasedWhenClosed;
- (void)center;
- (void)makeKeyAndOrderFront:(nullable id)sender;
@property (getter=isVisible, readonly) BOOL visible;
- (void)makeKeyWindow;
@property (readonly) NSWindowOcclusionState occlusionState API_AVAILABLE(macos(10.9));
- (NSPoint)convertPointFromScreen:(NSPoint)point API_AVAILABLE(macos(10.12));
- (BOOL)makeFirstResponder:(nullable NSResponder *)responder;
@property (readonly) CGFloat backingScaleFactor API_AVAILABLE(macos(10.7));
@end

NS_ASSUME_NONNULL_END
