// <Foundation/NSDistributedNotificationCenter.h>
#pragma once

#import <Foundation/NSNotification.h>

NS_ASSUME_NONNULL_BEGIN

@interface NSDistributedNotificationCenter : NSNotificationCenter
+ (NSDistributedNotificationCenter *)defaultCenter;
@end

NS_ASSUME_NONNULL_END
