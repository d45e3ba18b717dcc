// <AppKit/NSGraphicsContext.h>
#pragma once

#import <AppKit/NSGraphics.h>

NS_ASSUME_NONNULL_BEGIN

@interface NSGraphicsContext : NSObject
@property (class, nullable, strong) NSGraphicsContext *currentContext;
@property NSCompositingOperation compositingOperation API_AVAILABLE(macos(10.10));
@end

NS_ASSUME_NONNULL_END
