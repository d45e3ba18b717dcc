// A main thread driven by the test: posted tasks run when the test says so,
// and delayed tasks run when the test moves the virtual clock past their due
// time. Nothing sleeps. The thread that creates it counts as the main thread.
#pragma once

#include <cstddef>
#include <deque>
#include <map>
#include <mutex>
#include <thread>
#include <utility>
#include <vector>

#include "OrvikKit/MainThread.h"

namespace testsupport {

class ManualMainThread final : public orvik::MainThread {
public:
    struct TimerRequest {
        orvik::Duration delay;
        orvik::Duration leeway;
    };

    void post(Task task) override;
    TimerID postAfter(orvik::Duration delay, orvik::Duration leeway, Task task) override;
    void cancel(TimerID timer) override;
    bool isCurrent() const override { return std::this_thread::get_id() == mainThreadID_; }

    // Time passed on the virtual clock since creation.
    orvik::Duration now() const noexcept { return now_; }

    // Runs posted tasks, and the tasks they post, until none is left.
    // Answers how many ran.
    std::size_t runUntilIdle();

    // Moves the clock forward by `by`, running every delayed task that falls
    // due on the way at its due time, in due order (posted tasks run first at
    // each step).
    void advance(orvik::Duration by);

    std::size_t pendingTaskCount() const {
        const std::lock_guard lock(tasksMutex_);
        return tasks_.size();
    }
    std::size_t pendingTimerCount() const noexcept { return timers_.size(); }
    // Every delayed task asked for, in order, with its delay and leeway.
    const std::vector<TimerRequest>& timerRequests() const noexcept { return timerRequests_; }

private:
    struct Timer {
        orvik::Duration dueAt;
        Task task;
    };

    std::thread::id mainThreadID_ = std::this_thread::get_id();
    orvik::Duration now_{0.0};
    // Tasks may be posted from any thread (a worker hands its result back),
    // so the queue of tasks is locked; timers and running stay on the main
    // thread.
    mutable std::mutex tasksMutex_;
    std::deque<Task> tasks_;
    std::map<TimerID, Timer> timers_;
    TimerID nextTimerID_ = 1;
    std::vector<TimerRequest> timerRequests_;
};

}  // namespace testsupport
