// <AppKit/NSUserInterfaceLayout.h>
#pragma once

#import <Foundation/Foundation.h>

typedef NS_ENUM(NSInteger, NSUserInterfaceLayoutDirection) {
    NSUserInterfaceLayoutDirectionLeftToRight = 0,
    NSUserInterfaceLayoutDirectionRightToLeft = 1
};
