// <AppKit/NSPopover.h>
#pragma once

#import <AppKit/NSResponder.h>

@class NSView, NSViewController;

NS_ASSUME_NONNULL_BEGIN

typedef NS_ENUM(NSInteger, NSPopoverBehavior){
    NSPopoverBehaviorApplicationDefined = 0,
    NSPopoverBehaviorTransient = 1,
    NSPopoverBehaviorSemitransient = 2,
};

API_AVAILABLE(macos(10.7))
@interface NSPopover : NSResponder
- (instancetype)init NS_DESIGNATED_INITIALIZER;
@property NSPopoverBehavior behavior;
@property BOOL animates;
// Set to the content view's size when the content view controller is set.
@property NSSize contentSize;
@property (nullable, retain) NSViewController *contentViewController;
@property (readonly, getter=isShown) BOOL shown;
- (void)showRelativeToRect:(NSRect)positioningRect ofView:(NSView *)positioningView preferredEdge:(NSRectEdge)preferredEdge;
- (void)performClose:(nullable id)sender;
@end

NS_ASSUME_NONNULL_END
