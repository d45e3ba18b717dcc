// The event tap's callback yields a media key's command on the main thread.
// While a run is under way, yielding must not touch the heap beyond the
// command queue's own storage: no closure, no string, no node per command.
// Starting a run when the loop is idle may allocate.
#include <gtest/gtest.h>

#include <cstddef>
#include <memory>

#include "AllocationCounter.h"
#include "TestSupport/FakeRunningApplications.h"
#include "TestSupport/FakeScriptEngine.h"
#include "TestSupport/FakeThumbnailer.h"
#include "TestSupport/ManualMainThread.h"
#include "TestSupport/ManualSerialQueue.h"
#include "TestSupport/RecordingLogger.h"
#include "Tolvane/MusicController.h"

namespace tolvane {
namespace {

using testing::AllocationCountingScope;

class MusicCommandAllocationTest : public ::testing::Test {
protected:
    void TearDown() override {
        controller.reset();
        while (queue->runUntilIdle() + mainThread.runUntilIdle() > 0) {
        }
    }

    testsupport::ManualMainThread mainThread;
    std::shared_ptr<testsupport::ManualSerialQueue> queue = std::make_shared<testsupport::ManualSerialQueue>();
    std::shared_ptr<MusicScripting> scripting = std::make_shared<MusicScripting>(
        queue, std::make_shared<testsupport::FakeScriptEngine>(), std::make_shared<testsupport::FakeThumbnailer>(),
        std::make_shared<testsupport::RecordingLogger>());
    std::unique_ptr<MusicController> controller = std::make_unique<MusicController>(
        mainThread, std::make_shared<testsupport::FakeRunningApplications>(), scripting);
};

TEST_F(MusicCommandAllocationTest, YieldingWhileARunIsUnderwayAllocatesNoMoreThanOneQueueBlock) {
    controller->commands.yield(MusicCommand::next);  // starts a run, which may allocate
    ASSERT_EQ(queue->pendingCount(), 1u);

    std::size_t allocations = 0;
    {
        AllocationCountingScope scope;
        for (int press = 0; press < 200; ++press) {
            controller->commands.yield(press % 2 == 0 ? MusicCommand::previous : MusicCommand::playPause);
        }
        allocations = scope.allocations();
    }
    // A deque holds hundreds of one-byte commands per block; growing by a
    // block is the most the queue may ask for.
    EXPECT_LE(allocations, 1u);
    EXPECT_EQ(queue->pendingCount(), 1u) << "the commands waited behind the run";
}

TEST_F(MusicCommandAllocationTest, YieldingAfterTheControllerIsGoneAllocatesNothing) {
    MusicController::CommandStream stream = controller->commands;
    controller.reset();
    std::size_t allocations = 0;
    {
        AllocationCountingScope scope;
        for (int press = 0; press < 10; ++press) stream.yield(MusicCommand::next);
        allocations = scope.allocations();
    }
    EXPECT_EQ(allocations, 0u);
}

}  // namespace
}  // namespace tolvane
