// <Foundation/NSProcessInfo.h>
#pragma once

#import <Foundation/NSObject.h>

NS_ASSUME_NONNULL_BEGIN

typedef struct {
    NSInteger majorVersion;
    NSInteger minorVersion;
    NSInteger patchVersion;
} NSOperatingSystemVersion;

@interface NSProcessInfo : NSObject
@property (class, readonly, strong) NSProcessInfo *processInfo;
@property (readonly) NSOperatingSystemVersion operatingSystemVersion API_AVAILABLE(macos(10.10));
@end

NS_ASSUME_NONNULL_END
