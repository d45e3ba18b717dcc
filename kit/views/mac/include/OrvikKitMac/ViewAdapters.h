// The views room's macOS adapters, as the app's entry builds them: the
// window of the app's own that hosts a view tree.
// Plain C++: no Objective-C type appears here; the definitions are
// Objective-C++ (kit/views/mac/*.mm) and build only on Apple platforms.
// Main thread only.
#pragma once

#include <memory>

#include "OrvikKit/HostedContent.h"
#include "OrvikKit/MainThread.h"

namespace orvik::mac {

// A window of the app's own whose content view is a host view
// (OrvikKitMac/HostView.h) over the content it is shown with.
std::shared_ptr<ContentWindow> makeContentWindow(std::shared_ptr<MainThread> mainThread);

}  // namespace orvik::mac
