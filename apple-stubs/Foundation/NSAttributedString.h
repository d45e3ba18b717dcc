// <Foundation/NSAttributedString.h>
#pragma once

#import <Foundation/NSObject.h>
#import <Foundation/NSDictionary.h>
#import <Foundation/NSString.h>

NS_ASSUME_NONNULL_BEGIN

typedef NSString *NSAttributedStringKey;

@interface NSAttributedString : NSObject <NSCopying>
@property (readonly, copy) NSString *string;
@end

@interface NSAttributedString (NSExtendedAttributedString)
@property (readonly) NSUInteger length;
- (instancetype)initWithString:(NSString *)str attributes:(nullable NSDictionary<NSAttributedStringKey, id> *)attrs;
@end

NS_ASSUME_NONNULL_END
