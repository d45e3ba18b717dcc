// The process entry: on the main thread, runs the menu-bar application with
// the app's launch function, which builds nothing until the application has
// finished launching.
#import <Foundation/Foundation.h>

#include <memory>

#include "OrvikKit/MainThread.h"
#include "OrvikKit/MenuBarApp.h"
#include "OrvikKitMac/Services.h"
#include "TolvaneMac/Adapters.h"

int main(int argc, const char* argv[]) {
    (void)argc;
    (void)argv;
    @autoreleasepool {
        const std::shared_ptr<orvik::MainThread> mainThread = orvik::mac::makeMainQueue();
        orvik::assertOnMainThread(*mainThread);

        // TODO(snapshot): "--snapshot <directory>" renders the menu to PNG
        // files and exits with status 0, before anything else is built
        // (CommandLineOption::value over the arguments, then
        // MenuSnapshot::render). It comes with the menu's views; until then
        // every start runs the application.

        orvik::MenuBarApp::run([mainThread] { return tolvane::mac::launch(mainThread); });
    }
    return 0;
}
