// <AppKit/NSStatusBar.h>
#pragma once

#import <Foundation/Foundation.h>

@class NSStatusItem;

NS_ASSUME_NONNULL_BEGIN

static const CGFloat NSVariableStatusItemLength = -1;
static const CGFloat NSSquareStatusItemLength = -2;

@interface NSStatusBar : NSObject
@property (class, readonly, strong) NSStatusBar *systemStatusBar;
- (NSStatusItem *)statusItemWithLength:(CGFloat)length;
@end

NS_ASSUME_NONNULL_END
