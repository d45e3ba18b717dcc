#include "TolvaneCore/AppStatus.h"

#include <gtest/gtest.h>

#include <array>
#include <type_traits>

namespace tolvane {
namespace {

// Every fact must be stated: leaving one out, or passing something that is
// not a bool, does not compile.
template <class Facts>
concept BuildsFromThreeFacts = requires { Facts{true, true, true}; };
template <class Facts>
concept BuildsFromNoFacts = requires { Facts{}; };
static_assert(!BuildsFromThreeFacts<AppStatusFacts>);
static_assert(!BuildsFromNoFacts<AppStatusFacts>);
static_assert(!BuildsFromThreeFacts<PermissionCheck::TapFacts>);
static_assert(!BuildsFromNoFacts<PermissionCheck::TapFacts>);
static_assert(!std::is_default_constructible_v<Fact>);
static_assert(!std::is_convertible_v<int, Fact>);
static_assert(!std::is_convertible_v<const char*, Fact>);
static_assert(std::is_convertible_v<bool, Fact>);

TEST(AppStatus, FactsCannotBeLeftOutOrGivenAsOtherTypes) {
    // The checks above are made by the compiler; this names them in the
    // test list and shows the full form compiles.
    constexpr AppStatusFacts facts{.isEnabled = true, .hasAccessibility = true, .tapActive = true,
                                   .automationDenied = false};
    static_assert(appStatusFor(facts) == AppStatus::active);
    EXPECT_EQ(appStatusFor(facts), AppStatus::active);
}

struct StatusRow {
    bool isEnabled, hasAccessibility, tapActive, automationDenied;
    AppStatus expected;
};

// All sixteen combinations, written out rather than derived.
constexpr std::array<StatusRow, 16> statusTable{{
    {false, false, false, false, AppStatus::paused},
    {false, false, false, true, AppStatus::paused},
    {false, false, true, false, AppStatus::paused},
    {false, false, true, true, AppStatus::paused},
    {false, true, false, false, AppStatus::paused},
    {false, true, false, true, AppStatus::paused},
    {false, true, true, false, AppStatus::paused},
    {false, true, true, true, AppStatus::paused},
    {true, false, false, false, AppStatus::waitingForPermission},
    {true, false, false, true, AppStatus::waitingForPermission},
    {true, false, true, false, AppStatus::waitingForPermission},
    {true, false, true, true, AppStatus::waitingForPermission},
    {true, true, false, false, AppStatus::couldNotActivate},
    {true, true, false, true, AppStatus::couldNotActivate},
    {true, true, true, false, AppStatus::active},
    {true, true, true, true, AppStatus::automationDenied},
}};

TEST(AppStatus, FullTruthTableOfTheSixteenFactCombinations) {
    for (const StatusRow& row : statusTable) {
        EXPECT_EQ(appStatusFor({.isEnabled = row.isEnabled,
                                .hasAccessibility = row.hasAccessibility,
                                .tapActive = row.tapActive,
                                .automationDenied = row.automationDenied}),
                  row.expected)
            << "enabled " << row.isEnabled << ", accessibility " << row.hasAccessibility << ", tap "
            << row.tapActive << ", automation denied " << row.automationDenied;
    }
}

TEST(AppStatus, DisabledIsPausedWhateverThePermissionsSay) {
    EXPECT_EQ(appStatusFor({.isEnabled = false, .hasAccessibility = false, .tapActive = false, .automationDenied = false}),
              AppStatus::paused);
    EXPECT_EQ(appStatusFor({.isEnabled = false, .hasAccessibility = true, .tapActive = true, .automationDenied = true}),
              AppStatus::paused);
}

TEST(AppStatus, EnabledWithoutAccessibilityIsWaitingForPermission) {
    EXPECT_EQ(appStatusFor({.isEnabled = true, .hasAccessibility = false, .tapActive = false, .automationDenied = false}),
              AppStatus::waitingForPermission);
}

TEST(AppStatus, MissingAccessibilityOutranksRefusedAutomation) {
    EXPECT_EQ(appStatusFor({.isEnabled = true, .hasAccessibility = false, .tapActive = false, .automationDenied = true}),
              AppStatus::waitingForPermission);
}

TEST(AppStatus, TrustedWithoutTapCouldNotActivate) {
    EXPECT_EQ(appStatusFor({.isEnabled = true, .hasAccessibility = true, .tapActive = false, .automationDenied = true}),
              AppStatus::couldNotActivate);
}

TEST(AppStatus, TapRunningButAutomationRefusedIsAutomationDenied) {
    EXPECT_EQ(appStatusFor({.isEnabled = true, .hasAccessibility = true, .tapActive = true, .automationDenied = true}),
              AppStatus::automationDenied);
}

TEST(AppStatus, AutomationAllowedAgainReturnsToActive) {
    AppStatusFacts facts{.isEnabled = true, .hasAccessibility = true, .tapActive = true, .automationDenied = true};
    ASSERT_EQ(appStatusFor(facts), AppStatus::automationDenied);
    facts.automationDenied = false;
    EXPECT_EQ(appStatusFor(facts), AppStatus::active);
}

TEST(AppStatus, CasesAreOrderedByPrecedence) {
    EXPECT_LT(AppStatus::paused, AppStatus::waitingForPermission);
    EXPECT_LT(AppStatus::waitingForPermission, AppStatus::couldNotActivate);
    EXPECT_LT(AppStatus::couldNotActivate, AppStatus::automationDenied);
    EXPECT_LT(AppStatus::automationDenied, AppStatus::active);
}

TEST(AppStatus, HeaderTextsAreExact) {
    EXPECT_EQ(headerText(AppStatus::paused), "Paused \xC2\xB7 keys follow the macOS default");
    EXPECT_EQ(headerText(AppStatus::waitingForPermission), "Waiting for permission");
    EXPECT_EQ(headerText(AppStatus::couldNotActivate), "Could not activate");
    EXPECT_EQ(headerText(AppStatus::automationDenied), "Not allowed to control Music");
    // U+00B7, U+23EE, U+23EF, U+23ED and U+2192 spelled out as UTF-8 bytes.
    EXPECT_EQ(headerText(AppStatus::active),
              "Active \xC2\xB7 \xE2\x8F\xAE \xE2\x8F\xAF \xE2\x8F\xAD \xE2\x86\x92 Music only");
}

TEST(AppStatus, HeaderColorsAreGreyOrangeAndGreen) {
    EXPECT_EQ(headerColor(AppStatus::paused), StatusColor::systemGray);
    EXPECT_EQ(headerColor(AppStatus::waitingForPermission), StatusColor::systemOrange);
    EXPECT_EQ(headerColor(AppStatus::couldNotActivate), StatusColor::systemOrange);
    EXPECT_EQ(headerColor(AppStatus::automationDenied), StatusColor::systemOrange);
    EXPECT_EQ(headerColor(AppStatus::active), StatusColor::systemGreen);
}

TEST(MenuBarSymbol, PausedShowsPlaySlashWhateverIsPlaying) {
    EXPECT_EQ(menuBarSymbol(AppStatus::paused, std::nullopt), "play.slash.fill");
    EXPECT_EQ(menuBarSymbol(AppStatus::paused, true), "play.slash.fill");
}

TEST(MenuBarSymbol, ProblemStatusesShowTheWarningTriangle) {
    for (AppStatus status : {AppStatus::waitingForPermission, AppStatus::couldNotActivate, AppStatus::automationDenied}) {
        EXPECT_EQ(menuBarSymbol(status, std::nullopt), "exclamationmark.triangle.fill");
        EXPECT_EQ(menuBarSymbol(status, true), "exclamationmark.triangle.fill");
        EXPECT_EQ(menuBarSymbol(status, false), "exclamationmark.triangle.fill");
    }
}

TEST(MenuBarSymbol, ActiveWithNoTrackShowsPlayPause) {
    EXPECT_EQ(menuBarSymbol(AppStatus::active, std::nullopt), "playpause.fill");
}

TEST(MenuBarSymbol, ActiveWithPlayingTrackShowsPlay) { EXPECT_EQ(menuBarSymbol(AppStatus::active, true), "play.fill"); }

TEST(MenuBarSymbol, ActiveWithPausedTrackShowsPause) {
    EXPECT_EQ(menuBarSymbol(AppStatus::active, false), "pause.fill");
}

using PermissionCheck::needsTapUpdate;

struct TapRow {
    bool trusted, hadAccess, isEnabled, tapActive;
    bool expected;
};

// All sixteen combinations, written out rather than derived.
constexpr std::array<TapRow, 16> tapTable{{
    {false, false, false, false, false},
    {false, false, false, true, false},
    {false, false, true, false, false},
    {false, false, true, true, false},
    {false, true, false, false, true},
    {false, true, false, true, true},
    {false, true, true, false, true},
    {false, true, true, true, true},
    {true, false, false, false, true},
    {true, false, false, true, true},
    {true, false, true, false, true},
    {true, false, true, true, true},
    {true, true, false, false, false},
    {true, true, false, true, false},
    {true, true, true, false, true},
    {true, true, true, true, false},
}};

TEST(PermissionCheck, FullTruthTableOfTheSixteenFactCombinations) {
    for (const TapRow& row : tapTable) {
        EXPECT_EQ(needsTapUpdate({.trusted = row.trusted,
                                  .hadAccess = row.hadAccess,
                                  .isEnabled = row.isEnabled,
                                  .tapActive = row.tapActive}),
                  row.expected)
            << "trusted " << row.trusted << ", had access " << row.hadAccess << ", enabled " << row.isEnabled
            << ", tap " << row.tapActive;
    }
}

TEST(PermissionCheck, GrantSinceLastLookNeedsUpdate) {
    EXPECT_TRUE(needsTapUpdate({.trusted = true, .hadAccess = false, .isEnabled = false, .tapActive = false}));
}

TEST(PermissionCheck, WithdrawalSinceLastLookNeedsUpdate) {
    EXPECT_TRUE(needsTapUpdate({.trusted = false, .hadAccess = true, .isEnabled = true, .tapActive = true}));
}

TEST(PermissionCheck, TrustedEnabledWithoutTapNeedsAnotherTry) {
    EXPECT_TRUE(needsTapUpdate({.trusted = true, .hadAccess = true, .isEnabled = true, .tapActive = false}));
}

TEST(PermissionCheck, TrustUnchangedAndTapRunningNeedsNothing) {
    EXPECT_FALSE(needsTapUpdate({.trusted = true, .hadAccess = true, .isEnabled = true, .tapActive = true}));
}

TEST(PermissionCheck, TrustedButDisabledWithoutTapNeedsNothing) {
    EXPECT_FALSE(needsTapUpdate({.trusted = true, .hadAccess = true, .isEnabled = false, .tapActive = false}));
}

TEST(PermissionCheck, StillUntrustedNeedsNothing) {
    EXPECT_FALSE(needsTapUpdate({.trusted = false, .hadAccess = false, .isEnabled = true, .tapActive = false}));
}

}  // namespace
}  // namespace tolvane
