#include "TestSupport/ManualSerialQueue.h"

#include <utility>

namespace testsupport {

void ManualSerialQueue::async(WorkItem work) {
    const std::lock_guard lock(mutex_);
    work_.push_back(std::move(work));
}

bool ManualSerialQueue::runNext() {
    WorkItem work;
    {
        const std::lock_guard lock(mutex_);
        if (work_.empty()) return false;
        work = std::move(work_.front());
        work_.pop_front();
        runningWork_ = true;
    }
    work();
    work = nullptr;  // released as part of the item, as a dispatch queue does
    const std::lock_guard lock(mutex_);
    runningWork_ = false;
    return true;
}

std::size_t ManualSerialQueue::runUntilIdle() {
    std::size_t ran = 0;
    while (runNext()) ++ran;
    return ran;
}

std::size_t ManualSerialQueue::pendingCount() const {
    const std::lock_guard lock(mutex_);
    return work_.size();
}

bool ManualSerialQueue::isRunningWork() const {
    const std::lock_guard lock(mutex_);
    return runningWork_;
}

}  // namespace testsupport
