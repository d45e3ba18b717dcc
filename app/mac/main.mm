// The process entry. It asserts that it runs on the main thread, then makes
// its first decision: "--snapshot <directory>" renders the menu to PNG files
// and exits with status 0 before anything else is built (no app state, event
// tap or status item). Otherwise it runs the menu-bar application with the
// app's launch function, which builds nothing until the application has
// finished launching.
#import <Foundation/Foundation.h>

#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "OrvikKit/MainThread.h"
#include "OrvikKit/MenuBarApp.h"
#include "OrvikKitMac/BaseAdapters.h"
#include "TolvaneMac/Adapters.h"
#include "Tolvane/Entry.h"

int main(int argc, const char* argv[]) {
    @autoreleasepool {
        // Before anything else, snapshot mode included.
        const std::shared_ptr<orvik::MainThread> mainThread = orvik::mac::makeMainQueue();
        orvik::assertOnMainThread(*mainThread);

        const std::vector<std::string> arguments(argv, argv + argc);
        const std::optional<int> snapshotStatus = tolvane::runSnapshotIfAsked(
            arguments, [](const std::string& directory) { tolvane::mac::renderSnapshots(directory); });
        if (snapshotStatus) return *snapshotStatus;

        orvik::MenuBarApp::run([mainThread] { return tolvane::mac::launch(mainThread); });
    }
    return 0;
}
