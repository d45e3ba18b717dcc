#include "OrvikKit/SystemSettings.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "TestSupport/FakeSystemServices.h"

namespace orvik {
namespace {

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

}  // namespace
}  // namespace orvik
