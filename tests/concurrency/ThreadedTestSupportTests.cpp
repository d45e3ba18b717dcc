// The real main loop and serial queue the thread tests stand on: they must
// keep their own promises (order, thread, timers) for those tests to mean
// anything.
#include <gtest/gtest.h>

#include <chrono>
#include <cstddef>
#include <memory>
#include <thread>
#include <vector>

#include "TestSupport/ThreadMainLoop.h"
#include "TestSupport/ThreadSerialQueue.h"
#include "Waiting.h"

namespace tolvane {
namespace {

using concurrency::patience;
using concurrency::Tally;

TEST(ThreadMainLoop, PostedTasksRunInOrderOnTheLoopThreadOnly) {
    testsupport::ThreadMainLoop loop;
    EXPECT_FALSE(loop.isCurrent());
    EXPECT_NE(loop.threadID(), std::this_thread::get_id());

    std::vector<int> order;  // loop thread only
    std::size_t offTheLoop = 0;
    Tally ran;
    for (int task = 0; task < 100; ++task) {
        loop.post([&, task] {
            if (!loop.isCurrent()) ++offTheLoop;
            order.push_back(task);
            ran.add();
        });
    }
    ASSERT_TRUE(ran.waitFor(100));

    std::vector<int> seen;
    std::size_t seenOffTheLoop = 1;
    ASSERT_TRUE(loop.runAndWait(
        [&] {
            seen = order;
            seenOffTheLoop = offTheLoop;
        },
        patience));
    std::vector<int> expected(100);
    for (int task = 0; task < 100; ++task) expected[static_cast<std::size_t>(task)] = task;
    EXPECT_EQ(seen, expected);
    EXPECT_EQ(seenOffTheLoop, 0u);
}

TEST(ThreadMainLoop, TasksPostedFromOtherThreadsAllRun) {
    testsupport::ThreadMainLoop loop;
    Tally ran;
    std::vector<std::thread> posters;
    for (int poster = 0; poster < 4; ++poster) {
        posters.emplace_back([&] {
            for (int task = 0; task < 50; ++task) loop.post([&] { ran.add(); });
        });
    }
    for (std::thread& poster : posters) poster.join();
    EXPECT_TRUE(ran.waitFor(200));
}

TEST(ThreadMainLoop, ADelayedTaskRunsOnTheLoopNoSoonerThanItsDelay) {
    testsupport::ThreadMainLoop loop;
    const auto delay = std::chrono::milliseconds(20);
    std::chrono::steady_clock::time_point askedAt;
    std::chrono::steady_clock::time_point ranAt;  // written on the loop, read after the tally
    bool ranOnTheLoop = false;
    Tally ran;
    ASSERT_TRUE(loop.runAndWait(
        [&] {
            askedAt = std::chrono::steady_clock::now();
            loop.postAfter(delay, orvik::Duration(0.0), [&] {
                ranAt = std::chrono::steady_clock::now();
                ranOnTheLoop = loop.isCurrent();
                ran.add();
            });
        },
        patience));
    ASSERT_TRUE(ran.waitFor(1));
    EXPECT_GE(ranAt - askedAt, delay);
    EXPECT_TRUE(ranOnTheLoop);
}

TEST(ThreadMainLoop, ACancelledDelayedTaskNeverRuns) {
    testsupport::ThreadMainLoop loop;
    bool cancelledRan = false;  // loop thread only
    Tally later;
    ASSERT_TRUE(loop.runAndWait(
        [&] {
            const auto cancelled = loop.postAfter(std::chrono::milliseconds(5), orvik::Duration(0.0),
                                                  [&] { cancelledRan = true; });
            // Due after the cancelled one would have been.
            loop.postAfter(std::chrono::milliseconds(30), orvik::Duration(0.0), [&] { later.add(); });
            loop.cancel(cancelled);
            loop.cancel(cancelled);  // a second time is ignored
        },
        patience));
    ASSERT_TRUE(later.waitFor(1));
    bool seen = true;
    ASSERT_TRUE(loop.runAndWait([&] { seen = cancelledRan; }, patience));
    EXPECT_FALSE(seen);
}

TEST(ThreadMainLoop, DelayedTasksRunInDueOrderAndPostedTasksAreNotHeldUpByThem) {
    testsupport::ThreadMainLoop loop;
    std::vector<int> order;  // loop thread only
    Tally ran;
    ASSERT_TRUE(loop.runAndWait(
        [&] {
            loop.postAfter(std::chrono::milliseconds(40), orvik::Duration(0.0), [&] {
                order.push_back(2);
                ran.add();
            });
            loop.postAfter(std::chrono::milliseconds(10), orvik::Duration(0.0), [&] {
                order.push_back(1);
                ran.add();
            });
            loop.post([&] {
                order.push_back(0);
                ran.add();
            });
        },
        patience));
    ASSERT_TRUE(ran.waitFor(3));
    std::vector<int> seen;
    ASSERT_TRUE(loop.runAndWait([&] { seen = order; }, patience));
    EXPECT_EQ(seen, (std::vector<int>{0, 1, 2}));
}

TEST(ThreadMainLoop, RunAndWaitAnswersFalseWhenTheLoopIsBusyPastTheLimit) {
    testsupport::ThreadMainLoop loop;
    // The loop is held by a task that waits for the test to let it go.
    auto gate = std::make_shared<Tally>();
    Tally holding;
    loop.post([gate, &holding] {
        holding.add();
        EXPECT_TRUE(gate->waitFor(1));
    });
    ASSERT_TRUE(holding.waitFor(1));
    auto ran = std::make_shared<Tally>();
    EXPECT_FALSE(loop.runAndWait([ran] { ran->add(); }, std::chrono::milliseconds(10)));
    gate->add();
    EXPECT_TRUE(ran->waitFor(1)) << "the task still runs once the loop is free";
}

TEST(ThreadSerialQueue, WorkRunsOneItemAtATimeInSubmissionOrderOnItsWorker) {
    testsupport::ThreadSerialQueue queue;
    EXPECT_FALSE(queue.isCurrent());
    std::vector<int> order;  // worker only until the queue is idle
    std::size_t offTheWorker = 0;
    for (int item = 0; item < 200; ++item) {
        queue.async([&, item] {
            if (!queue.isCurrent()) ++offTheWorker;
            order.push_back(item);
        });
    }
    ASSERT_TRUE(queue.waitUntilIdle(patience));
    std::vector<int> expected(200);
    for (int item = 0; item < 200; ++item) expected[static_cast<std::size_t>(item)] = item;
    EXPECT_EQ(order, expected);
    EXPECT_EQ(offTheWorker, 0u);
}

TEST(ThreadSerialQueue, DestroyingItRunsWhatIsStillQueued) {
    Tally ran;
    {
        testsupport::ThreadSerialQueue queue;
        auto gate = std::make_shared<Tally>();
        queue.async([gate] { EXPECT_TRUE(gate->waitFor(1)); });
        for (int item = 0; item < 10; ++item) queue.async([&] { ran.add(); });
        gate->add();
    }
    EXPECT_EQ(ran.count(), 10u);
}

}  // namespace
}  // namespace tolvane
