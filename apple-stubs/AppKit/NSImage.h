// <AppKit/NSImage.h>
#pragma once

#import <Foundation/Foundation.h>
#import <AppKit/NSFontDescriptor.h>

NS_ASSUME_NONNULL_BEGIN

@class NSImageSymbolConfiguration;

@interface NSImage : NSObject
+ (nullable instancetype)imageWithSystemSymbolName:(NSString *)symbolName
                          accessibilityDescription:(nullable NSString *)description API_AVAILABLE(macos(11.0));
+ (instancetype)imageWithSize:(NSSize)size
                      flipped:(BOOL)drawingHandlerShouldBeCalledWithFlippedContext
               drawingHandler:(BOOL (^)(NSRect dstRect))drawingHandler API_AVAILABLE(macos(10.8));
@property NSSize size;
// In C++ "template" is a keyword, so the SDK declares the accessors of the
// template property as methods there.
- (BOOL)isTemplate API_AVAILABLE(macos(10.5));
- (void)setTemplate:(BOOL)isTemplate API_AVAILABLE(macos(10.5));
@property (nullable, copy) NSString *accessibilityDescription API_AVAILABLE(macos(10.6));
- (void)drawInRect:(NSRect)rect API_AVAILABLE(macos(10.9));
- (nullable NSImage *)imageWithSymbolConfiguration:(NSImageSymbolConfiguration *)configuration
    API_AVAILABLE(macos(11.0));
@end

@interface NSImage () <NSCopying>
@end

API_AVAILABLE(macos(11.0))
@interface NSImageSymbolConfiguration : NSObject <NSCopying>
+ (instancetype)configurationWithPointSize:(CGFloat)pointSize weight:(NSFontWeight)weight;
@end

NS_ASSUME_NONNULL_END
