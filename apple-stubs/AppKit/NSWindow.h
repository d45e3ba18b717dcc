// <AppKit/NSWindow.h>
#pragma once

#import <AppKit/NSResponder.h>

NS_ASSUME_NONNULL_BEGIN

@interface NSWindow : NSResponder
- (void)makeKeyWindow;
@end

NS_ASSUME_NONNULL_END
