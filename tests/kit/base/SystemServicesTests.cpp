#include "OrvikKit/SystemServices.h"

#include <gtest/gtest.h>

#include <string>
#include <thread>
#include <vector>

#include "TestSupport/FakeSystemServices.h"

namespace orvik {
namespace {

using testsupport::FakeAccessibilityTrust;
using testsupport::FakeAppInfoSource;
using testsupport::FakeLoginItemService;

// --- Memory footprint --------------------------------------------------------------

TEST(MemoryFootprintTest, ReadingsConvertToMegabytes) {
    const MemoryFootprint::Reading reading{.current = 1572864, .peak = 3145728};
    EXPECT_EQ(reading.currentMB(), 1.5);
    EXPECT_EQ(reading.peakMB(), 3.0);
}

TEST(MemoryFootprintTest, AFailedReadingIsZero) {
    const MemoryFootprint::Reading reading{};
    EXPECT_EQ(reading.currentMB(), 0.0);
    EXPECT_EQ(reading.peakMB(), 0.0);
    EXPECT_EQ(reading, (MemoryFootprint::Reading{.current = 0, .peak = 0}));
}

TEST(LoginItemTest, OnlyAnEnabledItemCountsAsEnabled) {
    EXPECT_TRUE(LoginItem::countsAsEnabled(LoginItem::Status::enabled));
    EXPECT_FALSE(LoginItem::countsAsEnabled(LoginItem::Status::notRegistered));
    EXPECT_FALSE(LoginItem::countsAsEnabled(LoginItem::Status::notFound));
}

TEST(LoginItemTest, RegistrationNeedingApprovalIsNotEnabled) {
    EXPECT_FALSE(LoginItem::countsAsEnabled(LoginItem::Status::requiresApproval));
    EXPECT_EQ(static_cast<std::int64_t>(LoginItem::Status::requiresApproval), 2);
}

TEST(LoginItemTest, FailureIsLoggedWithTheErrorsDescription) {
    EXPECT_EQ(LoginItem::failureMessage("Operation not permitted"), "login item change failed: Operation not permitted");
}

TEST(AppInfoTest, BundleWithoutShortVersionShowsDev) {
    EXPECT_EQ(AppInfo::version(std::nullopt), "dev");
    EXPECT_EQ(AppInfo::version(std::string("1.2")), "1.2");
}

TEST(AppInfoTest, LogsUnderTheMainBundlesIdentifierOrTheAppsOwn) {
    EXPECT_EQ(AppInfo::subsystem(std::string("com.example.tolvane"), "com.example.App"), "com.example.tolvane");
    EXPECT_EQ(AppInfo::subsystem(std::nullopt, "com.example.App"), "com.example.App");
    EXPECT_EQ(AppInfo::subsystem(std::string(), "com.example.App"), "com.example.App");
}

TEST(AppInfoTest, ScriptingQueueIsLabelledAfterTheApp) {
    EXPECT_EQ(AppInfo::scriptingQueueLabel(std::string("com.example.tolvane"), "com.example.App"),
              "com.example.tolvane.applescript");
    EXPECT_EQ(AppInfo::scriptingQueueLabel(std::nullopt, "com.example.App"), "com.example.App.applescript");
}

// --- The fakes behave as the interfaces say -------------------------------------------

TEST(FakeServicesTest, AccessibilityPromptIsCountedOnlyWhenNotTrusted) {
    FakeAccessibilityTrust trust;
    EXPECT_FALSE(trust.requestIfNeeded());
    trust.trusted = true;
    EXPECT_TRUE(trust.requestIfNeeded());
    EXPECT_TRUE(trust.isTrusted());
    EXPECT_EQ(trust.promptsShown, 1u);
    EXPECT_EQ(trust.requestCalls, 2u);
    EXPECT_EQ(trust.isTrustedCalls, 1u);
}

TEST(FakeServicesTest, AppInfoHandsOutOneLoggerPerCategory) {
    FakeAppInfoSource appInfo("dev");
    EXPECT_EQ(appInfo.version(), "dev");
    EXPECT_EQ(appInfo.loggerFor("tap"), nullptr);
    const auto tap = appInfo.logger("tap");
    EXPECT_EQ(appInfo.logger("tap"), tap);
    EXPECT_NE(appInfo.logger("login-item"), tap);

    std::thread([&] { tap->error("could not create the event tap"); }).join();
    EXPECT_EQ(appInfo.loggerFor("tap")->lines(), (std::vector<std::string>{"could not create the event tap"}));
    EXPECT_TRUE(appInfo.loggerFor("login-item")->lines().empty());
}

}  // namespace
}  // namespace orvik
