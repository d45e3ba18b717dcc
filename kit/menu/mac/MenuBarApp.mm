// MenuBarApp::run: the application delegate on the shared application, and
// its event loop.
#import <AppKit/AppKit.h>

#include <memory>
#include <optional>
#include <utility>

#include "OrvikKit/FatalError.h"
#include "OrvikKit/MenuBarApp.h"
#include "OrvikKitMac/BaseAdapters.h"

// Calls the launch function once the application has finished launching and
// keeps the parts it built for the life of the process; hands the app's
// being opened again while it runs to MenuBarApp::reopen.
@interface OrvikMenuBarAppDelegate : NSObject <NSApplicationDelegate>
- (instancetype)initWithLaunch:(orvik::MenuBarApp::Launch)launch mainThread:(std::shared_ptr<orvik::MainThread>)mainThread;
@end

@implementation OrvikMenuBarAppDelegate {
    orvik::MenuBarApp::Launch _launch;
    std::optional<orvik::MenuBarApp::Parts> _parts;
    std::shared_ptr<orvik::MainThread> _mainThread;
}

- (instancetype)init {
    orvik::fatalError("the menu-bar application's delegate needs its launch function");
}

- (instancetype)initWithLaunch:(orvik::MenuBarApp::Launch)launch mainThread:(std::shared_ptr<orvik::MainThread>)mainThread {
    orvik::assertOnMainThread(*mainThread);
    self = [super init];
    if (self != nil) {
        _launch = std::move(launch);
        _mainThread = std::move(mainThread);
    }
    return self;
}

- (void)applicationDidFinishLaunching:(NSNotification*)notification {
    (void)notification;
    orvik::assertOnMainThread(*_mainThread);
    _parts = orvik::MenuBarApp::finishLaunching(_launch);
}

// Sent when the app is opened again while it runs (Finder, Spotlight,
// `open`). Answers NO: the controller has shown what there is to show.
- (BOOL)applicationShouldHandleReopen:(NSApplication*)sender hasVisibleWindows:(BOOL)flag {
    (void)sender;
    (void)flag;
    orvik::assertOnMainThread(*_mainThread);
    return orvik::MenuBarApp::reopen(_parts) ? YES : NO;
}

@end

namespace orvik::MenuBarApp {

void run(Launch launch) {
    const std::shared_ptr<MainThread> mainThread = mac::makeMainQueue();
    assertOnMainThread(*mainThread);
    OrvikMenuBarAppDelegate* delegate = [[OrvikMenuBarAppDelegate alloc] initWithLaunch:std::move(launch)
                                                                              mainThread:mainThread];
    NSApplication* application = NSApplication.sharedApplication;
    // The application holds its delegate weakly; `delegate` keeps it alive
    // for as long as the event loop runs.
    application.delegate = delegate;
    [application run];
}

}  // namespace orvik::MenuBarApp
