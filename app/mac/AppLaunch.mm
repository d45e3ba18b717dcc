// The app's shared state over the macOS adapters, and its launch function:
// the status item whose popover hosts the menu view over the state, and the
// help window shown when the app is opened again while the item is hidden.
#import <AppKit/AppKit.h>

#include <memory>
#include <string>

#include "OrvikKit/MenuBarController.h"
#include "OrvikKit/UpdateReminderCenter.h"
#include "OrvikKitMac/BaseAdapters.h"
#include "OrvikKitMac/MenuAdapters.h"
#include "OrvikKitMac/ServiceAdapters.h"
#include "OrvikKitMac/ViewAdapters.h"
#include "TolvaneMac/Adapters.h"
#include "Tolvane/AppIdentity.h"
#include "Tolvane/MenuView.h"

namespace tolvane::mac {

std::shared_ptr<AppState> sharedAppState(const std::shared_ptr<orvik::MainThread>& mainThread) {
    orvik::assertOnMainThread(*mainThread);
    static const std::shared_ptr<AppState> state = [&mainThread] {
        const std::shared_ptr<orvik::AppInfoSource> appInfo =
            orvik::mac::makeAppInfoSource(std::string(bundleIdentifier()));
        const std::shared_ptr<orvik::PreferenceStore> standardDefaults = orvik::mac::makeStandardUserDefaults();
        const auto scripting = std::make_shared<MusicScripting>(
            orvik::mac::makeSerialQueue(
                orvik::AppInfo::scriptingQueueLabel(orvik::mac::mainBundleIdentifier(), bundleIdentifier())),
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
    const std::shared_ptr<orvik::AppInfoSource> appInfo = orvik::mac::makeAppInfoSource(std::string(bundleIdentifier()));
    const auto quit = [] { [NSApplication.sharedApplication terminate:nil]; };
    // The popover's content: the menu over the state. It follows the state's
    // changes and the update reminder's due flag, and reads the open-at-login
    // state and refreshes the track each time the popover is shown.
    auto popover = std::make_shared<MenuPopover>(
        state, MenuEnvironment{
                   .loginItem = orvik::mac::makeLoginItemService(appInfo->logger("login-item")),
                   .openAtLogin = nullptr,
                   .urlOpener = orvik::mac::makeURLOpener(),
                   .version = appInfo->version(),
                   .quit = quit,
               });
    auto controller = orvik::MenuBarController::create(orvik::mac::makeStatusItem(popover, mainThread), mainThread,
                                                       "Tolvane",
                                                       state->objectWillChange, [weakState] {
                                                           const auto alive = weakState.lock();
                                                           return alive ? std::string(alive->menuBarSymbol())
                                                                        : std::string();
                                                       });
    // Opening the app again while its icon is not in the menu bar shows a
    // window that says where the icon went.
    controller->showMissingIconHelpWith(orvik::MissingIconEnvironment{
        .window = orvik::mac::makeContentWindow(mainThread),
        .urlOpener = orvik::mac::makeURLOpener(),
        .systemVersion = orvik::mac::systemVersion(),
        .brand = musicBrand(),
        .quit = quit,
    });
    return orvik::MenuBarApp::Parts{.menuBar = std::move(controller), .updateReminders = state->updateReminders()};
}

}  // namespace tolvane::mac
