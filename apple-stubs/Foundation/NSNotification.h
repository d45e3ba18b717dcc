// <Foundation/NSNotification.h>
#pragma once

#import <Foundation/NSObject.h>

@class NSString, NSDictionary, NSOperationQueue;

typedef NSString *NSNotificationName;

NS_ASSUME_NONNULL_BEGIN

@interface NSNotification : NSObject <NSCopying>
@property (readonly, copy) NSNotificationName name;
@property (nullable, readonly, retain) id object;
@property (nullable, readonly, copy) NSDictionary *userInfo;
@end

@interface NSNotificationCenter : NSObject
@property (class, readonly, strong) NSNotificationCenter *defaultCenter;
- (void)removeObserver:(id)observer;
- (id<NSObject>)addObserverForName:(nullable NSNotificationName)name
                            object:(nullable id)obj
                             queue:(nullable NSOperationQueue *)queue
                        usingBlock:(void (^)(NSNotification *note))block API_AVAILABLE(macos(10.6));
@end

NS_ASSUME_NONNULL_END
