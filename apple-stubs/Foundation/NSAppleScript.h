// <Foundation/NSAppleScript.h>
#pragma once

#import <Foundation/NSObject.h>

@class NSAppleEventDescriptor, NSDictionary<KeyType, ObjectType>, NSString;

NS_ASSUME_NONNULL_BEGIN

FOUNDATION_EXPORT NSString *const NSAppleScriptErrorNumber API_AVAILABLE(macos(10.2));

@interface NSAppleScript : NSObject <NSCopying>
- (nullable instancetype)initWithSource:(NSString *)source NS_DESIGNATED_INITIALIZER;
- (BOOL)compileAndReturnError:(NSDictionary<NSString *, id> *_Nullable *_Nullable)errorInfo;
- (NSAppleEventDescriptor *)executeAndReturnError:(NSDictionary<NSString *, id> *_Nullable *_Nullable)errorInfo;
@end

NS_ASSUME_NONNULL_END
