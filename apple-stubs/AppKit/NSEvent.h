// <AppKit/NSEvent.h>
#pragma once

#import <Foundation/Foundation.h>
#include <CoreGraphics/CGEventTypes.h>

NS_ASSUME_NONNULL_BEGIN

typedef NS_ENUM(NSUInteger, NSEventType){
    NSEventTypeSystemDefined = 14,
};

typedef NS_ENUM(short, NSEventSubtype){
    NSEventSubtypeWindowExposed = 0,
};

typedef NS_OPTIONS(NSUInteger, NSEventModifierFlags){
    NSEventModifierFlagCapsLock = 1 << 16,
    NSEventModifierFlagShift = 1 << 17,
    NSEventModifierFlagControl = 1 << 18,
    NSEventModifierFlagOption = 1 << 19,
    NSEventModifierFlagCommand = 1 << 20,
};

@interface NSEvent : NSObject <NSCopying>
@property (readonly) NSEventModifierFlags modifierFlags;
@property (readonly) NSPoint locationInWindow;
// Raises on events other than key events.
@property (nullable, readonly, copy) NSString *charactersIgnoringModifiers;
@property (readonly) NSEventType type;
@property (readonly) NSEventSubtype subtype;
@property (readonly) NSInteger data1;
+ (nullable NSEvent *)eventWithCGEvent:(CGEventRef)cgEvent API_AVAILABLE(macos(10.5));
@end

NS_ASSUME_NONNULL_END
