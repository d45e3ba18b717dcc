// <AppKit/NSControl.h>
#pragma once

#import <AppKit/NSView.h>
#import <AppKit/NSCell.h>

NS_ASSUME_NONNULL_BEGIN

@interface NSControl : NSView
@property (nullable, weak) id target;
@property (nullable) SEL action;
@property NSControlSize controlSize API_AVAILABLE(macos(10.10));
@end

NS_ASSUME_NONNULL_END
