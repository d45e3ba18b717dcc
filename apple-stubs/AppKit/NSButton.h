// <AppKit/NSButton.h>
#pragma once

#import <AppKit/NSControl.h>

@class NSImage;

NS_ASSUME_NONNULL_BEGIN

@interface NSButton : NSControl
@property (nullable, strong) NSImage *image;
@end

NS_ASSUME_NONNULL_END
