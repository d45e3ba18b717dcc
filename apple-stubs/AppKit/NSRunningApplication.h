// <AppKit/NSRunningApplication.h>
#pragma once

#import <Foundation/Foundation.h>

NS_ASSUME_NONNULL_BEGIN

API_AVAILABLE(macos(10.6))
@interface NSRunningApplication : NSObject
@property (nullable, readonly, copy) NSString *bundleIdentifier;
+ (NSArray<NSRunningApplication *> *)runningApplicationsWithBundleIdentifier:(NSString *)bundleIdentifier;
@end

NS_ASSUME_NONNULL_END
