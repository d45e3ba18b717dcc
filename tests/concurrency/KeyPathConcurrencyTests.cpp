// The whole key path with real threads: the app state and its event tap on a
// real main loop, Music's scripts on a real serial worker. While Music hangs,
// every key is still decided at once and its command queued; when Music
// answers, the queued commands run in order.
#include <gtest/gtest.h>

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "OrvikKitCore/Preferences.h"
#include "TestSupport/FakeEventTapSystem.h"
#include "TestSupport/FakeNotificationCenter.h"
#include "TestSupport/FakeScriptEngine.h"
#include "TestSupport/FakeSystemServices.h"
#include "TestSupport/FakeThumbnailer.h"
#include "TestSupport/QuietRunningApplications.h"
#include "TestSupport/RecordingLogger.h"
#include "TestSupport/ThreadMainLoop.h"
#include "TestSupport/ThreadSerialQueue.h"
#include "Tolvane/AppState.h"
#include "Waiting.h"

namespace tolvane {
namespace {

using concurrency::patience;
using testsupport::FakeScriptEngine;
using testsupport::mediaKeyData1;

class KeyPathConcurrencyTest : public testing::Test {
protected:
    void SetUp() override {
        running->musicRuns = true;
        ASSERT_TRUE(mainLoop->runAndWait(
            [this] {
                state = AppState::create(
                    std::make_shared<orvik::InMemoryPreferenceStore>(), false,
                    AppServices{
                        .mainThread = mainLoop,
                        .runningApplications = running,
                        .distributedNotifications = std::make_shared<testsupport::FakeNotificationCenter>(),
                        .workspaceNotifications = std::make_shared<testsupport::FakeNotificationCenter>(),
                        .accessibility = std::make_shared<testsupport::FakeAccessibilityTrust>(true),
                        .eventTaps = taps,
                        .scripting = std::make_shared<MusicScripting>(queue, engine,
                                                                      std::make_shared<testsupport::FakeThumbnailer>(),
                                                                      std::make_shared<testsupport::RecordingLogger>()),
                        .appInfo = std::make_shared<testsupport::FakeAppInfoSource>("1.0"),
                        .urlOpener = std::make_shared<testsupport::FakeURLOpener>(),
                        .standardDefaults = std::make_shared<orvik::InMemoryPreferenceStore>(),
                        .now = [] { return orvik::dateFromSecondsSince1970(1793491200.0); },
                    });
            },
            patience));
    }

    void TearDown() override {
        engine->releaseRuns();
        EXPECT_TRUE(queue->waitUntilIdle(patience));
        EXPECT_TRUE(mainLoop->runAndWait([this] { state.reset(); }, patience));
        EXPECT_TRUE(queue->waitUntilIdle(patience));
        EXPECT_TRUE(mainLoop->runAndWait([] {}, patience));
    }

    // First in, last out: everything else posts to it.
    std::shared_ptr<testsupport::ThreadMainLoop> mainLoop = std::make_shared<testsupport::ThreadMainLoop>();
    std::shared_ptr<testsupport::ThreadSerialQueue> queue = std::make_shared<testsupport::ThreadSerialQueue>();
    std::shared_ptr<FakeScriptEngine> engine = std::make_shared<FakeScriptEngine>();
    std::shared_ptr<testsupport::QuietRunningApplications> running =
        std::make_shared<testsupport::QuietRunningApplications>();
    // Touched on the main loop only, as the window server's callback would.
    std::shared_ptr<testsupport::FakeEventTapSystem> taps = std::make_shared<testsupport::FakeEventTapSystem>();
    std::shared_ptr<AppState> state;
};

TEST_F(KeyPathConcurrencyTest, KeysAreDecidedAndQueuedWhileMusicHangsThenRunInOrder) {
    // The launch's track query has come and gone.
    ASSERT_TRUE(queue->waitUntilIdle(patience));
    ASSERT_TRUE(mainLoop->runAndWait([] {}, patience));
    const std::size_t runsBefore = engine->runsStarted();
    engine->blockRuns();

    // The first press starts a run that hangs.
    bool firstSwallowed = false;
    ASSERT_TRUE(mainLoop->runAndWait(
        [&] {
            firstSwallowed = taps->deliverMediaKey(mediaKeyData1(17, true)) &&
                             taps->deliverMediaKey(mediaKeyData1(17, false));
        },
        patience));
    ASSERT_TRUE(firstSwallowed);
    ASSERT_TRUE(engine->waitForRunsStarted(runsBefore + 1, patience));

    // Every later press is still decided at once on the main loop.
    constexpr int batches = 20;
    constexpr int perBatch = 50;
    int swallowed = 0;
    for (int batch = 0; batch < batches; ++batch) {
        ASSERT_TRUE(mainLoop->runAndWait(
            [&] {
                for (int press = 0; press < perBatch; ++press) {
                    const std::int64_t key = press % 2 == 0 ? 18 : 16;
                    swallowed += taps->deliverMediaKey(mediaKeyData1(key, true)) ? 1 : 0;
                    swallowed += taps->deliverMediaKey(mediaKeyData1(key, false)) ? 1 : 0;
                }
            },
            patience))
            << "the key path blocked while a script hung";
    }
    std::int64_t forwarded = 0;
    ASSERT_TRUE(mainLoop->runAndWait([&] { forwarded = state->keysForwarded(); }, patience));
    EXPECT_EQ(swallowed, 2 * batches * perBatch);
    EXPECT_EQ(forwarded, 1 + batches * perBatch);
    EXPECT_EQ(engine->runsStarted(), runsBefore + 1);

    // Music answers: every queued command runs, one at a time, in order.
    engine->releaseRuns();
    const std::size_t total = 1 + batches * perBatch;
    ASSERT_TRUE(engine->waitForRunsFinished(runsBefore + total, patience));
    std::vector<std::string> commands;
    for (const std::string& source : engine->runs()) {
        if (source != MusicScripting::fullSource(MusicScripting::trackQuery) &&
            source != MusicScripting::fullSource(MusicScripting::artworkQuery)) {
            commands.push_back(source);
        }
    }
    ASSERT_EQ(commands.size(), total);
    EXPECT_EQ(commands[0], MusicScripting::fullSource("next track"));
    for (std::size_t index = 1; index < total; ++index) {
        EXPECT_EQ(commands[index], MusicScripting::fullSource(index % 2 == 1 ? "back track" : "playpause"))
            << "command " << index;
    }
    EXPECT_EQ(engine->maxConcurrentRuns(), 1u);
}

}  // namespace
}  // namespace tolvane
