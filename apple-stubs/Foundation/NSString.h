// <Foundation/NSString.h>
#pragma once

#import <Foundation/NSObject.h>

typedef NSUInteger NSStringEncoding;

enum : NSStringEncoding {
    NSUTF8StringEncoding = 4,
};

NS_ASSUME_NONNULL_BEGIN

@interface NSString : NSObject <NSCopying>
@property (nullable, readonly) const char *UTF8String NS_RETURNS_INNER_POINTER;
- (NSUInteger)lengthOfBytesUsingEncoding:(NSStringEncoding)enc;
- (nullable instancetype)initWithBytes:(const void *)bytes length:(NSUInteger)len encoding:(NSStringEncoding)encoding;
+ (nullable instancetype)stringWithUTF8String:(const char *)nullTerminatedCString NS_FORMAT_ARGUMENT(1);
- (NSString *)stringByAppendingString:(NSString *)aString;
+ (instancetype)localizedStringWithFormat:(NSString *)format, ... NS_FORMAT_FUNCTION(1,2);
@property (readonly, copy) NSString *precomposedStringWithCanonicalMapping;
@end

NS_ASSUME_NONNULL_END
