// <Foundation/NSArray.h>
#pragma once

#import <Foundation/NSObject.h>

NS_ASSUME_NONNULL_BEGIN

@interface NSArray<__covariant ObjectType> : NSObject <NSCopying>
@property (readonly) NSUInteger count;
- (ObjectType)objectAtIndex:(NSUInteger)index;
@property (nullable, nonatomic, readonly) ObjectType firstObject API_AVAILABLE(macos(10.6));
@end

@interface NSArray<ObjectType> (NSArrayCreation)
+ (instancetype)arrayWithObjects:(const ObjectType _Nonnull[_Nonnull])objects count:(NSUInteger)cnt;
@end

NS_ASSUME_NONNULL_END
