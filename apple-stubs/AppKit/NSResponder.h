// <AppKit/NSResponder.h>
#pragma once

#import <Foundation/Foundation.h>

@class NSEvent;

NS_ASSUME_NONNULL_BEGIN

@interface NSResponder : NSObject
@property (readonly) BOOL acceptsFirstResponder;
- (void)keyDown:(NSEvent *)event;
@end

// The key bindings' commands; Escape sends cancelOperation:.
@protocol NSStandardKeyBindingResponding <NSObject>
@optional
- (void)cancelOperation:(nullable id)sender;
@end

@interface NSResponder (NSStandardKeyBindingMethods) <NSStandardKeyBindingResponding>
@end

NS_ASSUME_NONNULL_END
