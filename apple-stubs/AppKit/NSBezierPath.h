// <AppKit/NSBezierPath.h>
#pragma once

#import <Foundation/Foundation.h>

NS_ASSUME_NONNULL_BEGIN

@interface NSBezierPath : NSObject <NSCopying>
+ (NSBezierPath *)bezierPathWithOvalInRect:(NSRect)rect;
- (void)fill;
@end

NS_ASSUME_NONNULL_END
