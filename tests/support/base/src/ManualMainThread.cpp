#include "TestSupport/ManualMainThread.h"

#include <algorithm>
#include <optional>

namespace testsupport {

void ManualMainThread::post(Task task) {
    const std::lock_guard lock(tasksMutex_);
    tasks_.push_back(std::move(task));
}

orvik::MainThread::TimerID ManualMainThread::postAfter(orvik::Duration delay, orvik::Duration leeway, Task task) {
    orvik::assertOnMainThread(*this);
    const TimerID id = nextTimerID_++;
    timers_.emplace(id, Timer{now_ + delay, std::move(task)});
    timerRequests_.push_back({delay, leeway});
    return id;
}

void ManualMainThread::cancel(TimerID timer) {
    orvik::assertOnMainThread(*this);
    timers_.erase(timer);
}

std::size_t ManualMainThread::runUntilIdle() {
    std::size_t ran = 0;
    for (;;) {
        Task task;
        {
            const std::lock_guard lock(tasksMutex_);
            if (tasks_.empty()) break;
            task = std::move(tasks_.front());
            tasks_.pop_front();
        }
        task();
        ++ran;
    }
    return ran;
}

void ManualMainThread::advance(orvik::Duration by) {
    const orvik::Duration target = now_ + by;
    for (;;) {
        runUntilIdle();
        // The earliest timer due by the target; ties go to the one asked first.
        std::optional<TimerID> next;
        for (const auto& [id, timer] : timers_) {
            if (timer.dueAt <= target && (!next || timer.dueAt < timers_.at(*next).dueAt)) next = id;
        }
        if (!next) break;
        auto node = timers_.extract(*next);
        now_ = std::max(now_, node.mapped().dueAt);
        node.mapped().task();
    }
    now_ = target;
    runUntilIdle();
}

}  // namespace testsupport
