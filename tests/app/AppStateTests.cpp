#include "Tolvane/AppState.h"

#include <gtest/gtest.h>

#include <stdexcept>

#include "AppWorld.h"
#include "TestSupport/OffTheMainThread.h"

namespace tolvane {
namespace {

using testsupport::AppWorld;
using testsupport::commandSource;
using testsupport::FakeThumbnailer;
using testsupport::nextKey;
using testsupport::playKey;
using testsupport::previousKey;
using testsupport::trackQuerySource;
using Strings = std::vector<std::string>;

class AppStateTest : public testing::Test {
protected:
    AppWorld world;
};

// --- Construction -----------------------------------------------------------------

TEST_F(AppStateTest, FirstLaunchWithNoStoredPreferencesIsEnabledWithLaunchMusic) {
    const auto state = world.launch();
    EXPECT_TRUE(state->isEnabled());
    EXPECT_EQ(state->closedBehavior(), ClosedBehavior::launchMusic);
    EXPECT_TRUE(world.settings->values().empty()) << "the first reads write nothing back";
}

TEST_F(AppStateTest, StoredSettingsAreReadAtLaunch) {
    world.settings->write(AppState::enabledPreference, false);
    world.settings->write(AppState::closedBehaviorPreference, ClosedBehavior::system);
    const auto state = world.launch();
    EXPECT_FALSE(state->isEnabled());
    EXPECT_EQ(state->closedBehavior(), ClosedBehavior::system);
}

TEST_F(AppStateTest, LaunchAsksForAccessibilityOnceAndStartsTheTapWhenTrusted) {
    const auto state = world.launch();
    EXPECT_EQ(world.accessibility->requestCalls, 1u);
    EXPECT_TRUE(state->hasAccessibility());
    EXPECT_TRUE(state->tapActive());
    EXPECT_TRUE(world.taps->liveTapIsEnabled());
    EXPECT_EQ(state->status(), AppStatus::active);
}

TEST_F(AppStateTest, LaunchInstallsThreeMusicObservers) {
    const auto state = world.launch();
    EXPECT_EQ(world.distributed->observerCount("com.apple.Music.playerInfo"), 1u);
    EXPECT_EQ(world.workspace->observerCount("NSWorkspaceDidLaunchApplicationNotification"), 1u);
    EXPECT_EQ(world.workspace->observerCount("NSWorkspaceDidTerminateApplicationNotification"), 1u);
}

TEST_F(AppStateTest, MusicsPlayerNotificationIsDeliveredAtOnceEvenWhileTheAppIsInactive) {
    const auto state = world.launch();
    EXPECT_EQ(world.distributed->observerCount("com.apple.Music.playerInfo", orvik::Delivery::immediate), 1u);
    EXPECT_EQ(world.distributed->observerCount("com.apple.Music.playerInfo", orvik::Delivery::standard), 0u);
}

TEST_F(AppStateTest, WorkspaceNotificationsAreObservedWithStandardDelivery) {
    const auto state = world.launch();
    for (const char* name : {"NSWorkspaceDidLaunchApplicationNotification",
                             "NSWorkspaceDidTerminateApplicationNotification", "NSWorkspaceDidWakeNotification"}) {
        EXPECT_EQ(world.workspace->observerCount(name, orvik::Delivery::standard), 1u) << name;
    }
}

TEST_F(AppStateTest, ReleasingTheStateRemovesItsObserversAndStopsTheTap) {
    {
        const auto state = world.launch();
        ASSERT_TRUE(world.taps->liveTap().has_value());
        world.settle();  // the first track fetch holds the state until answered
    }
    EXPECT_EQ(world.distributed->observerCount(), 0u);
    EXPECT_EQ(world.workspace->observerCount(), 0u);
    EXPECT_FALSE(world.taps->liveTap().has_value());
    world.wait(10);  // the poll is gone too
    EXPECT_EQ(world.accessibility->isTrustedCalls, 0u);
}

TEST_F(AppStateTest, LaunchFetchesTheCurrentTrackWhenMusicRuns) {
    world.musicPlays("So What", "Miles Davis", true, "cover");
    const auto state = world.launch();
    EXPECT_TRUE(state->isMusicRunning());
    world.settle();
    ASSERT_TRUE(state->track().has_value());
    EXPECT_EQ(state->track()->summary, (TrackSummary{"So What", "Miles Davis", true}));
    EXPECT_EQ(state->track()->artwork, FakeThumbnailer::image("cover"));
}

TEST_F(AppStateTest, LaunchWithMusicClosedRunsNoScriptAndHasNoTrack) {
    const auto state = world.launch();
    world.settle();
    EXPECT_FALSE(state->isMusicRunning());
    EXPECT_FALSE(state->track().has_value());
    EXPECT_TRUE(world.music->runs().empty());
}

TEST_F(AppStateTest, PreviewNeverPromptsNeverTapsAndObservesNothingWhateverEnabledSays) {
    world.accessibility->trusted = false;
    world.settings->write(AppState::enabledPreference, true);
    const auto state = world.launch(true);
    world.wait(60);
    EXPECT_EQ(world.accessibility->requestCalls, 0u);
    EXPECT_EQ(world.accessibility->isTrustedCalls, 0u);
    EXPECT_EQ(world.taps->tapsCreated(), 0u);
    EXPECT_EQ(world.distributed->observerCount() + world.workspace->observerCount(), 0u);
    EXPECT_TRUE(world.running->questions().empty());
    state->setEnabled(true);
    EXPECT_EQ(world.taps->tapsCreated(), 0u);
    state->refreshTrack();
    world.settle();
    EXPECT_TRUE(world.music->runs().empty());
}

TEST_F(AppStateTest, PreviewHasAPreviewReminderThatIsNotDue) {
    const auto state = world.launch(true);
    EXPECT_FALSE(state->updateReminders()->hasReminder());
    EXPECT_FALSE(state->updateReminders()->updateReminderDue.get());
}

TEST_F(AppStateTest, ReminderKeepsItsPeriodInTheStandardDefaultsNotInTheSettingsStore) {
    const auto state = world.launch();
    EXPECT_TRUE(world.standardDefaults->object("updateReminderVersion").has_value());
    EXPECT_EQ(world.standardDefaults->read(orvik::UpdateReminder::versionPreference), "1.2");
    EXPECT_FALSE(world.settings->object("updateReminderVersion").has_value());
}

// --- Settings -------------------------------------------------------------------------

TEST_F(AppStateTest, SettingEnabledToItsCurrentValueStillWritesAndReevaluatesTheTap) {
    const auto state = world.launch();
    world.taps->clearCalls();
    state->setEnabled(true);
    EXPECT_EQ(world.settings->object("enabled"), orvik::PropertyListValue(true));
    // The tap runs already: a second start is a no-op that reports success.
    EXPECT_TRUE(state->tapActive());
    EXPECT_TRUE(world.taps->calls().empty());
    EXPECT_EQ(world.taps->tapsCreated(), 1u);
}

TEST_F(AppStateTest, SwitchingOffStopsTheTapAtOnce) {
    const auto state = world.launch();
    state->setEnabled(false);
    EXPECT_FALSE(state->tapActive());
    EXPECT_FALSE(world.taps->liveTap().has_value());
    EXPECT_EQ(state->status(), AppStatus::paused);
    EXPECT_EQ(world.settings->object("enabled"), orvik::PropertyListValue(false));
}

TEST_F(AppStateTest, SwitchingOnWhileUntrustedLeavesTheTapOffAndWaitsForPermission) {
    world.accessibility->trusted = false;
    world.settings->write(AppState::enabledPreference, false);
    const auto state = world.launch();
    state->setEnabled(true);
    EXPECT_FALSE(state->tapActive());
    EXPECT_EQ(world.taps->tapsCreated(), 0u);
    EXPECT_EQ(state->status(), AppStatus::waitingForPermission);
}

TEST_F(AppStateTest, ClosedBehaviorIsWrittenAsItsRawValueAndLeavesTheTapAlone) {
    const auto state = world.launch();
    world.taps->clearCalls();
    state->setClosedBehavior(ClosedBehavior::ignore);
    EXPECT_EQ(world.settings->object("closedBehavior"), orvik::PropertyListValue("ignore"));
    EXPECT_TRUE(world.taps->calls().empty());
}

TEST_F(AppStateTest, EveryPublishedWriteIsAnnouncedBeforeTheValueIsStored) {
    const auto state = world.launch();
    std::vector<bool> enabledWhenTold;
    orvik::Subscription subscription =
        state->objectWillChange.subscribe([&] { enabledWhenTold.push_back(state->isEnabled()); });
    state->setEnabled(false);
    ASSERT_FALSE(enabledWhenTold.empty());
    EXPECT_TRUE(enabledWhenTold.front()) << "the signal comes before the store";
}

// --- The key path ------------------------------------------------------------------------

TEST_F(AppStateTest, KeyAsksWhetherMusicRunsAtThatMomentNotTheCachedFlag) {
    world.running->setRunning("com.apple.Music", true);
    const auto state = world.launch();
    ASSERT_TRUE(state->isMusicRunning());
    // Music quits; its terminate notification has not arrived yet.
    world.running->setRunning("com.apple.Music", false);
    world.settings->write(AppState::closedBehaviorPreference, ClosedBehavior::system);
    state->setClosedBehavior(ClosedBehavior::system);
    EXPECT_FALSE(world.press(playKey)) << "routed as closed, so passed to the system";
    EXPECT_TRUE(state->isMusicRunning());
    world.settle();
    EXPECT_TRUE(world.commandRuns().empty());
}

TEST_F(AppStateTest, NextWithMusicClosedAndLaunchMusicDoesNothingAtAllAndIsNotPassedOn) {
    const auto state = world.launch();
    EXPECT_TRUE(world.press(nextKey));
    world.settle();
    EXPECT_TRUE(world.commandRuns().empty());
    EXPECT_EQ(state->keysForwarded(), 0);
}

TEST_F(AppStateTest, KeysSentAreCountedSwallowedAndQueued) {
    world.running->setRunning("com.apple.Music", true);
    const auto state = world.launch();
    EXPECT_TRUE(world.press(nextKey));
    EXPECT_TRUE(world.press(previousKey));
    EXPECT_EQ(state->keysForwarded(), 2);
    world.settle();
    EXPECT_EQ(world.commandRuns(), (Strings{commandSource(MusicCommand::next), commandSource(MusicCommand::previous)}));
}

struct ClosedRow {
    ClosedBehavior behavior;
    std::int64_t key;
    bool swallowed;
    std::optional<MusicCommand> sent;
};

class MusicClosedKeys : public testing::TestWithParam<ClosedRow> {};

TEST_P(MusicClosedKeys, BehaveAsTheClosedBehaviorSays) {
    AppWorld world;
    world.settings->write(AppState::closedBehaviorPreference, GetParam().behavior);
    const auto state = world.launch();
    EXPECT_EQ(world.press(GetParam().key), GetParam().swallowed);
    world.settle();
    const Strings expected = GetParam().sent ? Strings{commandSource(*GetParam().sent)} : Strings{};
    EXPECT_EQ(world.commandRuns(), expected);
    EXPECT_EQ(state->keysForwarded(), GetParam().sent ? 1 : 0);
}

INSTANTIATE_TEST_SUITE_P(AppState, MusicClosedKeys,
                         testing::Values(ClosedRow{ClosedBehavior::launchMusic, playKey, true, MusicCommand::launchAndPlay},
                                         ClosedRow{ClosedBehavior::launchMusic, nextKey, true, std::nullopt},
                                         ClosedRow{ClosedBehavior::launchMusic, previousKey, true, std::nullopt},
                                         ClosedRow{ClosedBehavior::ignore, playKey, true, std::nullopt},
                                         ClosedRow{ClosedBehavior::ignore, nextKey, true, std::nullopt},
                                         ClosedRow{ClosedBehavior::system, playKey, false, std::nullopt},
                                         ClosedRow{ClosedBehavior::system, previousKey, false, std::nullopt}));

TEST_F(AppStateTest, PerformTurnsPlayPauseIntoLaunchAndPlayWhileMusicIsClosedAndCountsNothing) {
    world.settings->write(AppState::closedBehaviorPreference, ClosedBehavior::ignore);
    const auto state = world.launch();
    state->perform(MusicCommand::playPause);
    state->perform(MusicCommand::next);
    world.settle();
    EXPECT_EQ(world.commandRuns(), (Strings{commandSource(MusicCommand::launchAndPlay), commandSource(MusicCommand::next)}));
    EXPECT_EQ(state->keysForwarded(), 0);
}

TEST_F(AppStateTest, PerformUsesTheCachedRunningFlag) {
    world.running->setRunning("com.apple.Music", true);
    const auto state = world.launch();
    world.running->setRunning("com.apple.Music", false);  // not yet noticed
    state->perform(MusicCommand::playPause);
    world.settle();
    EXPECT_EQ(world.commandRuns(), Strings{commandSource(MusicCommand::playPause)});
}

TEST_F(AppStateTest, AnObserverThatThrowsDuringAKeyPressIsLoggedAndTheKeyPasses) {
    world.running->setRunning("com.apple.Music", true);
    const auto state = world.launch();
    world.settle();
    orvik::Subscription subscription =
        state->objectWillChange.subscribe([] { throw std::runtime_error("an observer broke"); });
    bool dropped = true;
    EXPECT_NO_THROW(dropped = world.taps->deliverMediaKey(testsupport::mediaKeyData1(testsupport::playKey, true)));
    EXPECT_FALSE(dropped);
    EXPECT_EQ(world.appInfo->loggerFor("tap")->lines(),
              Strings{std::string(MediaKeyTap::handlingFailedMessage)});
    // The release finds nothing remembered and passes as well.
    EXPECT_FALSE(world.taps->deliverMediaKey(testsupport::mediaKeyData1(testsupport::playKey, false)));
}

TEST_F(AppStateTest, KeyAfterTheStateIsGoneLetsTheKeyThroughWithoutCrashing) {
    auto state = world.launch();
    const auto onKey = state->tap().onKey;
    world.settle();  // the first track fetch holds the state until answered
    state.reset();
    EXPECT_FALSE(onKey(MediaKey::playPause));
}

// --- Music observation -----------------------------------------------------------------------

TEST_F(AppStateTest, SameSongNotificationKeepsTheArtwork) {
    world.musicPlays("So What", "Miles Davis", true, "cover");
    const auto state = world.launch();
    world.settle();
    ASSERT_TRUE(state->track() && state->track()->artwork);
    const std::size_t runsBefore = world.music->runs().size();
    world.postPlayerInfo("Paused", "So What", "Miles Davis");
    EXPECT_EQ(state->track()->summary, (TrackSummary{"So What", "Miles Davis", false}));
    EXPECT_EQ(state->track()->artwork, FakeThumbnailer::image("cover"));
    world.settle();
    EXPECT_EQ(world.music->runs().size(), runsBefore) << "a play/pause change never refetches";
}

TEST_F(AppStateTest, NewSongShowsItsTitleAtOnceWithoutArtworkUntilTheFetchReturns) {
    world.musicPlays("So What", "Miles Davis", true, "old cover");
    const auto state = world.launch();
    world.settle();
    world.musicPlays("Blue in Green", "Miles Davis", true, "new cover");
    world.postPlayerInfo("Playing", "Blue in Green", "Miles Davis");
    ASSERT_TRUE(state->track().has_value());
    EXPECT_EQ(state->track()->summary.name, "Blue in Green");
    EXPECT_FALSE(state->track()->artwork.has_value());
    world.settle();
    EXPECT_EQ(state->track()->artwork, FakeThumbnailer::image("new cover"));
}

TEST_F(AppStateTest, StoppedNotificationClearsTheTrack) {
    world.musicPlays("So What", "Miles Davis", true);
    const auto state = world.launch();
    world.settle();
    world.postPlayerInfo("Stopped", "So What", "Miles Davis");
    EXPECT_FALSE(state->track().has_value());
}

TEST_F(AppStateTest, PlayerNotificationWithoutUserInfoIsReadAsPausedWithEmptyTexts) {
    const auto state = world.launch();
    world.running->setRunning("com.apple.Music", true);
    world.distributed->post({"com.apple.Music.playerInfo", {}});
    ASSERT_TRUE(state->track().has_value());
    EXPECT_EQ(state->track()->summary, (TrackSummary{"", "", false}));
}

TEST_F(AppStateTest, MusicLaunchSetsRunningWithoutFetchingTheTrack) {
    const auto state = world.launch();
    world.settle();
    world.musicLaunches();
    EXPECT_TRUE(state->isMusicRunning());
    world.settle();
    EXPECT_TRUE(world.music->runs().empty());
}

TEST_F(AppStateTest, MusicTerminationClearsRunningAndTheTrack) {
    world.musicPlays("So What", "Miles Davis", true);
    const auto state = world.launch();
    world.settle();
    world.musicQuits();
    EXPECT_FALSE(state->isMusicRunning());
    EXPECT_FALSE(state->track().has_value());
}

TEST_F(AppStateTest, AnotherAppsTerminationNeverChangesMusicRunning) {
    world.musicPlays("So What", "Miles Davis", true);
    const auto state = world.launch();
    world.settle();
    world.postWorkspace("NSWorkspaceDidTerminateApplicationNotification", "com.apple.Safari");
    world.postWorkspace("NSWorkspaceDidTerminateApplicationNotification", "com.apple.music");
    world.workspace->post({"NSWorkspaceDidTerminateApplicationNotification", {}});
    world.workspace->post({"NSWorkspaceDidTerminateApplicationNotification",
                           {{orvik::Notification::applicationKey, orvik::PropertyListValue::Dictionary{}}}});
    EXPECT_TRUE(state->isMusicRunning());
    EXPECT_TRUE(state->track().has_value());
}

TEST_F(AppStateTest, FailedTrackFetchLeavesNoTrack) {
    world.running->setRunning("com.apple.Music", true);
    world.music->answer(trackQuerySource(), testsupport::FakeScriptEngine::error(-600));
    const auto state = world.launch();
    world.settle();
    EXPECT_FALSE(state->track().has_value());
}

// --- Status and permissions -------------------------------------------------------------------

TEST_F(AppStateTest, RefusedAutomationShowsAutomationDeniedUntilACommandSucceeds) {
    world.running->setRunning("com.apple.Music", true);
    world.music->answerOnce(commandSource(MusicCommand::next), testsupport::FakeScriptEngine::error(-1743));
    const auto state = world.launch();
    world.press(nextKey);
    world.settle();
    EXPECT_TRUE(state->automationDenied());
    EXPECT_EQ(state->status(), AppStatus::automationDenied);
    EXPECT_TRUE(state->tapActive()) << "a refused command is still a key taken from the system";
    world.press(nextKey);
    world.settle();
    EXPECT_FALSE(state->automationDenied());
    EXPECT_EQ(state->status(), AppStatus::active);
}

TEST_F(AppStateTest, UntrustedWithAutomationDeniedShowsWaitingForPermission) {
    world.running->setRunning("com.apple.Music", true);
    world.music->answer(commandSource(MusicCommand::playPause), testsupport::FakeScriptEngine::error(-1743));
    const auto state = world.launch();
    state->perform(MusicCommand::playPause);
    world.settle();
    ASSERT_TRUE(state->automationDenied());
    world.accessibility->trusted = false;
    world.wait(2);
    EXPECT_EQ(state->status(), AppStatus::waitingForPermission);
}

TEST_F(AppStateTest, RefusedTapCreationIsLoggedAndShowsCouldNotActivate) {
    world.taps->refuseCreation = true;
    const auto state = world.launch();
    EXPECT_FALSE(state->tapActive());
    EXPECT_EQ(state->status(), AppStatus::couldNotActivate);
    EXPECT_EQ(world.appInfo->loggerFor("tap")->lines(), Strings{"could not create the event tap"});
}

TEST_F(AppStateTest, PollChangesNothingWhileTrustIsUnchangedAndTheTapRuns) {
    const auto state = world.launch();
    world.settle();
    int changes = 0;
    orvik::Subscription subscription = state->objectWillChange.subscribe([&] { ++changes; });
    world.taps->clearCalls();
    world.wait(20);
    EXPECT_EQ(changes, 0);
    EXPECT_TRUE(world.taps->calls().empty());
    EXPECT_EQ(world.accessibility->isTrustedCalls, 10u) << "one trust query every 2 s";
}

// The poll also revives a tap that the system switched off without telling
// (as after sleep or a user switch): one question more per tick.

TEST_F(AppStateTest, EachPollTickOfARunningTapCostsOneTrustAndOneEnabledQueryAndChangesNothing) {
    const auto state = world.launch();
    world.settle();
    int changes = 0;
    orvik::Subscription subscription = state->objectWillChange.subscribe([&] { ++changes; });
    world.accessibility->isTrustedCalls = 0;
    world.taps->clearCalls();
    for (std::size_t tick = 1; tick <= 3; ++tick) {
        world.wait(2);
        EXPECT_EQ(world.accessibility->isTrustedCalls, tick);
        EXPECT_EQ(world.taps->isEnabledQueries(), tick);
    }
    EXPECT_TRUE(world.taps->calls().empty()) << "nothing is switched";
    EXPECT_EQ(changes, 0);
}

TEST_F(AppStateTest, ASilentlyDisabledTapIsReenabledOnTheNextPollTick) {
    const auto state = world.launch();
    world.settle();
    world.taps->disableSilently();
    world.taps->clearCalls();
    world.wait(1.9);
    EXPECT_FALSE(world.taps->liveTapIsEnabled()) << "not before the tick";
    world.wait(0.1);
    EXPECT_TRUE(world.taps->liveTapIsEnabled());
    EXPECT_EQ(world.taps->calls(), Strings{"enable 1 on"});
    EXPECT_TRUE(state->tapActive());
}

TEST_F(AppStateTest, PollAsksNothingOfTheTapWhileTheAppIsOff) {
    world.settings->write(AppState::enabledPreference, false);
    const auto state = world.launch();
    world.settle();
    world.taps->clearCalls();
    world.accessibility->isTrustedCalls = 0;
    world.wait(10);
    EXPECT_EQ(world.taps->isEnabledQueries(), 0u);
    EXPECT_TRUE(world.taps->calls().empty());
    // The trust poll itself runs for the life of the app, switched off or not.
    EXPECT_EQ(world.accessibility->isTrustedCalls, 5u);
}

TEST_F(AppStateTest, WakeWithASilentlyDisabledTapReenablesItAtOnce) {
    const auto state = world.launch();
    world.settle();
    world.taps->disableSilently();
    world.taps->clearCalls();
    world.workspace->post({"NSWorkspaceDidWakeNotification", {}});
    EXPECT_TRUE(world.taps->liveTapIsEnabled());
    EXPECT_EQ(world.taps->calls(), Strings{"enable 1 on"});
}

TEST_F(AppStateTest, WakeWithAnEnabledTapChangesNothing) {
    const auto state = world.launch();
    world.settle();
    int changes = 0;
    orvik::Subscription subscription = state->objectWillChange.subscribe([&] { ++changes; });
    world.taps->clearCalls();
    world.workspace->post({"NSWorkspaceDidWakeNotification", {}});
    EXPECT_TRUE(world.taps->calls().empty());
    EXPECT_EQ(changes, 0);
    EXPECT_TRUE(world.taps->liveTapIsEnabled());
}

TEST_F(AppStateTest, WakeWhileSwitchedOffInstallsNoTap) {
    world.settings->write(AppState::enabledPreference, false);
    const auto state = world.launch();
    world.settle();
    world.workspace->post({"NSWorkspaceDidWakeNotification", {}});
    EXPECT_FALSE(world.taps->liveTap().has_value());
    EXPECT_EQ(world.taps->tapsCreated(), 0u);
}

TEST_F(AppStateTest, APreviewObservesNoWake) {
    const auto state = world.launch(true);
    EXPECT_EQ(world.workspace->observerCount("NSWorkspaceDidWakeNotification"), 0u);
}

// --- Answers come later, never inside the caller ---------------------------------------------

TEST_F(AppStateTest, RefreshWithMusicClosedClearsTheTrackInALaterTask) {
    world.musicPlays("So What", "Miles Davis", true);
    const auto state = world.launch();
    world.settle();
    ASSERT_TRUE(state->track().has_value());
    world.running->setRunning("com.apple.Music", false);  // quit, not yet told
    int changes = 0;
    orvik::Subscription subscription = state->objectWillChange.subscribe([&] { ++changes; });

    state->refreshTrack();
    EXPECT_EQ(changes, 1) << "only the running flag, which the refresh reads itself";
    EXPECT_FALSE(state->isMusicRunning());
    EXPECT_TRUE(state->track().has_value()) << "the answer has not arrived yet";

    world.mainThread->runUntilIdle();
    EXPECT_FALSE(state->track().has_value());
    EXPECT_EQ(changes, 2);
    EXPECT_TRUE(world.music->runs().size() == 2u) << "no script ran for the refresh";
}

TEST_F(AppStateTest, LaunchWithMusicClosedStoresNoTrackUntilTheAnswerArrives) {
    const auto state = world.launch();
    int changes = 0;
    orvik::Subscription subscription = state->objectWillChange.subscribe([&] { ++changes; });
    EXPECT_EQ(world.mainThread->pendingTaskCount(), 1u) << "the track answer is queued";
    world.mainThread->runUntilIdle();
    EXPECT_EQ(changes, 1);
    EXPECT_FALSE(state->track().has_value());
    EXPECT_TRUE(world.music->runs().empty());
}

// --- Main-thread entries -------------------------------------------------------------------------

TEST_F(AppStateTest, SettersAndOperationsOffTheMainThreadStopTheProcess) {
    const auto state = world.launch();
    world.settle();
    using testsupport::mainThreadFault;
    using testsupport::offTheMainThread;
    EXPECT_DEATH(offTheMainThread([&] { state->setEnabled(false); }), mainThreadFault);
    EXPECT_DEATH(offTheMainThread([&] { state->setClosedBehavior(ClosedBehavior::ignore); }), mainThreadFault);
    EXPECT_DEATH(offTheMainThread([&] { state->refreshTrack(); }), mainThreadFault);
    EXPECT_DEATH(offTheMainThread([&] { state->perform(MusicCommand::next); }), mainThreadFault);
}

TEST_F(AppStateTest, PreviewDataOffTheMainThreadStopsTheProcess) {
    const auto state = world.launch(true);
    EXPECT_DEATH(testsupport::offTheMainThread([&] { state->applyPreview(std::nullopt, true, 3); }),
                 testsupport::mainThreadFault);
}

TEST_F(AppStateTest, APreviewsUpdateReminderCentreAssertsTheMainThreadToo) {
    const auto state = world.launch(true);
    EXPECT_DEATH(testsupport::offTheMainThread([&] { state->updateReminders()->dismissUpdateReminder(); }),
                 testsupport::mainThreadFault);
}

TEST_F(AppStateTest, PollRunsEveryTwoSecondsWithATenthOfLeeway) {
    const auto state = world.launch();
    // The timers asked for at launch: the reminder's hourly refresh and the poll.
    std::vector<std::pair<double, double>> requests;
    for (const auto& request : world.mainThread->timerRequests()) {
        requests.emplace_back(request.delay.count(), request.leeway.count());
    }
    EXPECT_EQ(requests, (std::vector<std::pair<double, double>>{{3600.0, 360.0}, {2.0, 0.2}}));
}

TEST_F(AppStateTest, PollRevivesATapTheSystemSwitchedOffSilently) {
    const auto state = world.launch();
    world.taps->disableSilently();
    world.wait(2);
    EXPECT_TRUE(world.taps->liveTapIsEnabled());
    EXPECT_TRUE(state->tapActive());
}

TEST_F(AppStateTest, DisabledAndWithoutAccessibilityIsPausedNotWaiting) {
    world.accessibility->trusted = false;
    world.settings->write(AppState::enabledPreference, false);
    const auto state = world.launch();
    EXPECT_EQ(state->status(), AppStatus::paused);
    EXPECT_EQ(state->menuBarSymbol(), "play.slash.fill");
}

TEST_F(AppStateTest, MenuBarSymbolFollowsThePlayerWhileActive) {
    const auto state = world.launch();
    world.settle();
    EXPECT_EQ(state->menuBarSymbol(), "playpause.fill");
    world.running->setRunning("com.apple.Music", true);
    world.postPlayerInfo("Playing", "So What", "Miles Davis");
    EXPECT_EQ(state->menuBarSymbol(), "play.fill");
    world.postPlayerInfo("Paused", "So What", "Miles Davis");
    EXPECT_EQ(state->menuBarSymbol(), "pause.fill");
}

TEST_F(AppStateTest, ApplyPreviewFillsTheSampleFieldsInOrder) {
    const auto state = world.launch(true);
    state->applyPreview(Track{{"T", "A", true}, std::nullopt}, true, 12);
    EXPECT_TRUE(state->track().has_value());
    EXPECT_TRUE(state->hasAccessibility());
    EXPECT_TRUE(state->tapActive());
    EXPECT_TRUE(state->isMusicRunning());
    EXPECT_EQ(state->keysForwarded(), 12);
    EXPECT_EQ(state->status(), AppStatus::active);
    state->applyPreview(std::nullopt, false, 0);
    EXPECT_FALSE(state->isMusicRunning());
    EXPECT_EQ(state->status(), AppStatus::waitingForPermission);
}

TEST(UserInfoFrom, KeepsStringsNumbersAndBooleansAndMarksTheRestUnreadable) {
    const UserInfo userInfo = userInfoFrom({
        {"Name", "So What"},
        {"Playing", true},
        {"Count", 3},
        {"Rating", 4.5},
        {"Data", orvik::PropertyListValue::Data{1}},
    });
    ASSERT_EQ(userInfo.size(), 5u);
    const PlayerInfo info = PlayerInfo::fromUserInfo(userInfo);
    EXPECT_EQ(info.name, "So What");
    for (const UserInfoEntry& entry : userInfo) {
        const std::string key = std::get<std::string>(entry.key);
        if (key == "Data") {
            EXPECT_TRUE(std::holds_alternative<OtherUserInfoValue>(entry.value));
        }
        if (key == "Count") {
            EXPECT_EQ(std::get<std::int64_t>(entry.value), 3);
        }
        if (key == "Rating") {
            EXPECT_EQ(std::get<double>(entry.value), 4.5);
        }
        if (key == "Playing") {
            EXPECT_EQ(std::get<bool>(entry.value), true);
        }
    }
}

}  // namespace
}  // namespace tolvane
