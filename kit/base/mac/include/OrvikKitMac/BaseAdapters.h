// The base room's macOS adapters, one per port, as the app's entry builds
// them: the main and serial queues, the bundle's facts and the unified log,
// the system-service ports, the user defaults, the localised strings and the
// running system's version. Plain C++: no Objective-C type appears here, so
// any C++ file may include it; the definitions are Objective-C++
// (kit/base/mac/*.mm) and build only on Apple platforms.
//
// Every adapter translates between a port and Apple's API and decides
// nothing; the rules they follow live in the portable kit and its tests.
// Main thread only unless a port says otherwise.
#pragma once

#include <memory>
#include <optional>
#include <string>
#include <string_view>

#include "OrvikKit/LocalizedText.h"
#include "OrvikKit/MainThread.h"
#include "OrvikKit/SerialQueue.h"
#include "OrvikKit/SystemServices.h"
#include "OrvikKitCore/Preferences.h"

namespace orvik::mac {

// The main dispatch queue. Delayed tasks run on dispatch timers started
// from the default dispatch clock (dispatch_time(DISPATCH_TIME_NOW, …)),
// which changes of the date and time do not move and which stands still
// while the Mac sleeps, with the given leeway.
std::shared_ptr<MainThread> makeMainQueue();

// A serial dispatch queue of quality of service user-initiated whose work
// items each run in an autorelease pool of their own.
std::shared_ptr<SerialQueue> makeSerialQueue(const std::string& label);

// The main bundle's identifier, when it has one.
std::optional<std::string> mainBundleIdentifier();

// The main bundle's short version and unified-log loggers (subsystem:
// AppInfo::subsystem of the main bundle's identifier and `appIdentifier`,
// the identifier the app's bundle is built with).
std::shared_ptr<AppInfoSource> makeAppInfoSource(std::string appIdentifier);

std::shared_ptr<AccessibilityTrust> makeAccessibilityTrust();

// The main app's login-item service; failures are logged to `logger`.
std::shared_ptr<LoginItemService> makeLoginItemService(std::shared_ptr<Logger> logger);

std::shared_ptr<URLOpener> makeURLOpener();
std::shared_ptr<RunningApplications> makeRunningApplications();

// The standard user defaults as a preference store.
std::shared_ptr<PreferenceStore> makeStandardUserDefaults();
// The user defaults of a suite (a domain of its own); null when the suite
// name is refused (the app's own bundle identifier, or the global domain).
std::shared_ptr<PreferenceStore> makeUserDefaults(const std::string& suiteName);

// The text a view shows for `text`: its key looked up in its table of the
// main bundle (the main table, or "OrvikKit" for the kit's texts) in the
// current locale, with the arguments filled in; the key itself where no
// translation exists.
std::string localizedString(const LocalizedText& text);


// The running system's version (NSProcessInfo's operatingSystemVersion).
SystemVersion systemVersion();

// Makes this app the active one, before it shows a popover or a window of
// its own: `activate` from macOS 14 on (the older call is marked to be
// deprecated), `activateIgnoringOtherApps:` below it.
void activateThisApplication();

}  // namespace orvik::mac

namespace orvik::MemoryFootprint {

// The process's physical footprint now and at its highest, from the
// kernel's version-4 resource-usage record; both 0 when the kernel refuses.
Reading read();

}  // namespace orvik::MemoryFootprint
