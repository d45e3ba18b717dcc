// <AppKit/NSColorSpace.h>
#pragma once

#import <Foundation/Foundation.h>

NS_ASSUME_NONNULL_BEGIN

@interface NSColorSpace : NSObject
@property (class, strong, readonly) NSColorSpace *sRGBColorSpace API_AVAILABLE(macos(10.5));
@end

NS_ASSUME_NONNULL_END
