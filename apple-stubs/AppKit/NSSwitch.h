// <AppKit/NSSwitch.h>
#pragma once

#import <AppKit/NSControl.h>
#import <AppKit/NSCell.h>

NS_ASSUME_NONNULL_BEGIN

// Its one property is the state: the switch has no tint of its own and
// follows the system accent colour.
API_AVAILABLE(macos(10.15))
@interface NSSwitch : NSControl
@property NSControlStateValue state;
@end

NS_ASSUME_NONNULL_END
