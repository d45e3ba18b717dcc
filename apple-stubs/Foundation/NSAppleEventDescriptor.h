// <Foundation/NSAppleEventDescriptor.h>
#pragma once

#import <Foundation/NSObject.h>

@class NSData;

NS_ASSUME_NONNULL_BEGIN

@interface NSAppleEventDescriptor : NSObject <NSCopying>
@property (readonly, copy) NSData *data;
@property (nullable, readonly, copy) NSString *stringValue;
@end

NS_ASSUME_NONNULL_END
