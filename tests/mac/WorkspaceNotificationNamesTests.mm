// The workspace's notification names and user-info key that the portable
// code spells as literals are AppKit's own. The adapter hands a notification
// over with its name as it arrives, and the app compares it with these
// literals, so a literal that differed from AppKit's value would never
// match. macOS only.
#import <AppKit/AppKit.h>

#include <gtest/gtest.h>

#include <optional>
#include <string>

#import "OrvikKitMac/Strings.h"
#include "OrvikKit/Notifications.h"
#include "Tolvane/AppState.h"

namespace tolvane {
namespace {

using orvik::mac::portableString;

TEST(WorkspaceNotificationNamesTest, TheAppsLiteralsAreAppKitsNames) {
    EXPECT_EQ(portableString(NSWorkspaceDidLaunchApplicationNotification),
              std::string(AppState::didLaunchApplicationNotification));
    EXPECT_EQ(portableString(NSWorkspaceDidTerminateApplicationNotification),
              std::string(AppState::didTerminateApplicationNotification));
    EXPECT_EQ(portableString(NSWorkspaceDidWakeNotification), std::string(AppState::didWakeNotification));
}

TEST(WorkspaceNotificationNamesTest, TheRunningApplicationsKeyIsAppKits) {
    EXPECT_EQ(portableString(NSWorkspaceApplicationKey), std::string(orvik::Notification::applicationKey));
}

}  // namespace
}  // namespace tolvane
