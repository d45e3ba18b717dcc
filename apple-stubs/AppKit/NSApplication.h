// <AppKit/NSApplication.h>
#pragma once

#import <AppKit/NSResponder.h>
#import <AppKit/NSUserInterfaceLayout.h>

@class NSApplication, NSNotification;

NS_ASSUME_NONNULL_BEGIN

@protocol NSApplicationDelegate <NSObject>
@optional
- (void)applicationDidFinishLaunching:(NSNotification *)notification;
- (BOOL)applicationShouldHandleReopen:(NSApplication *)sender hasVisibleWindows:(BOOL)flag;
@end

@interface NSApplication : NSResponder
@property (class, readonly, strong) __kindof NSApplication *sharedApplication;
@property (nullable, weak) id<NSApplicationDelegate> delegate;
- (void)run;
- (void)terminate:(nullable id)sender;
- (void)activateIgnoringOtherApps:(BOOL)ignoreOtherApps API_DEPRECATED("This method will be deprecated in a future release. Use NSApp.activate instead.", macos(10.0, API_TO_BE_DEPRECATED));
- (void)activate API_AVAILABLE(macos(14.0));
@end

@interface NSApplication (NSFullKeyboardAccess)
// Whether Full Keyboard Access (System Settings › Keyboard › Keyboard
// navigation) is on; cheap to read, not observable.
@property (readonly, getter=isFullKeyboardAccessEnabled) BOOL fullKeyboardAccessEnabled API_AVAILABLE(macos(10.6));
@end

@interface NSApplication (NSApplicationLayoutDirection)
@property (readonly) NSUserInterfaceLayoutDirection userInterfaceLayoutDirection API_AVAILABLE(macos(10.6));  // Returns the application-wide user interface layout direction.
@end

NS_ASSUME_NONNULL_END
