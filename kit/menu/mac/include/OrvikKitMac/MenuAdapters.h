// The menu room's macOS adapters, as the app's entry builds them: the
// status item and its popover.
// Plain C++: no Objective-C type appears here; the definitions are
// Objective-C++ (kit/menu/mac/*.mm) and build only on Apple platforms.
// Main thread only.
#pragma once

#include <memory>

#include "OrvikKit/HostedContent.h"
#include "OrvikKit/MainThread.h"
#include "OrvikKit/MenuBarController.h"

namespace orvik::mac {

// The status item of the system status bar, with its popover, whose content
// is a host view (OrvikKitMac/HostView.h) over `content`, rebuilt on the
// main thread after each change the content signals. Its placement is read
// from the item, its button's window and NSScreen's screens.
std::shared_ptr<StatusItem> makeStatusItem(std::shared_ptr<HostedContent> content,
                                           std::shared_ptr<MainThread> mainThread);

}  // namespace orvik::mac
