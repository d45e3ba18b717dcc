#include "Tolvane/MenuContent.h"

#include <gtest/gtest.h>

#include "AppWorld.h"
#include "TestSupport/SnapshotFlag.h"

namespace tolvane {
namespace {

using orvik::appText;
using orvik::kitText;
using testsupport::AppWorld;
using testsupport::commandSource;
using testsupport::FakeLoginItemService;
using testsupport::FakeScriptEngine;
using testsupport::nextKey;
using Strings = std::vector<std::string>;

class MenuContentTest : public testing::Test {
protected:
    AppWorld world;
    std::shared_ptr<FakeLoginItemService> loginItem = std::make_shared<FakeLoginItemService>(false);
    int quits = 0;

    MenuContent menu(const std::shared_ptr<AppState>& state) {
        return menuContent(state, MenuEnvironment{
                                      .loginItem = loginItem,
                                      .urlOpener = world.urlOpener,
                                      .version = "1.2",
                                      .quit = [this] { ++quits; },
                                  });
    }
};

TEST_F(MenuContentTest, MusicClosedWithoutTrackShowsClosedTextsPlaceholderAndPlay) {
    const auto state = world.launch();
    const NowPlayingCard card = menu(state).nowPlaying;
    EXPECT_EQ(card.title, MenuText(appText("Music is closed")));
    EXPECT_EQ(card.subtitle, MenuText(appText("Press \u23EF to start")));
    EXPECT_FALSE(card.artwork.has_value());
    ASSERT_EQ(card.transport.size(), 3u);
    EXPECT_EQ(card.transport[1].symbol, "play.fill");
}

TEST_F(MenuContentTest, MusicRunningWithoutTrackShowsNothingPlaying) {
    world.running->setRunning("com.apple.Music", true);
    const auto state = world.launch();
    world.settle();
    EXPECT_EQ(menu(state).nowPlaying.title, MenuText(appText("Nothing playing")));
}

TEST_F(MenuContentTest, MiddleButtonLaunchesMusicWhateverTheClosedSettingSays) {
    for (ClosedBehavior behavior : {ClosedBehavior::ignore, ClosedBehavior::system}) {
        AppWorld fresh;
        fresh.settings->write(AppState::closedBehaviorPreference, behavior);
        const auto state = fresh.launch();
        menuContent(state, {.loginItem = loginItem}).nowPlaying.transport[1].action();
        fresh.settle();
        EXPECT_EQ(fresh.commandRuns(), Strings{commandSource(MusicCommand::launchAndPlay)});
        EXPECT_EQ(state->keysForwarded(), 0) << "buttons are not counted";
    }
}

TEST_F(MenuContentTest, TransportButtonsAreBackPlayForwardWithTheirSizesAndCommands) {
    world.running->setRunning("com.apple.Music", true);
    const auto state = world.launch();
    world.settle();
    const NowPlayingCard card = menu(state).nowPlaying;
    ASSERT_EQ(card.transport.size(), 3u);
    EXPECT_EQ(card.transport[0].symbol, "backward.fill");
    EXPECT_EQ(card.transport[0].size, 11);
    EXPECT_EQ(card.transport[0].command, MusicCommand::previous);
    EXPECT_EQ(card.transport[1].size, 15);
    EXPECT_EQ(card.transport[1].command, MusicCommand::playPause);
    EXPECT_EQ(card.transport[2].symbol, "forward.fill");
    EXPECT_EQ(card.transport[2].size, 11);
    EXPECT_EQ(card.transport[2].command, MusicCommand::next);
    for (const TransportButton& button : card.transport) button.action();
    world.settle();
    EXPECT_EQ(world.commandRuns(), (Strings{commandSource(MusicCommand::previous), commandSource(MusicCommand::playPause),
                                            commandSource(MusicCommand::next)}));
}

TEST_F(MenuContentTest, PausedTrackShowsPlayAndPlayingTrackShowsPause) {
    world.musicPlays("So What", "Miles Davis", false);
    const auto state = world.launch();
    world.settle();
    EXPECT_EQ(menu(state).nowPlaying.transport[1].symbol, "play.fill");
    world.postPlayerInfo("Playing", "So What", "Miles Davis");
    EXPECT_EQ(menu(state).nowPlaying.transport[1].symbol, "pause.fill");
}

TEST_F(MenuContentTest, FreshInstallWithNeitherPermissionShowsBothWarningsAccessibilityFirst) {
    world.accessibility->trusted = false;
    world.running->setRunning("com.apple.Music", true);
    world.music->answer(commandSource(MusicCommand::playPause), FakeScriptEngine::error(-1743));
    const auto state = world.launch();
    state->perform(MusicCommand::playPause);
    world.settle();
    const std::vector<orvik::WarningCard> warnings = menu(state).warnings;
    ASSERT_EQ(warnings.size(), 2u);
    EXPECT_EQ(warnings[0].symbol, "hand.raised.fill");
    EXPECT_EQ(warnings[0].title, appText("Allow Accessibility access"));
    EXPECT_EQ(warnings[0].message,
              appText("macOS requires this permission for an app to catch the media keys before other apps do. If "
                      "Tolvane is already turned on in the list, select it, click \u2212 and open the app again."));
    EXPECT_EQ(warnings[0].button, kitText("Open System Settings"));
    EXPECT_EQ(warnings[1].symbol, "exclamationmark.triangle.fill");
    EXPECT_EQ(warnings[1].title, appText("Allow controlling Music"));
    EXPECT_EQ(warnings[1].message,
              appText("Under Automation, turn on \u201CMusic\u201D below Tolvane. Without it the keys do nothing."));
    warnings[0].action();
    EXPECT_EQ(world.urlOpener->opened(),
              Strings{"x-apple.systempreferences:com.apple.preference.security?Privacy_Accessibility"});
}

TEST_F(MenuContentTest, FooterHasNoCaptionUntilTheFirstKeyIsSent) {
    world.running->setRunning("com.apple.Music", true);
    const auto state = world.launch();
    EXPECT_EQ(menu(state).footer.caption, std::nullopt);
    world.press(nextKey);
    EXPECT_EQ(menu(state).footer.caption, appText("Keys sent: %lld", {"1"}));
    EXPECT_EQ(menu(state).footer.caption->untranslated(), "Keys sent: 1");
}

TEST_F(MenuContentTest, FooterOffersCheckForUpdatesWithTheVersionAndQuit) {
    const auto state = world.launch();
    const auto lines = menu(state).footer.lines();
    EXPECT_EQ(lines.caption, std::nullopt) << "the version is in the update row, never twice";
    ASSERT_EQ(lines.rows.size(), 2u);
    EXPECT_EQ(lines.rows[0].title, kitText("Check for Updates"));
    EXPECT_EQ(lines.rows[0].detail.untranslated(), "Version 1.2");
    EXPECT_EQ(lines.rows[1].title, kitText("Quit"));
    EXPECT_EQ(lines.rows[1].shortcut, 'q');
    lines.rows[1].action();
    EXPECT_EQ(quits, 1);
    lines.rows[0].action();
    EXPECT_EQ(world.urlOpener->opened().back(), orvik::UpdateReminder::updatesPageAddress("tolvane", "1.2"));
}

TEST_F(MenuContentTest, HeaderFollowsTheStatusAndItsSwitchWritesTheSetting) {
    const auto state = world.launch();
    orvik::MenuHeader header = menu(state).header;
    EXPECT_EQ(header.status, appText("Active \u00B7 \u23EE \u23EF \u23ED \u2192 Music only"));
    EXPECT_EQ(header.statusColor, orvik::NamedColor::green);
    EXPECT_TRUE(header.isOn);
    EXPECT_EQ(header.switchHelp, appText("Turn off"));
    header.setOn(false);
    EXPECT_FALSE(state->isEnabled());
    EXPECT_FALSE(world.taps->liveTap().has_value());
    header = menu(state).header;
    EXPECT_EQ(header.status, appText("Paused \u00B7 keys follow the macOS default"));
    EXPECT_EQ(header.statusColor, orvik::NamedColor::gray);
    EXPECT_EQ(header.switchHelp, appText("Turn on"));
}

TEST_F(MenuContentTest, ProblemStatusesAreOrange) {
    world.taps->refuseCreation = true;
    const auto state = world.launch();
    EXPECT_EQ(menu(state).header.status, appText("Could not activate"));
    EXPECT_EQ(menu(state).header.statusColor, orvik::NamedColor::orange);
}

TEST_F(MenuContentTest, SettingsListEveryClosedBehaviorInOrderAndSelectingWritesIt) {
    const auto state = world.launch();
    SettingsCard settings = menu(state).settings;
    EXPECT_EQ(settings.symbol, "music.note.house");
    EXPECT_EQ(settings.title, appText("When Music is closed"));
    ASSERT_EQ(settings.options.size(), 3u);
    EXPECT_EQ(settings.options[0].value, ClosedBehavior::launchMusic);
    EXPECT_EQ(settings.options[0].title, appText("Open Music"));
    EXPECT_EQ(settings.options[1].value, ClosedBehavior::ignore);
    EXPECT_EQ(settings.options[1].title, appText("Ignore the key"));
    EXPECT_EQ(settings.options[2].value, ClosedBehavior::system);
    EXPECT_EQ(settings.options[2].title, appText("macOS default"));
    EXPECT_EQ(settings.selection, ClosedBehavior::launchMusic);
    settings.select(ClosedBehavior::system);
    EXPECT_EQ(state->closedBehavior(), ClosedBehavior::system);
    EXPECT_EQ(world.settings->object("closedBehavior"), orvik::PropertyListValue("system"));
    EXPECT_EQ(menu(state).settings.selection, ClosedBehavior::system);
}

TEST_F(MenuContentTest, OpenAtLoginRowReadsTheLoginItemAndSpringsBackWhenRefused) {
    loginItem->enabled = true;
    const auto state = world.launch();
    SettingsCard settings = menu(state).settings;
    EXPECT_TRUE(settings.openAtLogin->isOn());
    loginItem->refusesChanges = true;
    settings.openAtLogin->setOn(false);
    EXPECT_TRUE(settings.openAtLogin->isOn());
    EXPECT_EQ(loginItem->requests, std::vector<bool>{false});
}

TEST_F(MenuContentTest, SnapshotMenuShowsOpenAtLoginOffWithoutAskingTheService) {
    const testsupport::ScopedSnapshotFlag snapshot(true);
    loginItem->enabled = true;
    const auto state = world.launch(true);
    const MenuContent content = menu(state);
    EXPECT_FALSE(content.settings.openAtLogin->isOn());
    EXPECT_EQ(loginItem->isEnabledCalls, 0u);
}

TEST_F(MenuContentTest, ALiveMenuWithoutTheSnapshotFlagShowsTheRealLoginState) {
    loginItem->enabled = true;
    const auto state = world.launch(true);
    EXPECT_TRUE(menu(state).settings.openAtLogin->isOn()) << "a preview state alone does not mean a snapshot";
}

TEST_F(MenuContentTest, TheOpenAtLoginRowGivenByThePopoverIsUsedWithoutAskingAgain) {
    loginItem->enabled = true;
    const auto state = world.launch();
    const auto row = std::make_shared<orvik::OpenAtLoginRow>(loginItem);
    loginItem->enabled = false;
    for (int rebuild = 0; rebuild < 3; ++rebuild) {
        const MenuContent content = menuContent(state, {.loginItem = loginItem, .openAtLogin = row});
        EXPECT_EQ(content.settings.openAtLogin, row);
        EXPECT_TRUE(content.settings.openAtLogin->isOn());
    }
    EXPECT_EQ(loginItem->isEnabledCalls, 1u);
}

TEST_F(MenuContentTest, PrivacyCardNamesBothPromises) {
    const auto state = world.launch();
    const orvik::PrivacyCard privacy = menu(state).privacy;
    EXPECT_EQ(privacy.title, kitText("Private by design"));
    ASSERT_EQ(privacy.items.size(), 2u);
    EXPECT_EQ(privacy.items[0].symbol, "network.slash");
    EXPECT_EQ(privacy.items[0].text, appText("No internet connection, no data collected"));
    EXPECT_EQ(privacy.items[1].symbol, "keyboard");
    EXPECT_EQ(privacy.items[1].text, appText("Only sees \u23EE \u23EF \u23ED \u2014 never what you type"));
}

TEST_F(MenuContentTest, LongTrackTextsArePassedWhole) {
    const std::string longName(500, 'x');
    world.musicPlays(longName, "Artist", true);
    const auto state = world.launch();
    world.settle();
    EXPECT_EQ(menu(state).nowPlaying.title, MenuText(longName));
}

TEST_F(MenuContentTest, ActionsDoNothingOnceTheStateIsGone) {
    auto state = world.launch();
    const MenuContent content = menu(state);
    world.settle();  // the first track fetch holds the state until answered
    state.reset();
    content.header.setOn(false);
    content.nowPlaying.transport[1].action();
    content.settings.select(ClosedBehavior::ignore);
    content.onAppear();
    world.settle();
    EXPECT_TRUE(world.commandRuns().empty());
    EXPECT_FALSE(world.settings->object("enabled").has_value());
}

}  // namespace
}  // namespace tolvane
