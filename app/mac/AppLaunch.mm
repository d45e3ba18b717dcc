// The app's shared state over the macOS adapters, and its launch function.
#import <Foundation/Foundation.h>

#include <memory>
#include <string>

#include "OrvikKit/MenuBarController.h"
#include "OrvikKit/UpdateReminderCenter.h"
#include "OrvikKitMac/Services.h"
#include "TolvaneMac/Adapters.h"

namespace tolvane::mac {

std::shared_ptr<AppState> sharedAppState(const std::shared_ptr<orvik::MainThread>& mainThread) {
    orvik::assertOnMainThread(*mainThread);
    static const std::shared_ptr<AppState> state = [&mainThread] {
        const std::shared_ptr<orvik::AppInfoSource> appInfo = orvik::mac::makeAppInfoSource();
        const std::shared_ptr<orvik::PreferenceStore> standardDefaults = orvik::mac::makeStandardUserDefaults();
        const auto scripting = std::make_shared<MusicScripting>(
            orvik::mac::makeSerialQueue(orvik::AppInfo::scriptingQueueLabel(orvik::mac::mainBundleIdentifier())),
            makeScriptEngine(), makeThumbnailer(), appInfo->logger("applescript"));
        AppServices services{
            .mainThread = mainThread,
            .runningApplications = orvik::mac::makeRunningApplications(),
            .distributedNotifications = orvik::mac::makeDistributedNotificationCenter(mainThread),
            .workspaceNotifications = orvik::mac::makeWorkspaceNotificationCenter(mainThread),
            .accessibility = orvik::mac::makeAccessibilityTrust(),
            .eventTaps = makeEventTapSystem(),
            .scripting = scripting,
            .appInfo = appInfo,
            .urlOpener = orvik::mac::makeURLOpener(),
            .standardDefaults = standardDefaults,
            .now = &orvik::UpdateReminderCenter::systemNow,
        };
        return AppState::create(standardDefaults, false, std::move(services));
    }();
    return state;
}

orvik::MenuBarApp::Parts launch(const std::shared_ptr<orvik::MainThread>& mainThread) {
    const std::shared_ptr<AppState> state = sharedAppState(mainThread);
    const std::weak_ptr<AppState> weakState = state;
    // TODO(views): the popover's content (the menu view over `state`) is
    // hosted by the status item once the views land; until then it shows an
    // empty view of the menu's width.
    auto controller = orvik::MenuBarController::create(orvik::mac::makeStatusItem(), mainThread, "Tolvane",
                                                       state->objectWillChange, [weakState] {
                                                           const auto alive = weakState.lock();
                                                           return alive ? std::string(alive->menuBarSymbol())
                                                                        : std::string();
                                                       });
    return orvik::MenuBarApp::Parts{.menuBar = std::move(controller), .updateReminders = state->updateReminders()};
}

}  // namespace tolvane::mac
