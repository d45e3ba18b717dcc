// <AppKit/NSViewController.h>
#pragma once

#import <AppKit/NSResponder.h>

@class NSView;

NS_ASSUME_NONNULL_BEGIN

@interface NSViewController : NSResponder
@property (strong) NSView *view;
@end

NS_ASSUME_NONNULL_END
