#include "OrvikKit/RepeatingTask.h"

#include <gtest/gtest.h>

#include <memory>
#include <optional>

#include "TestSupport/ManualMainThread.h"

namespace orvik {
namespace {

using testsupport::ManualMainThread;

constexpr Duration seconds(double value) { return Duration(value); }

TEST(RepeatingTask, FirstRunComesOneIntervalAfterCreationNeverAtCreation) {
    ManualMainThread mainThread;
    int runs = 0;
    RepeatingTask task(mainThread, seconds(2), [&] { ++runs; });
    mainThread.runUntilIdle();
    EXPECT_EQ(runs, 0);
    mainThread.advance(seconds(1.999));
    EXPECT_EQ(runs, 0);
    mainThread.advance(seconds(0.001));
    EXPECT_EQ(runs, 1);
}

TEST(RepeatingTask, RunsEveryIntervalAfterThat) {
    ManualMainThread mainThread;
    std::vector<double> runTimes;
    RepeatingTask task(mainThread, seconds(2), [&] { runTimes.push_back(mainThread.now().count()); });
    mainThread.advance(seconds(7));
    EXPECT_EQ(runTimes, (std::vector<double>{2, 4, 6}));
}

TEST(RepeatingTask, LeewayIsATenthOfTheInterval) {
    ManualMainThread mainThread;
    RepeatingTask task(mainThread, seconds(3600), [] {});
    ASSERT_FALSE(mainThread.timerRequests().empty());
    EXPECT_DOUBLE_EQ(mainThread.timerRequests().front().delay.count(), 3600);
    EXPECT_DOUBLE_EQ(mainThread.timerRequests().front().leeway.count(), 360);
}

TEST(RepeatingTask, IntervalIsMeasuredFromTheEndOfTheAction) {
    ManualMainThread mainThread;
    int runs = 0;
    std::vector<double> requestedAt;
    RepeatingTask task(mainThread, seconds(2), [&] {
        ++runs;
        requestedAt.push_back(mainThread.now().count());
    });
    mainThread.advance(seconds(2));
    ASSERT_EQ(runs, 1);
    // The next run is asked for only when the action has finished, with the
    // whole interval again.
    ASSERT_EQ(mainThread.timerRequests().size(), 2u);
    EXPECT_DOUBLE_EQ(mainThread.timerRequests().back().delay.count(), 2);
}

TEST(RepeatingTask, OneHourTaskReleasedAfterTenMinutesNeverRuns) {
    ManualMainThread mainThread;
    int runs = 0;
    {
        RepeatingTask task(mainThread, seconds(3600), [&] { ++runs; });
        mainThread.advance(seconds(600));
    }
    mainThread.advance(seconds(10 * 3600));
    EXPECT_EQ(runs, 0);
    EXPECT_EQ(mainThread.pendingTimerCount(), 0u);
}

TEST(RepeatingTask, CancelledWhileItsActionRunsFinishesThatActionAndRunsNoOther) {
    ManualMainThread mainThread;
    int started = 0;
    int finished = 0;
    std::optional<RepeatingTask> task;
    task.emplace(mainThread, seconds(2), [&] {
        ++started;
        task->cancel();
        ++finished;
    });
    mainThread.advance(seconds(20));
    EXPECT_EQ(started, 1);
    EXPECT_EQ(finished, 1);
}

TEST(RepeatingTask, CancelIsIdempotentAndReleaseAfterCancelIsHarmless) {
    ManualMainThread mainThread;
    int runs = 0;
    {
        RepeatingTask task(mainThread, seconds(1), [&] { ++runs; });
        task.cancel();
        task.cancel();
    }
    mainThread.advance(seconds(5));
    EXPECT_EQ(runs, 0);
}

TEST(RepeatingTask, ActionRunsOnTheMainThreadTaskQueueNotInline) {
    ManualMainThread mainThread;
    bool wasOnMainThread = false;
    RepeatingTask task(mainThread, seconds(1), [&] { wasOnMainThread = mainThread.isCurrent(); });
    mainThread.advance(seconds(1));
    EXPECT_TRUE(wasOnMainThread);
}

}  // namespace
}  // namespace orvik
