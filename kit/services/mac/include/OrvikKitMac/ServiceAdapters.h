// The services room's macOS adapters, as the app's entry builds them: the
// notification centres.
// Plain C++: no Objective-C type appears here; the definitions are
// Objective-C++ (kit/services/mac/*.mm) and build only on Apple platforms.
// Main thread only.
#pragma once

#include <memory>

#include "OrvikKit/MainThread.h"
#include "OrvikKit/Notifications.h"

namespace orvik::mac {

// The distributed notification centre and the shared workspace's centre.
// Handlers run on the main thread and assert it with `mainThread`; the
// distributed centre delivers an immediate observer's notifications even
// while the app is not active.
std::shared_ptr<NotificationCenter> makeDistributedNotificationCenter(std::shared_ptr<const MainThread> mainThread);
std::shared_ptr<NotificationCenter> makeWorkspaceNotificationCenter(std::shared_ptr<const MainThread> mainThread);

}  // namespace orvik::mac
