#include "OrvikKit/MenuBarApp.h"

#include <gtest/gtest.h>

#include <memory>
#include <string>

#include "TestSupport/FakeStatusItem.h"
#include "TestSupport/ManualMainThread.h"

namespace orvik {
namespace {

using testsupport::FakeStatusItem;
using testsupport::ManualMainThread;

class MenuBarAppTest : public testing::Test {
protected:
    std::shared_ptr<ManualMainThread> mainThread = std::make_shared<ManualMainThread>();
    std::shared_ptr<FakeStatusItem> statusItem = std::make_shared<FakeStatusItem>();
    ChangeSignal changes;
    int launches = 0;

    MenuBarApp::Launch launchWithReminderDue(bool due) {
        return [this, due] {
            ++launches;
            return MenuBarApp::Parts{
                .menuBar = MenuBarController::create(statusItem, mainThread, "Tolvane", changes,
                                                     [] { return std::string("playpause.fill"); }),
                .updateReminders = UpdateReminderCenter::preview("tolvane", due)};
        };
    }
};

TEST_F(MenuBarAppTest, FinishingLaunchBuildsThePartsOnce) {
    const MenuBarApp::Parts parts = MenuBarApp::finishLaunching(launchWithReminderDue(false));
    EXPECT_EQ(launches, 1);
    EXPECT_NE(parts.menuBar, nullptr);
    EXPECT_NE(parts.updateReminders, nullptr);
    EXPECT_EQ(MenuBarController::shared(), parts.menuBar);
}

TEST_F(MenuBarAppTest, TheBadgeFollowsTheReminderCentre) {
    const MenuBarApp::Parts parts = MenuBarApp::finishLaunching(launchWithReminderDue(true));
    mainThread->runUntilIdle();
    EXPECT_TRUE(parts.menuBar->showsBadge());
    ASSERT_TRUE(statusItem->image.has_value());
    EXPECT_TRUE(statusItem->image->badged);

    parts.updateReminders->dismissUpdateReminder();
    mainThread->runUntilIdle();
    EXPECT_FALSE(parts.menuBar->showsBadge());
}

TEST_F(MenuBarAppTest, NothingIsBuiltBeforeLaunchFinishes) {
    const MenuBarApp::Launch launch = launchWithReminderDue(false);
    EXPECT_EQ(launches, 0);
    EXPECT_TRUE(statusItem->calls.empty());
}

TEST(MenuBarAppDeathTest, PartsWithoutAControllerStopTheProcess) {
    EXPECT_DEATH(MenuBarApp::finishLaunching([] { return MenuBarApp::Parts{}; }), "status-item controller");
}

}  // namespace
}  // namespace orvik
