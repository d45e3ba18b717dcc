// <AppKit/NSWorkspace.h>
#pragma once

#import <Foundation/Foundation.h>

NS_ASSUME_NONNULL_BEGIN

@interface NSWorkspace : NSObject
@property (class, readonly, strong) NSWorkspace *sharedWorkspace;
@property (readonly, strong) NSNotificationCenter *notificationCenter;
- (BOOL)openURL:(NSURL *)url;
@end

extern "C" NSString *const NSWorkspaceApplicationKey API_AVAILABLE(macos(10.6));

extern "C" NSNotificationName NSWorkspaceDidLaunchApplicationNotification;
extern "C" NSNotificationName NSWorkspaceDidTerminateApplicationNotification;

extern "C" NSNotificationName NSWorkspaceDidWakeNotification;

NS_ASSUME_NONNULL_END
