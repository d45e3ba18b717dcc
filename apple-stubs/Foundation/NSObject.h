// <Foundation/NSObject.h>
#pragma once

#import <objc/NSObject.h>
#import <Foundation/NSObjCRuntime.h>

typedef struct _NSZone NSZone;

NS_ASSUME_NONNULL_BEGIN

@protocol NSCopying
- (id)copyWithZone:(nullable NSZone *)zone;
@end

NS_ASSUME_NONNULL_END
