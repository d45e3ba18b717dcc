// <AppKit/NSFont.h>
#pragma once

#import <Foundation/Foundation.h>
#import <AppKit/NSFontDescriptor.h>

NS_ASSUME_NONNULL_BEGIN

// Toll-free bridged with CTFontRef.
@interface NSFont : NSObject <NSCopying>
+ (NSFont *)systemFontOfSize:(CGFloat)fontSize weight:(NSFontWeight)weight API_AVAILABLE(macos(10.11));
@end

NS_ASSUME_NONNULL_END
