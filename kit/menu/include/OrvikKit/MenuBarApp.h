// The menu-bar application scaffold: the app hands `run` a launch function,
// which builds the app's parts once the application has finished launching;
// the parts are then kept for the life of the process.
//
// `run` and the application delegate are the platform's (kit/menu/mac);
// what the delegate does on launch is `finishLaunching`, portable and tested.
//
// Main thread only.
#pragma once

#include <functional>
#include <memory>
#include <optional>

#include "OrvikKit/MenuBarController.h"
#include "OrvikKit/UpdateReminderCenter.h"

namespace orvik::MenuBarApp {

// What the launch function builds and the application keeps alive.
struct Parts {
    std::shared_ptr<MenuBarController> menuBar;
    // Its due flag drives the status item's badge.
    std::shared_ptr<UpdateReminderCenter> updateReminders;
};

using Launch = std::function<Parts()>;

// The delegate's work once the application has finished launching: calls
// `launch`, points the controller's badge at the reminder centre, and
// answers the parts to keep. Parts without a controller or a centre are a
// programming fault that stops the process.
Parts finishLaunching(const Launch& launch);

// The delegate's answer when the app is opened again while it runs
// (Finder, Spotlight, `open`): the controller's reopen once the parts are
// built, nothing before. Answers whether AppKit should go on with its own
// reopening, which it never should: an agent has no window for it to bring
// back, and the controller has shown what there is to show.
bool reopen(const std::optional<Parts>& parts);

// Installs the application delegate on the shared application and runs its
// event loop; returns only when the application stops. Defined by the
// platform layer.
void run(Launch launch);

}  // namespace orvik::MenuBarApp
