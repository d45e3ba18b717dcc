// <AppKit/NSGraphics.h>
#pragma once

#import <Foundation/Foundation.h>

typedef NS_ENUM(NSUInteger, NSBackingStoreType) {
    NSBackingStoreBuffered = 2,
};

typedef NS_ENUM(NSUInteger, NSCompositingOperation){
    NSCompositingOperationClear = 0,
    NSCompositingOperationCopy = 1,
    NSCompositingOperationSourceOver = 2,
};
