// A real main-thread loop on a thread of its own: posted tasks run there in
// order, delayed tasks when their time has come on the steady clock. Tests
// reach it with runAndWait. Destroying it stops the loop after the task
// under way; tasks still queued are released on the loop thread, unrun.
#pragma once

#include <chrono>
#include <condition_variable>
#include <deque>
#include <functional>
#include <map>
#include <mutex>
#include <thread>

#include "OrvikKit/MainThread.h"

namespace testsupport {

class ThreadMainLoop final : public orvik::MainThread {
public:
    ThreadMainLoop();
    ~ThreadMainLoop() override;

    ThreadMainLoop(const ThreadMainLoop&) = delete;
    ThreadMainLoop& operator=(const ThreadMainLoop&) = delete;

    void post(Task task) override;
    TimerID postAfter(orvik::Duration delay, orvik::Duration leeway, Task task) override;
    void cancel(TimerID timer) override;
    bool isCurrent() const override { return std::this_thread::get_id() == loopID_; }

    std::thread::id threadID() const noexcept { return loopID_; }

    // Runs `work` on the loop, after the tasks already posted, and waits for
    // it to return; false when it did not within `timeout`. Not from the
    // loop thread.
    [[nodiscard]] bool runAndWait(std::function<void()> work, std::chrono::milliseconds timeout);

private:
    using Clock = std::chrono::steady_clock;
    struct Timer {
        Clock::time_point dueAt;
        Task task;
    };

    void loop();

    std::mutex mutex_;
    std::condition_variable changed_;
    std::deque<Task> tasks_;
    std::map<TimerID, Timer> timers_;
    TimerID nextTimerID_ = 1;
    bool stopping_ = false;
    bool started_ = false;
    std::thread::id loopID_;  // written once before the constructor returns
    std::thread thread_;
};

}  // namespace testsupport
