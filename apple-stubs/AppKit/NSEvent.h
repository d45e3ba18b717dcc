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

@interface NSEvent : NSObject <NSCopying>
@property (readonly) NSEventType type;
@property (readonly) NSEventSubtype subtype;
@property (readonly) NSInteger data1;
+ (nullable NSEvent *)eventWithCGEvent:(CGEventRef)cgEvent API_AVAILABLE(macos(10.5));
@end

NS_ASSUME_NONNULL_END
