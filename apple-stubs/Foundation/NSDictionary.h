// <Foundation/NSDictionary.h>
#pragma once

#import <Foundation/NSObject.h>

NS_ASSUME_NONNULL_BEGIN

@interface NSDictionary<__covariant KeyType, __covariant ObjectType> : NSObject <NSCopying>
@property (readonly) NSUInteger count;
- (nullable ObjectType)objectForKey:(KeyType)aKey;
- (void)enumerateKeysAndObjectsUsingBlock:(void(NS_NOESCAPE ^)(KeyType key, ObjectType obj, BOOL *stop))block
    API_AVAILABLE(macos(10.6));
+ (instancetype)dictionaryWithObjects:(const ObjectType _Nonnull[_Nullable])objects
                              forKeys:(const KeyType<NSCopying> _Nonnull[_Nullable])keys
                                count:(NSUInteger)cnt;
@end

@interface NSMutableDictionary<KeyType, ObjectType> : NSDictionary <KeyType, ObjectType>
- (void)setObject:(ObjectType)anObject forKey:(KeyType<NSCopying>)aKey;
+ (instancetype)dictionaryWithCapacity:(NSUInteger)numItems;
@end

NS_ASSUME_NONNULL_END
