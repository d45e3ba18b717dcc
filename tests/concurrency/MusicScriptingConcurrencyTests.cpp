// The scripting component called from several threads at once, on a real
// serial worker: its public operations may be called from anywhere, and the
// cache and the engine are touched on the worker only.
#include "Tolvane/MusicScripting.h"

#include <gtest/gtest.h>

#include <array>
#include <cstddef>
#include <memory>
#include <string>
#include <thread>
#include <vector>

#include "TestSupport/FakeScriptEngine.h"
#include "TestSupport/FakeThumbnailer.h"
#include "TestSupport/RecordingLogger.h"
#include "TestSupport/ThreadSerialQueue.h"
#include "Waiting.h"

namespace tolvane {
namespace {

using concurrency::patience;
using concurrency::Tally;
using testsupport::FakeScriptEngine;

TEST(MusicScriptingConcurrency, ExecutesFromManyThreadsRunOneAtATimeOnTheWorkerAndCompileEachSourceOnce) {
    const auto queue = std::make_shared<testsupport::ThreadSerialQueue>();
    const auto engine = std::make_shared<FakeScriptEngine>();
    const auto logger = std::make_shared<testsupport::RecordingLogger>();
    MusicScripting scripting(queue, engine, std::make_shared<testsupport::FakeThumbnailer>(), logger);
    engine->answer(MusicScripting::fullSource("back track"), FakeScriptEngine::error(-1743));

    const std::array<std::string, 4> bodies{"playpause", "next track", "back track", "play"};
    constexpr std::size_t perThread = 100;
    Tally completions;
    Tally completionsOffTheWorker;
    Tally wrongOutcomes;

    std::vector<std::thread> callers;
    for (std::size_t caller = 0; caller < 4; ++caller) {
        callers.emplace_back([&, caller] {
            for (std::size_t call = 0; call < perThread; ++call) {
                const std::string& body = bodies[(caller + call) % bodies.size()];
                const MusicScripting::Outcome expected =
                    body == "back track" ? MusicScripting::Outcome::denied : MusicScripting::Outcome::succeeded;
                scripting.execute(body, [&, expected](MusicScripting::Execution execution) {
                    if (!queue->isCurrent()) completionsOffTheWorker.add();
                    if (execution.outcome != expected) wrongOutcomes.add();
                    completions.add();
                });
            }
        });
    }
    for (std::thread& caller : callers) caller.join();

    const std::size_t total = 4 * perThread;
    ASSERT_TRUE(completions.waitFor(total));
    ASSERT_TRUE(queue->waitUntilIdle(patience));

    EXPECT_EQ(engine->created().size(), bodies.size());
    EXPECT_EQ(engine->compiled().size(), bodies.size());
    EXPECT_EQ(engine->runs().size(), total);
    EXPECT_EQ(engine->maxConcurrentRuns(), 1u);
    for (const std::thread::id thread : engine->runThreads()) EXPECT_EQ(thread, queue->threadID());
    EXPECT_EQ(completionsOffTheWorker.count(), 0u);
    EXPECT_EQ(wrongOutcomes.count(), 0u);
    EXPECT_EQ(logger->lines().size(), total / 4);

    // The cache is read on the queue, like everything else it holds.
    std::size_t compiled = 0;
    Tally read;
    scripting.compiledScriptCount([&](std::size_t count) {
        compiled = count;
        read.add();
    });
    ASSERT_TRUE(read.waitFor(1));
    EXPECT_EQ(compiled, bodies.size());
}

}  // namespace
}  // namespace tolvane
