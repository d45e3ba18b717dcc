// <objc/NSObject.h>: the root class and the NSObject protocol.
#pragma once

#include <objc/objc.h>

@class NSString;
struct _NSZone;

@protocol NSObject
- (BOOL)isEqual:(id)object;
- (Class)class;
- (BOOL)isKindOfClass:(Class)aClass;
@end

__attribute__((objc_root_class))
@interface NSObject <NSObject>
+ (instancetype)new;
+ (instancetype)alloc;
- (instancetype)init;
+ (Class)class;
@end
