// The controller with real threads: the main loop on a thread of its own, the
// scripts on a real serial worker. Runs under ThreadSanitizer in CI, so these
// tests also stand for "no data race" on every path they take.
#include "Tolvane/MusicController.h"

#include <gtest/gtest.h>

#include "TestSupport/MusicSources.h"

#include <cstddef>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "TestSupport/FakeRunningApplications.h"
#include "TestSupport/FakeScriptEngine.h"
#include "TestSupport/FakeThumbnailer.h"
#include "TestSupport/RecordingLogger.h"
#include "TestSupport/ThreadMainLoop.h"
#include "TestSupport/ThreadSerialQueue.h"
#include "Waiting.h"

namespace tolvane {
namespace {

// The exact sources Music receives: playpause, nextTrack, backTrack, play,
// trackQuery, artworkQuery, and music(body) for any other body.
using namespace testsupport::sources;
const auto source = testsupport::sources::music;

using concurrency::patience;
using concurrency::Tally;
using testsupport::FakeScriptEngine;
using testsupport::FakeThumbnailer;
using Strings = std::vector<std::string>;



class MusicControllerConcurrencyTest : public testing::Test {
protected:
    void SetUp() override {
        apps->setRunning(MusicScripting::musicBundleIdentifier, true);
        ASSERT_TRUE(onMainLoop([this] {
            controller = std::make_unique<MusicController>(mainLoop, apps, scripting);
            controller->onAutomationPermission = [this](bool granted) {
                reports.push_back(granted);
                if (!mainLoop.isCurrent()) ++callbacksOffTheMainLoop;
                reportTally.add();
            };
        }));
    }

    void TearDown() override {
        // Whatever happened, let every run go so that every thread can end.
        engine->releaseRuns();
        ASSERT_TRUE(onMainLoop([this] { controller.reset(); }));
        EXPECT_TRUE(settle()) << "the queue and the main loop did not come to rest";
    }

    [[nodiscard]] bool onMainLoop(std::function<void()> work) { return mainLoop.runAndWait(std::move(work), patience); }

    // Waits until the scripting queue and the main loop have nothing left to
    // hand each other: the queue is idle, the completions it posted have run
    // on the main loop, and they started no new run.
    [[nodiscard]] bool settle() {
        for (int round = 0; round < 100'000; ++round) {
            if (!queue->waitUntilIdle(patience)) return false;
            if (!onMainLoop([] {})) return false;
            if (queue->waitUntilIdle(std::chrono::milliseconds(0))) return true;
        }
        return false;
    }

    // Reads main-loop-only state from the test thread.
    template <class Value>
    Value readOnMainLoop(const Value& value) {
        Value copy{};
        EXPECT_TRUE(onMainLoop([&] { copy = value; }));
        return copy;
    }

    testsupport::ThreadMainLoop mainLoop;  // first in, last out: everything else posts to it
    std::shared_ptr<testsupport::ThreadSerialQueue> queue = std::make_shared<testsupport::ThreadSerialQueue>();
    std::shared_ptr<FakeScriptEngine> engine = std::make_shared<FakeScriptEngine>();
    std::shared_ptr<FakeThumbnailer> thumbnailer = std::make_shared<FakeThumbnailer>();
    std::shared_ptr<testsupport::RecordingLogger> logger = std::make_shared<testsupport::RecordingLogger>();
    std::shared_ptr<testsupport::FakeRunningApplications> apps =
        std::make_shared<testsupport::FakeRunningApplications>();
    std::shared_ptr<MusicScripting> scripting = std::make_shared<MusicScripting>(queue, engine, thumbnailer, logger);

    // Made, used and destroyed on the main loop only.
    std::unique_ptr<MusicController> controller;
    std::vector<bool> reports;
    std::size_t callbacksOffTheMainLoop = 0;

    Tally reportTally;
};

TEST_F(MusicControllerConcurrencyTest, ManyCommandsRunOneAtATimeInOrderOnTheWorkerAndReportOnTheMainLoop) {
    constexpr std::size_t batches = 20;
    constexpr std::size_t perBatch = 25;
    const MusicCommand cycle[] = {MusicCommand::next, MusicCommand::previous, MusicCommand::playPause};
    Strings expected;
    for (std::size_t batch = 0; batch < batches; ++batch) {
        Strings batchSources;
        ASSERT_TRUE(onMainLoop([&] {
            for (std::size_t press = 0; press < perBatch; ++press) {
                const MusicCommand command = cycle[(batch * perBatch + press) % 3];
                controller->commands.yield(command);
                batchSources.push_back(source(MusicScripting::body(command)));
            }
        }));
        expected.insert(expected.end(), batchSources.begin(), batchSources.end());
    }
    const std::size_t total = batches * perBatch;

    ASSERT_TRUE(engine->waitForRunsFinished(total, patience));
    ASSERT_TRUE(reportTally.waitFor(total));
    ASSERT_TRUE(settle());

    EXPECT_EQ(engine->runs(), expected);
    EXPECT_EQ(engine->maxConcurrentRuns(), 1u);
    for (const std::thread::id thread : engine->runThreads()) EXPECT_EQ(thread, queue->threadID());
    EXPECT_EQ(readOnMainLoop(reports), std::vector<bool>(total, true));
    EXPECT_EQ(readOnMainLoop(callbacksOffTheMainLoop), 0u);
}

TEST_F(MusicControllerConcurrencyTest, PermissionReportsKeepTheOrderOfTheRuns) {
    // Denied, allowed, failed, denied, allowed, ... for the same script.
    std::vector<bool> expectedReports;
    constexpr std::size_t presses = 90;
    for (std::size_t press = 0; press < presses; ++press) {
        switch (press % 3) {
        case 0:
            engine->answerOnce(nextTrack, FakeScriptEngine::error(-1743));
            expectedReports.push_back(false);
            break;
        case 1:
            engine->answerOnce(nextTrack, FakeScriptEngine::nothing());
            expectedReports.push_back(true);
            break;
        default: engine->answerOnce(nextTrack, FakeScriptEngine::error(-600)); break;
        }
    }
    ASSERT_TRUE(onMainLoop([&] {
        for (std::size_t press = 0; press < presses; ++press) controller->commands.yield(MusicCommand::next);
    }));

    ASSERT_TRUE(engine->waitForRunsFinished(presses, patience));
    ASSERT_TRUE(settle());
    EXPECT_EQ(readOnMainLoop(reports), expectedReports);
    EXPECT_EQ(readOnMainLoop(callbacksOffTheMainLoop), 0u);
    EXPECT_EQ(logger->lines().size(), presses / 3 * 2);
}

TEST_F(MusicControllerConcurrencyTest, TrackFetchesAnswerOnTheMainLoopAndShareTheQueueWithCommandsInOrder) {
    engine->answer(trackQuery, FakeScriptEngine::text("So What\tMiles Davis\tplaying"));
    engine->answer(artworkQuery, FakeScriptEngine::bytes(FakeThumbnailer::imageBytes("cover")));
    constexpr std::size_t rounds = 40;
    // Shared with the completions, so that none can outlive what it writes.
    struct Answers {
        std::vector<std::optional<Track>> tracks;  // main loop only
        std::size_t offTheMainLoop = 0;            // main loop only
        Tally tally;
    };
    const auto answers = std::make_shared<Answers>();

    // One main-loop task: the first command starts at once, each fetch is
    // queued behind what is queued already, and the other commands wait for
    // the loop, which cannot move before this task ends.
    ASSERT_TRUE(onMainLoop([&] {
        for (std::size_t round = 0; round < rounds; ++round) {
            controller->commands.yield(MusicCommand::next);
            controller->currentTrack([this, answers](std::optional<Track> track) {
                if (!mainLoop.isCurrent()) ++answers->offTheMainLoop;
                answers->tracks.push_back(std::move(track));
                answers->tally.add();
            });
        }
    }));

    ASSERT_TRUE(answers->tally.waitFor(rounds));
    ASSERT_TRUE(engine->waitForRunsFinished(rounds * 3, patience));
    ASSERT_TRUE(settle());

    Strings expected{nextTrack};
    for (std::size_t round = 0; round < rounds; ++round) {
        expected.push_back(trackQuery);
        expected.push_back(artworkQuery);
    }
    for (std::size_t round = 1; round < rounds; ++round) expected.push_back(nextTrack);
    EXPECT_EQ(engine->runs(), expected);
    EXPECT_EQ(engine->maxConcurrentRuns(), 1u);

    const Track playing{{"So What", "Miles Davis", true}, FakeThumbnailer::image("cover")};
    EXPECT_EQ(readOnMainLoop(answers->tracks), std::vector<std::optional<Track>>(rounds, playing));
    EXPECT_EQ(readOnMainLoop(answers->offTheMainLoop), 0u);
    EXPECT_EQ(readOnMainLoop(reports), std::vector<bool>(rounds * 2, true));
    EXPECT_EQ(readOnMainLoop(callbacksOffTheMainLoop), 0u);
}

TEST_F(MusicControllerConcurrencyTest, DestroyingTheControllerWhileAScriptRunsMakesNoReportAndLeavesNothingBehind) {
    engine->answer(trackQuery, FakeScriptEngine::text("So What\tMiles Davis\tplaying"));
    engine->blockRuns();
    bool answered = false;  // main loop only
    ASSERT_TRUE(onMainLoop([&] {
        controller->commands.yield(MusicCommand::next);
        controller->currentTrack([&](std::optional<Track>) { answered = true; });
        controller->commands.yield(MusicCommand::previous);
        controller->commands.yield(MusicCommand::playPause);
    }));
    ASSERT_TRUE(engine->waitForRunsStarted(1, patience));  // "next track" hangs in Music

    ASSERT_TRUE(onMainLoop([this] { controller.reset(); }));
    engine->releaseRuns();

    // The commands queued before the controller went still run.
    ASSERT_TRUE(engine->waitForRunsFinished(5, patience));
    ASSERT_TRUE(settle());
    EXPECT_EQ(engine->runs(), (Strings{nextTrack, trackQuery, artworkQuery, backTrack, playpause}));
    EXPECT_EQ(readOnMainLoop(reports), std::vector<bool>{});
    EXPECT_FALSE(readOnMainLoop(answered));
    EXPECT_EQ(reportTally.count(), 0u);
    EXPECT_EQ(scripting.use_count(), 1) << "the command loop and its work are gone";
}

TEST_F(MusicControllerConcurrencyTest, AScriptThatHangsNeverBlocksYieldAndKeysKeepQueueing) {
    engine->blockRuns();
    ASSERT_TRUE(onMainLoop([this] { controller->commands.yield(MusicCommand::next); }));
    ASSERT_TRUE(engine->waitForRunsStarted(1, patience));

    // Music does not answer; every key press still returns at once, and the
    // main loop stays free for everything else.
    constexpr std::size_t batches = 20;
    constexpr std::size_t perBatch = 100;
    for (std::size_t batch = 0; batch < batches; ++batch) {
        ASSERT_TRUE(onMainLoop([this] {
            for (std::size_t press = 0; press < perBatch; ++press) controller->commands.yield(MusicCommand::previous);
        })) << "yield blocked while a script hung";
    }
    EXPECT_EQ(engine->runsStarted(), 1u);
    EXPECT_EQ(engine->runsFinished(), 0u);
    EXPECT_EQ(readOnMainLoop(reports), std::vector<bool>{});

    // Music answers at last: everything queued meanwhile runs, in order.
    engine->releaseRuns();
    const std::size_t total = 1 + batches * perBatch;
    ASSERT_TRUE(engine->waitForRunsFinished(total, patience));
    ASSERT_TRUE(reportTally.waitFor(total));
    ASSERT_TRUE(settle());
    Strings expected{nextTrack};
    expected.insert(expected.end(), batches * perBatch, backTrack);
    EXPECT_EQ(engine->runs(), expected);
    EXPECT_EQ(engine->maxConcurrentRuns(), 1u);
    EXPECT_EQ(readOnMainLoop(callbacksOffTheMainLoop), 0u);
}

TEST_F(MusicControllerConcurrencyTest, DestroyingTheControllerWhileAScriptHangsDoesNotWaitForMusic) {
    engine->blockRuns();
    ASSERT_TRUE(onMainLoop([this] {
        controller->commands.yield(MusicCommand::next);
        controller->commands.yield(MusicCommand::next);
    }));
    ASSERT_TRUE(engine->waitForRunsStarted(1, patience));
    ASSERT_TRUE(onMainLoop([this] { controller.reset(); })) << "destroying the controller waited for the run";
    engine->releaseRuns();
    ASSERT_TRUE(engine->waitForRunsFinished(2, patience));
    ASSERT_TRUE(settle());
    EXPECT_EQ(engine->runs(), (Strings{nextTrack, nextTrack}));
    EXPECT_EQ(reportTally.count(), 0u);
}

}  // namespace
}  // namespace tolvane
