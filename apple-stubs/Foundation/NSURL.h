// <Foundation/NSURL.h>
#pragma once

#import <Foundation/NSObject.h>
#import <Foundation/NSString.h>

NS_ASSUME_NONNULL_BEGIN

@interface NSURL : NSObject <NSCopying>
+ (nullable instancetype)URLWithString:(NSString *)URLString;
@end

NS_ASSUME_NONNULL_END
