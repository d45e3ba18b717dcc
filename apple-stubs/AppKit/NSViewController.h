// <AppKit/NSViewController.h>
#pragma once

#import <AppKit/NSNibDeclarations.h>
#import <AppKit/NSResponder.h>

@class NSView;

NS_ASSUME_NONNULL_BEGIN

API_AVAILABLE(macos(10.5))
@interface NSViewController : NSResponder
@property (strong) IBOutlet NSView *view;
@end

NS_ASSUME_NONNULL_END
