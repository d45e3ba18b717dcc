// Whole-app stories on fakes: raw media-key events go into the tap, script
// sources come out at the fake Music, Music's notifications come back, and
// the state, the status-item symbol and the menu content follow.
#include <gtest/gtest.h>

#include "AppWorld.h"
#include "Tolvane/AppState.h"
#include "Tolvane/MenuContent.h"
#include "Tolvane/MenuSnapshot.h"
#include "TestSupport/SnapshotFlag.h"

namespace tolvane {
namespace {

using testsupport::AppWorld;
using testsupport::commandSource;
using testsupport::FakeScriptEngine;
using testsupport::FakeThumbnailer;
using testsupport::mediaKeyData1;
using testsupport::nextKey;
using testsupport::playKey;
using testsupport::trackQuerySource;
using Strings = std::vector<std::string>;

const std::string* verbatim(const MenuText& text) { return std::get_if<std::string>(&text); }

class EndToEnd : public testing::Test {
protected:
    AppWorld world;
    std::shared_ptr<testsupport::FakeLoginItemService> loginItem =
        std::make_shared<testsupport::FakeLoginItemService>(false);

    MenuContent menu(const std::shared_ptr<AppState>& state) {
        return menuContent(state, MenuEnvironment{
                                      .loginItem = loginItem, .urlOpener = world.urlOpener, .version = "1.2", .quit = [] {}});
    }
};

TEST_F(EndToEnd, KeyPressReachesMusicAndTheNewSongComesBackToTheMenu) {
    world.musicPlays("So What", "Miles Davis", false, "kind of blue");
    const auto state = world.launch();
    world.settle();
    ASSERT_EQ(state->menuBarSymbol(), "pause.fill");

    // The window server hands the tap a play key press; the app swallows it.
    EXPECT_TRUE(world.taps->deliverMediaKey(mediaKeyData1(playKey, true)));
    EXPECT_TRUE(world.taps->deliverMediaKey(mediaKeyData1(playKey, true, true)));
    EXPECT_TRUE(world.taps->deliverMediaKey(mediaKeyData1(playKey, false)));
    EXPECT_EQ(state->keysForwarded(), 1);

    // The command runs on the scripting queue, exactly once.
    world.settle();
    EXPECT_EQ(world.commandRuns(), Strings{commandSource(MusicCommand::playPause)});
    EXPECT_FALSE(state->automationDenied());

    // Music starts the next song and says so.
    world.musicPlays("Freddie Freeloader", "Miles Davis", true, "kind of blue");
    world.postPlayerInfo("Playing", "Freddie Freeloader", "Miles Davis");
    EXPECT_EQ(state->track()->summary.name, "Freddie Freeloader");
    EXPECT_FALSE(state->track()->artwork.has_value());
    EXPECT_EQ(state->menuBarSymbol(), "play.fill");
    {
        const MenuContent content = menu(state);
        EXPECT_EQ(*verbatim(content.nowPlaying.title), "Freddie Freeloader");
        EXPECT_EQ(content.nowPlaying.transport[1].symbol, "pause.fill");
        EXPECT_FALSE(content.nowPlaying.artwork.has_value());
        EXPECT_EQ(content.footer.caption, orvik::appText("Keys sent: %lld", {"1"}));
    }

    // The artwork arrives with the fetch.
    world.settle();
    EXPECT_EQ(menu(state).nowPlaying.artwork, FakeThumbnailer::image("kind of blue"));
}

TEST_F(EndToEnd, StatusItemRedrawsFromChangesThatHaveLanded) {
    const auto state = world.launch();
    std::vector<std::string> symbolsSeenInLaterTasks;
    orvik::Subscription subscription = state->objectWillChange.subscribe([&] {
        world.mainThread->post([&] { symbolsSeenInLaterTasks.emplace_back(state->menuBarSymbol()); });
    });
    state->setEnabled(false);
    world.mainThread->runUntilIdle();
    ASSERT_FALSE(symbolsSeenInLaterTasks.empty());
    EXPECT_EQ(symbolsSeenInLaterTasks.back(), "play.slash.fill");
}

TEST_F(EndToEnd, MusicClosedWithLaunchMusicStartsItWithPlay) {
    const auto state = world.launch();
    EXPECT_TRUE(world.press(playKey));
    world.settle();
    EXPECT_EQ(world.commandRuns(), Strings{commandSource(MusicCommand::launchAndPlay)});
    EXPECT_EQ(commandSource(MusicCommand::launchAndPlay), "tell application id \"com.apple.Music\"\nplay\nend tell");
}

TEST_F(EndToEnd, MusicClosedWithIgnoreSwallowsEveryKeySilently) {
    world.settings->write(AppState::closedBehaviorPreference, ClosedBehavior::ignore);
    const auto state = world.launch();
    EXPECT_TRUE(world.press(playKey));
    EXPECT_TRUE(world.press(nextKey));
    world.settle();
    EXPECT_TRUE(world.commandRuns().empty());
}

TEST_F(EndToEnd, MusicClosedWithSystemPassesEveryKeyOnButOnceMusicRunsTheKeysAreTaken) {
    world.settings->write(AppState::closedBehaviorPreference, ClosedBehavior::system);
    const auto state = world.launch();
    EXPECT_FALSE(world.press(playKey));
    EXPECT_FALSE(world.press(nextKey));
    world.musicLaunches();
    EXPECT_TRUE(world.press(nextKey));
    world.settle();
    EXPECT_EQ(world.commandRuns(), Strings{commandSource(MusicCommand::next)});
}

TEST_F(EndToEnd, AutomationRefusedShowsTheWarningAndAllowingItClearsIt) {
    world.running->setRunning("com.apple.Music", true);
    world.music->answer(commandSource(MusicCommand::next), FakeScriptEngine::error(-1743));
    const auto state = world.launch();
    world.press(nextKey);
    world.settle();
    {
        const MenuContent content = menu(state);
        EXPECT_EQ(content.header.status, orvik::appText("Not allowed to control Music"));
        EXPECT_EQ(content.header.statusColor, orvik::NamedColor::orange);
        ASSERT_EQ(content.warnings.size(), 1u);
        EXPECT_EQ(content.warnings[0].title, orvik::appText("Allow controlling Music"));
        content.warnings[0].action();
        EXPECT_EQ(world.urlOpener->opened(),
                  Strings{"x-apple.systempreferences:com.apple.preference.security?Privacy_Automation"});
    }
    EXPECT_EQ(state->menuBarSymbol(), "exclamationmark.triangle.fill");

    // The user allows it in System Settings; the next key goes through.
    world.music->answer(commandSource(MusicCommand::next), FakeScriptEngine::nothing());
    world.press(nextKey);
    world.settle();
    EXPECT_TRUE(menu(state).warnings.empty());
    EXPECT_EQ(state->status(), AppStatus::active);
}

TEST_F(EndToEnd, AccessibilityGrantedAfterLaunchStartsTheTapWithinOneTick) {
    world.accessibility->trusted = false;
    const auto state = world.launch();
    EXPECT_EQ(world.accessibility->promptsShown, 1u);
    EXPECT_EQ(state->status(), AppStatus::waitingForPermission);
    EXPECT_EQ(menu(state).warnings.size(), 1u);

    world.wait(1.0);
    world.accessibility->trusted = true;  // granted in System Settings
    world.wait(1.0);                      // the poll's next tick
    EXPECT_TRUE(state->tapActive());
    EXPECT_TRUE(world.taps->liveTapIsEnabled());
    EXPECT_EQ(state->status(), AppStatus::active);
    EXPECT_TRUE(menu(state).warnings.empty());
    EXPECT_EQ(world.accessibility->promptsShown, 1u) << "the poll never prompts";
}

TEST_F(EndToEnd, AccessibilityWithdrawnStopsTheTapWithinOneTick) {
    const auto state = world.launch();
    ASSERT_TRUE(state->tapActive());
    world.accessibility->trusted = false;
    world.wait(2.0);
    EXPECT_FALSE(state->tapActive());
    EXPECT_FALSE(world.taps->liveTap().has_value());
    EXPECT_EQ(state->status(), AppStatus::waitingForPermission);
    EXPECT_EQ(menu(state).warnings.front().title, orvik::appText("Allow Accessibility access"));
}

TEST_F(EndToEnd, RefusedTapIsRetriedEveryTickUntilTheSystemAllowsIt) {
    world.taps->refuseCreation = true;
    const auto state = world.launch();
    EXPECT_EQ(state->status(), AppStatus::couldNotActivate);
    world.wait(2.0);
    world.wait(2.0);
    world.wait(2.0);
    const Strings refusals(4, "create refused");
    EXPECT_EQ(world.taps->calls(), refusals) << "one try at launch, then one a tick";
    EXPECT_EQ(world.appInfo->loggerFor("tap")->lines().size(), 4u);
    world.taps->refuseCreation = false;
    world.wait(2.0);
    EXPECT_TRUE(state->tapActive());
    EXPECT_EQ(state->status(), AppStatus::active);
    world.wait(10.0);
    EXPECT_EQ(world.taps->tapsCreated(), 1u) << "no tries once the tap runs";
}

TEST_F(EndToEnd, SongChangeShowsTheTitleAtOnceAndTheArtworkAfterTheFetch) {
    world.musicPlays("So What", "Miles Davis", true, "first");
    const auto state = world.launch();
    world.settle();
    world.musicPlays("Blue in Green", "Bill Evans", true, "second");
    world.postPlayerInfo("Playing", "Blue in Green", "Bill Evans");
    const MenuContent before = menu(state);
    EXPECT_EQ(*verbatim(before.nowPlaying.title), "Blue in Green");
    EXPECT_EQ(*verbatim(before.nowPlaying.subtitle), "Bill Evans");
    EXPECT_FALSE(before.nowPlaying.artwork.has_value());
    world.settle();
    EXPECT_EQ(menu(state).nowPlaying.artwork, FakeThumbnailer::image("second"));
}

TEST_F(EndToEnd, ReminderFallsDueWithinAnHourOfThirtyDaysAndCheckOpensTheUpdatesPage) {
    const auto state = world.launch();
    EXPECT_FALSE(menu(state).updateReminder.has_value());
    world.wait(2592000.0 - 1.0);
    EXPECT_FALSE(menu(state).updateReminder.has_value());
    world.wait(3600.0);
    const MenuContent due = menu(state);
    ASSERT_TRUE(due.updateReminder.has_value());

    due.updateReminder->check.action();
    EXPECT_EQ(world.urlOpener->opened().back(), orvik::UpdateReminder::updatesPageAddress("tolvane", "1.2"));
    EXPECT_FALSE(menu(state).updateReminder.has_value());
    world.wait(2592000.0 - 3600.0);
    EXPECT_FALSE(menu(state).updateReminder.has_value()) << "a new period began at the check";
}

TEST_F(EndToEnd, ReminderNotNowHidesTheCardForAnotherPeriodWithoutOpeningAnything) {
    const auto state = world.launch();
    world.wait(2592000.0 + 3600.0);
    const MenuContent due = menu(state);
    ASSERT_TRUE(due.updateReminder.has_value());
    due.updateReminder->notNow.action();
    EXPECT_FALSE(menu(state).updateReminder.has_value());
    EXPECT_TRUE(world.urlOpener->opened().empty());
    world.wait(2592000.0 + 3600.0);
    EXPECT_TRUE(menu(state).updateReminder.has_value());
}

TEST_F(EndToEnd, SnapshotSampleStateGivesTheMenuTheSnapshotDraws) {
    const testsupport::ScopedSnapshotFlag snapshot(true);
    const auto state = MenuSnapshot::sampleState(world.services(), FakeThumbnailer::image("gradient"));
    const MenuContent content = menu(state);

    EXPECT_EQ(content.header.status, orvik::appText("Active \u00B7 \u23EE \u23EF \u23ED \u2192 Music only"));
    EXPECT_EQ(content.header.statusColor, orvik::NamedColor::green);
    EXPECT_TRUE(content.header.isOn);
    EXPECT_EQ(content.header.switchHelp, orvik::appText("Turn off"));
    EXPECT_FALSE(content.updateReminder.has_value());
    EXPECT_TRUE(content.warnings.empty());
    EXPECT_EQ(*verbatim(content.nowPlaying.title), "Manh\u00E3 de N\u00E9voa");
    EXPECT_EQ(*verbatim(content.nowPlaying.subtitle), "Lia Moreno & Davi Sato");
    EXPECT_EQ(content.nowPlaying.artwork, FakeThumbnailer::image("gradient"));
    EXPECT_EQ(content.nowPlaying.transport[1].symbol, "pause.fill");
    EXPECT_EQ(content.settings.selection, ClosedBehavior::launchMusic);
    EXPECT_FALSE(content.settings.openAtLogin->isOn());
    EXPECT_EQ(loginItem->isEnabledCalls, 0u);
    EXPECT_EQ(content.footer.caption, orvik::appText("Keys sent: %lld", {"12"}));

    // Building it did no system work.
    EXPECT_EQ(world.accessibility->requestCalls + world.accessibility->isTrustedCalls, 0u);
    EXPECT_EQ(world.taps->tapsCreated(), 0u);
    EXPECT_TRUE(world.running->questions().empty());
    EXPECT_TRUE(world.music->runs().empty());
    EXPECT_TRUE(world.standardDefaults->values().empty());
    EXPECT_EQ(world.distributed->observerCount() + world.workspace->observerCount(), 0u);
    EXPECT_EQ(world.mainThread->pendingTimerCount(), 0u);
}

TEST_F(EndToEnd, ShowingTheMenuRefreshesTheTrack) {
    world.musicPlays("So What", "Miles Davis", true);
    const auto state = world.launch();
    world.settle();
    world.musicPlays("Changed Meanwhile", "Someone", true);
    menu(state).onAppear();
    world.settle();
    EXPECT_EQ(state->track()->summary.name, "Changed Meanwhile");
}

}  // namespace
}  // namespace tolvane
