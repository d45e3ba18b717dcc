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
using testsupport::FakeURLOpener;

constexpr const char* newKeyboardPane = "x-apple.systempreferences:com.apple.Keyboard-Settings.extension?Shortcuts";
constexpr const char* oldKeyboardPane = "x-apple.systempreferences:com.apple.preference.keyboard?Shortcuts";

// --- System Settings --------------------------------------------------------------

TEST(SystemSettingsTest, EachPaneHasItsURLs) {
    using SystemSettings::Pane;
    const auto urls = [](Pane pane) {
        const auto candidates = SystemSettings::candidateURLs(pane);
        return std::vector<std::string>(candidates.begin(), candidates.end());
    };
    constexpr const char* privacy = "x-apple.systempreferences:com.apple.preference.security?Privacy_";
    EXPECT_EQ(urls(Pane::accessibility), (std::vector<std::string>{std::string(privacy) + "Accessibility"}));
    EXPECT_EQ(urls(Pane::automation), (std::vector<std::string>{std::string(privacy) + "Automation"}));
    EXPECT_EQ(urls(Pane::screenRecording), (std::vector<std::string>{std::string(privacy) + "ScreenCapture"}));
    EXPECT_EQ(urls(Pane::keyboardShortcuts), (std::vector<std::string>{newKeyboardPane, oldKeyboardPane}));
    EXPECT_EQ(urls(Pane::menuBar),
              (std::vector<std::string>{"x-apple.systempreferences:com.apple.MenuBarSettings"}));
}

TEST(SystemSettingsTest, KeyboardPaneTriesTheSecondURLWhenTheFirstDoesNotOpen) {
    FakeURLOpener opener;
    opener.failing = {newKeyboardPane};
    EXPECT_TRUE(SystemSettings::open(SystemSettings::Pane::keyboardShortcuts, opener));
    EXPECT_EQ(opener.opened(), (std::vector<std::string>{newKeyboardPane, oldKeyboardPane}));
}

TEST(SystemSettingsTest, ACandidateThatIsNotAURLIsSkipped) {
    FakeURLOpener opener;
    opener.unparsable = {newKeyboardPane};
    EXPECT_TRUE(SystemSettings::open(SystemSettings::Pane::keyboardShortcuts, opener));
    EXPECT_EQ(opener.opened(), (std::vector<std::string>{newKeyboardPane, oldKeyboardPane}));
}

TEST(SystemSettingsTest, KeyboardPaneNeverTriesTheSecondURLWhenTheFirstOpens) {
    FakeURLOpener opener;
    EXPECT_TRUE(SystemSettings::open(SystemSettings::Pane::keyboardShortcuts, opener));
    EXPECT_EQ(opener.opened(), (std::vector<std::string>{newKeyboardPane}));
}

TEST(SystemSettingsTest, WhenNoURLOpensTheRequestIsDropped) {
    FakeURLOpener opener;
    opener.opensByDefault = false;
    EXPECT_FALSE(SystemSettings::open(SystemSettings::Pane::keyboardShortcuts, opener));
    EXPECT_EQ(opener.opened(), (std::vector<std::string>{newKeyboardPane, oldKeyboardPane}));
    EXPECT_FALSE(SystemSettings::open(SystemSettings::Pane::accessibility, opener));
    EXPECT_EQ(opener.opened().size(), 3u);
}

TEST(SystemSettingsTest, PrivacyPanesOpenTheirOneURL) {
    FakeURLOpener opener;
    EXPECT_TRUE(SystemSettings::open(SystemSettings::Pane::automation, opener));
    EXPECT_EQ(opener.opened(),
              (std::vector<std::string>{"x-apple.systempreferences:com.apple.preference.security?Privacy_Automation"}));
}

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

TEST(AppInfoTest, LogsUnderTheBundleIdentifierOrTheMakers) {
    EXPECT_EQ(AppInfo::subsystem(std::string("com.example.tolvane")), "com.example.tolvane");
    EXPECT_EQ(AppInfo::subsystem(std::nullopt), "com.orvik");
    EXPECT_EQ(AppInfo::subsystem(std::string()), "com.orvik");
}

TEST(AppInfoTest, ScriptingQueueIsLabelledAfterTheApp) {
    EXPECT_EQ(AppInfo::scriptingQueueLabel(std::string("com.example.tolvane")), "com.example.tolvane.applescript");
    EXPECT_EQ(AppInfo::scriptingQueueLabel(std::nullopt), "com.orvik.applescript");
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
