// A serial queue driven by the test: queued work runs, in order, on the
// test's thread when the test says so. Work may be queued from any thread.
#pragma once

#include <cstddef>
#include <deque>
#include <mutex>

#include "OrvikKit/SerialQueue.h"

namespace testsupport {

class ManualSerialQueue final : public orvik::SerialQueue {
public:
    void async(WorkItem work) override;

    // Runs the oldest queued item; false when there was none.
    bool runNext();
    // Runs queued items, and the items they queue, until none is left.
    // Answers how many ran.
    std::size_t runUntilIdle();

    std::size_t pendingCount() const;
    // True while a queued item runs (on the thread running it), so a test can
    // tell that code runs as queue work.
    bool isRunningWork() const;

private:
    mutable std::mutex mutex_;
    std::deque<WorkItem> work_;
    bool runningWork_ = false;
};

}  // namespace testsupport
