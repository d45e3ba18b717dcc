#include "Tolvane/MusicController.h"

#include <gtest/gtest.h>

#include "TestSupport/MusicSources.h"

#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "TestSupport/FakeRunningApplications.h"
#include "TestSupport/FakeScriptEngine.h"
#include "TestSupport/FakeThumbnailer.h"
#include "TestSupport/ManualMainThread.h"
#include "TestSupport/ManualSerialQueue.h"
#include "TestSupport/RecordingLogger.h"

namespace tolvane {
namespace {

// The exact sources Music receives: playpause, nextTrack, backTrack, play,
// trackQuery, artworkQuery, and music(body) for any other body.
using namespace testsupport::sources;
const auto source = testsupport::sources::music;

using testsupport::FakeScriptEngine;
using testsupport::FakeThumbnailer;
using Strings = std::vector<std::string>;
using Reports = std::vector<bool>;



class MusicControllerTest : public testing::Test {
protected:
    MusicControllerTest() {
        apps->setRunning(MusicScripting::musicBundleIdentifier, true);
        controller->onAutomationPermission = [this](bool granted) { reports.push_back(granted); };
    }

    // Nothing may be left in flight: queued work holds the command loop, and
    // the loop holds the scripting that holds the queue.
    void TearDown() override {
        settle();
        EXPECT_EQ(queue->pendingCount(), 0u);
        EXPECT_EQ(mainThread.pendingTaskCount(), 0u);
    }

    // Runs the scripting queue and the main thread until neither has work.
    void settle() {
        while (queue->runUntilIdle() + mainThread.runUntilIdle() > 0) {
        }
    }

    // One step of the loop: the queued work, then its report on the main thread.
    void step() {
        queue->runUntilIdle();
        mainThread.runUntilIdle();
    }

    testsupport::ManualMainThread mainThread;
    std::shared_ptr<testsupport::ManualSerialQueue> queue = std::make_shared<testsupport::ManualSerialQueue>();
    std::shared_ptr<FakeScriptEngine> engine = std::make_shared<FakeScriptEngine>();
    std::shared_ptr<FakeThumbnailer> thumbnailer = std::make_shared<FakeThumbnailer>();
    std::shared_ptr<testsupport::RecordingLogger> logger = std::make_shared<testsupport::RecordingLogger>();
    std::shared_ptr<testsupport::FakeRunningApplications> apps =
        std::make_shared<testsupport::FakeRunningApplications>();
    std::shared_ptr<MusicScripting> scripting = std::make_shared<MusicScripting>(queue, engine, thumbnailer, logger);
    std::unique_ptr<MusicController> controller = std::make_unique<MusicController>(mainThread, apps, scripting);
    Reports reports;
};

// --- Commands --------------------------------------------------------------

TEST_F(MusicControllerTest, AYieldedCommandRunsOnTheScriptingQueueNotAtOnce) {
    controller->commands.yield(MusicCommand::next);
    EXPECT_TRUE(engine->runs().empty());
    EXPECT_EQ(queue->pendingCount(), 1u);
    queue->runUntilIdle();
    EXPECT_EQ(engine->runs(), (Strings{nextTrack}));
}

TEST_F(MusicControllerTest, EachCommandRunsItsBodyAndPreviousRunsBackTrack) {
    controller->commands.yield(MusicCommand::playPause);
    controller->commands.yield(MusicCommand::next);
    controller->commands.yield(MusicCommand::previous);
    controller->commands.yield(MusicCommand::launchAndPlay);
    settle();
    EXPECT_EQ(engine->runs(), (Strings{playpause, nextTrack, backTrack, play}));
}

TEST_F(MusicControllerTest, ThreeQuickPressesOfNextRunThreeNextTrackScriptsStrictlyOneAfterAnother) {
    for (int press = 0; press < 3; ++press) controller->commands.yield(MusicCommand::next);

    for (std::size_t run = 1; run <= 3; ++run) {
        EXPECT_EQ(queue->pendingCount(), 1u) << "only one run is handed to the queue at a time";
        EXPECT_TRUE(queue->runNext());
        EXPECT_EQ(engine->runs().size(), run);
        EXPECT_EQ(queue->pendingCount(), 0u) << "the next run waits for this one's completion";
        mainThread.runUntilIdle();
    }
    EXPECT_EQ(queue->pendingCount(), 0u);
    EXPECT_EQ(engine->runs(), (Strings{nextTrack, nextTrack, nextTrack}));
}

TEST_F(MusicControllerTest, TheNextCommandStartsOnlyOnceTheCompletionReachedTheMainThread) {
    controller->commands.yield(MusicCommand::next);
    controller->commands.yield(MusicCommand::previous);
    queue->runUntilIdle();
    EXPECT_EQ(engine->runs(), (Strings{nextTrack}));
    EXPECT_EQ(mainThread.pendingTaskCount(), 1u);
    EXPECT_EQ(queue->pendingCount(), 0u);

    mainThread.runUntilIdle();
    EXPECT_EQ(queue->pendingCount(), 1u);
    queue->runUntilIdle();
    EXPECT_EQ(engine->runs(), (Strings{nextTrack, backTrack}));
}

TEST_F(MusicControllerTest, CommandsRunInTheOrderTheyWereYielded) {
    const std::vector<MusicCommand> pressed{MusicCommand::next,     MusicCommand::previous, MusicCommand::playPause,
                                            MusicCommand::next,     MusicCommand::launchAndPlay,
                                            MusicCommand::previous, MusicCommand::previous};
    Strings expected;
    for (MusicCommand command : pressed) {
        controller->commands.yield(command);
        expected.push_back(source(MusicScripting::body(command)));
    }
    settle();
    EXPECT_EQ(engine->runs(), expected);
}

TEST_F(MusicControllerTest, CommandsYieldedWhileARunIsUnderwayJoinTheEndOfTheQueue) {
    controller->commands.yield(MusicCommand::next);
    queue->runUntilIdle();                                // next ran; its report is on its way
    controller->commands.yield(MusicCommand::previous);   // waits behind it
    controller->commands.yield(MusicCommand::playPause);  // and behind that
    settle();
    EXPECT_EQ(engine->runs(), (Strings{nextTrack, backTrack, playpause}));
}

TEST_F(MusicControllerTest, TheLoopStartsAgainAfterGoingIdle) {
    controller->commands.yield(MusicCommand::next);
    settle();
    controller->commands.yield(MusicCommand::previous);
    EXPECT_EQ(queue->pendingCount(), 1u);
    settle();
    EXPECT_EQ(engine->runs(), (Strings{nextTrack, backTrack}));
}

// --- Permission reports ----------------------------------------------------

TEST_F(MusicControllerTest, ASucceededRunReportsTrueOnTheMainThread) {
    controller->commands.yield(MusicCommand::playPause);
    queue->runUntilIdle();
    EXPECT_TRUE(reports.empty()) << "the report waits for the main thread";
    mainThread.runUntilIdle();
    EXPECT_EQ(reports, (Reports{true}));
}

TEST_F(MusicControllerTest, ADeniedRunReportsFalse) {
    engine->answer(playpause, FakeScriptEngine::error(-1743));
    controller->commands.yield(MusicCommand::playPause);
    settle();
    EXPECT_EQ(reports, (Reports{false}));
}

TEST_F(MusicControllerTest, ADeniedCommandFollowedByAnAllowedOneReportsFalseThenTrue) {
    engine->answerOnce(nextTrack, FakeScriptEngine::error(-1743));
    controller->commands.yield(MusicCommand::next);
    controller->commands.yield(MusicCommand::next);
    settle();
    EXPECT_EQ(reports, (Reports{false, true}));
}

TEST_F(MusicControllerTest, AFailedRunLeavesTheLastReportedPermissionUnchanged) {
    engine->answerOnce(nextTrack, FakeScriptEngine::nothing());
    engine->answerOnce(nextTrack, FakeScriptEngine::error(-600));
    engine->answerOnce(nextTrack, FakeScriptEngine::errorWithoutNumber());
    controller->commands.yield(MusicCommand::next);
    controller->commands.yield(MusicCommand::next);
    controller->commands.yield(MusicCommand::next);
    settle();
    EXPECT_EQ(reports, (Reports{true}));
    EXPECT_EQ(engine->runs().size(), 3u);
}

TEST_F(MusicControllerTest, AScriptThatCannotBeCreatedReportsNothing) {
    engine->refuseToCreate(nextTrack);
    controller->commands.yield(MusicCommand::next);
    settle();
    EXPECT_TRUE(reports.empty());
}

TEST_F(MusicControllerTest, AFailureDoesNotStopTheLoop) {
    engine->answer(nextTrack, FakeScriptEngine::error(-1728));
    controller->commands.yield(MusicCommand::next);
    controller->commands.yield(MusicCommand::previous);
    settle();
    EXPECT_EQ(engine->runs(), (Strings{nextTrack, backTrack}));
    EXPECT_EQ(reports, (Reports{true}));
}

TEST_F(MusicControllerTest, FailedCommandsAreNotRetried) {
    engine->answer(nextTrack, FakeScriptEngine::error(-600));
    controller->commands.yield(MusicCommand::next);
    settle();
    EXPECT_EQ(engine->runs(), (Strings{nextTrack}));
}

TEST_F(MusicControllerTest, ACommandYieldedFromThePermissionCallbackRunsAfterThoseAlreadyQueued) {
    bool yielded = false;
    controller->onAutomationPermission = [&](bool granted) {
        reports.push_back(granted);
        if (!yielded) {
            yielded = true;
            controller->commands.yield(MusicCommand::launchAndPlay);
        }
    };
    controller->commands.yield(MusicCommand::next);
    controller->commands.yield(MusicCommand::previous);
    settle();
    EXPECT_EQ(engine->runs(), (Strings{nextTrack, backTrack, play}));
    EXPECT_EQ(engine->maxConcurrentRuns(), 1u);
    EXPECT_EQ(reports, (Reports{true, true, true}));
}

TEST_F(MusicControllerTest, AnEmptyPermissionCallbackIsNotCalled) {
    controller->onAutomationPermission = nullptr;
    controller->commands.yield(MusicCommand::next);
    controller->commands.yield(MusicCommand::previous);
    settle();
    EXPECT_EQ(engine->runs(), (Strings{nextTrack, backTrack}));
}

// --- Current track ---------------------------------------------------------

TEST_F(MusicControllerTest, CurrentTrackWhileMusicIsNotRunningAnswersNothingWithoutAScriptOrAReport) {
    apps->setRunning(MusicScripting::musicBundleIdentifier, false);
    int answers = 0;
    std::optional<Track> answered = Track{};
    controller->currentTrack([&](std::optional<Track> track) {
        ++answers;
        answered = std::move(track);
    });
    EXPECT_EQ(queue->pendingCount(), 0u) << "nothing goes to the scripting queue";
    settle();
    EXPECT_EQ(answers, 1);
    EXPECT_FALSE(answered.has_value());
    EXPECT_TRUE(engine->events().empty());
    EXPECT_TRUE(reports.empty());
    EXPECT_EQ(apps->questions(), (Strings{"com.apple.Music"}));
}

TEST_F(MusicControllerTest, CurrentTrackWhileMusicIsNotRunningAnswersInALaterMainThreadTaskNotInsideTheCaller) {
    apps->setRunning(MusicScripting::musicBundleIdentifier, false);
    int answers = 0;
    controller->currentTrack([&](std::optional<Track>) { ++answers; });
    EXPECT_EQ(answers, 0);
    EXPECT_EQ(mainThread.pendingTaskCount(), 1u);
    mainThread.runUntilIdle();
    EXPECT_EQ(answers, 1);
}

TEST_F(MusicControllerTest, CurrentTrackWhileMusicIsNotRunningIsReleasedUncalledWhenTheControllerGoesFirst) {
    apps->setRunning(MusicScripting::musicBundleIdentifier, false);
    int answers = 0;
    auto token = std::make_shared<int>(0);
    const std::weak_ptr<int> weakToken = token;
    controller->currentTrack([&answers, token = std::move(token)](std::optional<Track>) { ++answers; });
    controller.reset();
    settle();
    EXPECT_EQ(answers, 0);
    EXPECT_TRUE(weakToken.expired());
}

TEST_F(MusicControllerTest, OnlyMusicCountsAsMusicRunning) {
    apps->setRunning(MusicScripting::musicBundleIdentifier, false);
    apps->setRunning("com.apple.iTunes", true);
    bool answered = false;
    controller->currentTrack([&](std::optional<Track>) { answered = true; });
    settle();
    EXPECT_TRUE(answered);
    EXPECT_TRUE(engine->events().empty());
}

TEST_F(MusicControllerTest, CurrentTrackFetchesTheTrackWithArtworkAndAnswersOnTheMainThread) {
    engine->answer(trackQuery, FakeScriptEngine::text("So What\tMiles Davis\tplaying"));
    engine->answer(artworkQuery, FakeScriptEngine::bytes(FakeThumbnailer::imageBytes("cover")));
    std::optional<std::optional<Track>> answered;
    bool answeredOnMainThread = false;
    controller->currentTrack([&](std::optional<Track> track) {
        answered = std::move(track);
        answeredOnMainThread = mainThread.isCurrent() && !queue->isRunningWork();
    });
    EXPECT_FALSE(answered.has_value());
    queue->runUntilIdle();
    EXPECT_FALSE(answered.has_value()) << "the answer waits for the main thread";
    mainThread.runUntilIdle();

    ASSERT_TRUE(answered.has_value());
    EXPECT_TRUE(answeredOnMainThread);
    EXPECT_EQ(*answered, (Track{{"So What", "Miles Davis", true}, FakeThumbnailer::image("cover")}));
    EXPECT_EQ(reports, (Reports{true}));
    EXPECT_EQ(engine->runs(), (Strings{trackQuery, artworkQuery}));
}

TEST_F(MusicControllerTest, ThePermissionIsReportedBeforeTheTrackIsAnswered) {
    engine->answer(trackQuery, FakeScriptEngine::text("So What\tMiles Davis\tplaying"));
    Strings order;
    controller->onAutomationPermission = [&](bool) { order.push_back("report"); };
    controller->currentTrack([&](std::optional<Track>) { order.push_back("answer"); });
    settle();
    EXPECT_EQ(order, (Strings{"report", "answer"}));
}

TEST_F(MusicControllerTest, CurrentTrackWhileMusicIsStoppedAnswersNothingAndReportsTrue) {
    engine->answer(trackQuery, FakeScriptEngine::text(""));
    std::optional<std::optional<Track>> answered;
    controller->currentTrack([&](std::optional<Track> track) { answered = std::move(track); });
    settle();
    ASSERT_TRUE(answered.has_value());
    EXPECT_FALSE(answered->has_value());
    EXPECT_EQ(reports, (Reports{true}));
}

TEST_F(MusicControllerTest, ADeniedTrackQueryReportsFalseAndAnswersNothing) {
    engine->answer(trackQuery, FakeScriptEngine::error(-1743));
    std::optional<std::optional<Track>> answered;
    controller->currentTrack([&](std::optional<Track> track) { answered = std::move(track); });
    settle();
    ASSERT_TRUE(answered.has_value());
    EXPECT_FALSE(answered->has_value());
    EXPECT_EQ(reports, (Reports{false}));
}

TEST_F(MusicControllerTest, AFailedTrackQueryReportsNothingAndAnswersNothing) {
    engine->answer(trackQuery, FakeScriptEngine::error(-1728));
    std::optional<std::optional<Track>> answered;
    controller->currentTrack([&](std::optional<Track> track) { answered = std::move(track); });
    settle();
    ASSERT_TRUE(answered.has_value());
    EXPECT_FALSE(answered->has_value());
    EXPECT_TRUE(reports.empty());
}

TEST_F(MusicControllerTest, ADeniedArtworkQueryStillReportsTheTrackQuerysTrue) {
    engine->answer(trackQuery, FakeScriptEngine::text("So What\tMiles Davis\tpaused"));
    engine->answer(artworkQuery, FakeScriptEngine::error(-1743));
    std::optional<std::optional<Track>> answered;
    controller->currentTrack([&](std::optional<Track> track) { answered = std::move(track); });
    settle();
    ASSERT_TRUE(answered.has_value());
    EXPECT_EQ(*answered, (Track{{"So What", "Miles Davis", false}, std::nullopt}));
    EXPECT_EQ(reports, (Reports{true}));
}

TEST_F(MusicControllerTest, CommandsAndTrackQueriesShareTheQueueInSubmissionOrder) {
    engine->answer(trackQuery, FakeScriptEngine::text("So What\tMiles Davis\tplaying"));
    controller->commands.yield(MusicCommand::next);      // starts at once
    controller->currentTrack([](std::optional<Track>) {});  // queued behind it
    controller->commands.yield(MusicCommand::previous);  // waits for next's completion
    settle();
    EXPECT_EQ(engine->runs(), (Strings{nextTrack, trackQuery, artworkQuery, backTrack}));
    EXPECT_EQ(engine->maxConcurrentRuns(), 1u);
}

// --- Destruction -----------------------------------------------------------

TEST_F(MusicControllerTest, DestroyingTheControllerWhileACommandRunsSkipsTheReportAndQueuedCommandsStillRun) {
    controller->commands.yield(MusicCommand::next);
    controller->commands.yield(MusicCommand::previous);
    controller->commands.yield(MusicCommand::playPause);
    queue->runNext();  // next runs
    controller.reset();
    settle();
    EXPECT_EQ(engine->runs(), (Strings{nextTrack, backTrack, playpause}));
    EXPECT_TRUE(reports.empty());
}

TEST_F(MusicControllerTest, DestroyingTheControllerBeforeItsRunStartsStillRunsTheCommandWithoutAReport) {
    controller->commands.yield(MusicCommand::next);
    controller.reset();
    settle();
    EXPECT_EQ(engine->runs(), (Strings{nextTrack}));
    EXPECT_TRUE(reports.empty());
}

TEST_F(MusicControllerTest, TheCommandLoopLetsGoOfTheScriptingOnceTheStreamIsFinishedAndDrained) {
    controller->commands.yield(MusicCommand::next);
    controller->commands.yield(MusicCommand::previous);
    controller.reset();
    EXPECT_GT(scripting.use_count(), 1) << "the loop still has commands to run";
    settle();
    EXPECT_EQ(scripting.use_count(), 1) << "the loop and its work are gone";
}

TEST_F(MusicControllerTest, ACommandYieldedThroughACopyOfTheStreamAfterDestructionIsIgnored) {
    MusicController::CommandStream stream = controller->commands;
    stream.yield(MusicCommand::next);
    controller.reset();
    stream.yield(MusicCommand::previous);
    settle();
    EXPECT_EQ(engine->runs(), (Strings{nextTrack}));
}

TEST_F(MusicControllerTest, DestroyingTheControllerDuringATrackFetchSkipsTheReportAndTheAnswer) {
    engine->answer(trackQuery, FakeScriptEngine::text("So What\tMiles Davis\tplaying"));
    bool answered = false;
    controller->currentTrack([&](std::optional<Track>) { answered = true; });
    queue->runUntilIdle();  // the queries ran; the answer is on its way
    controller.reset();
    settle();
    EXPECT_FALSE(answered);
    EXPECT_TRUE(reports.empty());
    EXPECT_EQ(engine->runs(), (Strings{trackQuery, artworkQuery}));
}

TEST_F(MusicControllerTest, AnUnansweredCompletionIsReleased) {
    auto token = std::make_shared<int>(0);
    const std::weak_ptr<int> watch = token;
    controller->currentTrack([token = std::move(token)](std::optional<Track>) {});
    controller.reset();
    settle();
    EXPECT_TRUE(watch.expired());
}

TEST_F(MusicControllerTest, DestroyingTheControllerFromThePermissionCallbackStopsFurtherReports) {
    controller->onAutomationPermission = [&](bool granted) {
        reports.push_back(granted);
        controller.reset();
    };
    controller->commands.yield(MusicCommand::next);
    controller->commands.yield(MusicCommand::previous);
    settle();
    EXPECT_EQ(engine->runs(), (Strings{nextTrack, backTrack}));
    EXPECT_EQ(reports, (Reports{true}));
}

TEST_F(MusicControllerTest, DestroyingTheControllerFromThePermissionCallbackOfAFetchDropsTheAnswer) {
    engine->answer(trackQuery, FakeScriptEngine::text("So What\tMiles Davis\tplaying"));
    controller->onAutomationPermission = [&](bool granted) {
        reports.push_back(granted);
        controller.reset();
    };
    bool answered = false;
    controller->currentTrack([&](std::optional<Track>) { answered = true; });
    settle();
    EXPECT_EQ(reports, (Reports{true}));
    EXPECT_FALSE(answered);
}

}  // namespace
}  // namespace tolvane
