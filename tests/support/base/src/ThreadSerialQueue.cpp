#include "TestSupport/ThreadSerialQueue.h"

#include <utility>

namespace testsupport {

ThreadSerialQueue::ThreadSerialQueue() : worker_([this] { work(); }) {
    std::unique_lock lock(mutex_);
    changed_.wait(lock, [this] { return started_; });
}

ThreadSerialQueue::~ThreadSerialQueue() {
    {
        const std::lock_guard lock(mutex_);
        stopping_ = true;
        changed_.notify_all();
    }
    worker_.join();
}

void ThreadSerialQueue::async(WorkItem work) {
    const std::lock_guard lock(mutex_);
    queued_.push_back(std::move(work));
    changed_.notify_all();
}

bool ThreadSerialQueue::waitUntilIdle(std::chrono::milliseconds timeout) {
    std::unique_lock lock(mutex_);
    return changed_.wait_for(lock, timeout, [this] { return queued_.empty() && !running_; });
}

void ThreadSerialQueue::work() {
    std::unique_lock lock(mutex_);
    workerID_ = std::this_thread::get_id();
    started_ = true;
    changed_.notify_all();
    for (;;) {
        changed_.wait(lock, [this] { return stopping_ || !queued_.empty(); });
        if (queued_.empty()) break;  // stopping, and everything queued has run
        {
            WorkItem item = std::move(queued_.front());
            queued_.pop_front();
            running_ = true;
            lock.unlock();
            item();
        }  // the item is released here, off the lock
        lock.lock();
        running_ = false;
        changed_.notify_all();
    }
}

}  // namespace testsupport
