// <Foundation/NSThread.h>
#pragma once

#import <Foundation/NSObject.h>

NS_ASSUME_NONNULL_BEGIN

@interface NSThread : NSObject
@property (class, readonly) BOOL isMainThread API_AVAILABLE(macos(10.5));
@end

NS_ASSUME_NONNULL_END
