// <AppKit/NSControl.h>
#pragma once

#import <AppKit/NSView.h>

NS_ASSUME_NONNULL_BEGIN

@interface NSControl : NSView
@property (nullable, weak) id target;
@property (nullable) SEL action;
@end

NS_ASSUME_NONNULL_END
