// A serial queue with a worker thread of its own: work runs one item at a
// time, in submission order, off the caller's thread, as on the platform.
// Destroying it runs what is still queued, then joins the worker.
#pragma once

#include <chrono>
#include <condition_variable>
#include <deque>
#include <mutex>
#include <thread>

#include "OrvikKit/SerialQueue.h"

namespace testsupport {

class ThreadSerialQueue final : public orvik::SerialQueue {
public:
    ThreadSerialQueue();
    ~ThreadSerialQueue() override;

    ThreadSerialQueue(const ThreadSerialQueue&) = delete;
    ThreadSerialQueue& operator=(const ThreadSerialQueue&) = delete;

    void async(WorkItem work) override;

    // Whether the caller is the worker thread.
    bool isCurrent() const { return std::this_thread::get_id() == workerID_; }
    std::thread::id threadID() const noexcept { return workerID_; }

    // Waits until nothing is queued or running; false when that did not
    // happen within `timeout`.
    [[nodiscard]] bool waitUntilIdle(std::chrono::milliseconds timeout);

private:
    void work();

    std::mutex mutex_;
    std::condition_variable changed_;
    std::deque<WorkItem> queued_;
    bool running_ = false;
    bool stopping_ = false;
    bool started_ = false;
    std::thread::id workerID_;  // written once before the constructor returns
    std::thread worker_;
};

}  // namespace testsupport
