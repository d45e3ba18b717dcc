// <AppKit/NSColor.h>
#pragma once

#import <Foundation/Foundation.h>

NS_ASSUME_NONNULL_BEGIN

@interface NSColor : NSObject <NSCopying>
@property (class, strong, readonly) NSColor *blackColor;
- (void)setFill;
@end

NS_ASSUME_NONNULL_END
