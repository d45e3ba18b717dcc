// <AppKit/NSGraphicsContext.h>
#pragma once

#import <AppKit/NSGraphics.h>

NS_ASSUME_NONNULL_BEGIN

@interface NSGraphicsContext : NSObject
@property (class, nullable, strong) NSGraphicsContext *currentContext;
@end

@interface NSGraphicsContext (NSGraphicsContext_RenderingOptions)
@property NSCompositingOperation compositingOperation;
@end

NS_ASSUME_NONNULL_END
