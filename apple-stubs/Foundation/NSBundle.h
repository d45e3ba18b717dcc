// <Foundation/NSBundle.h>
#pragma once

#import <Foundation/NSObject.h>
#import <Foundation/NSArray.h>

NS_ASSUME_NONNULL_BEGIN

@interface NSBundle : NSObject
@property (class, readonly, strong) NSBundle *mainBundle;
@property (nullable, readonly, copy) NSString *bundleIdentifier;
@property (readonly, copy) NSArray<NSString *> *preferredLocalizations;
- (nullable id)objectForInfoDictionaryKey:(NSString *)key;
- (NSString *)localizedStringForKey:(NSString *)key value:(nullable NSString *)value table:(nullable NSString *)tableName
    NS_FORMAT_ARGUMENT(1);
@end

NS_ASSUME_NONNULL_END
