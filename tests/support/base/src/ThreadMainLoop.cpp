#include "TestSupport/ThreadMainLoop.h"

#include <cstdio>
#include <cstdlib>
#include <memory>
#include <optional>
#include <utility>
#include <vector>

namespace testsupport {

ThreadMainLoop::ThreadMainLoop() : thread_([this] { loop(); }) {
    std::unique_lock lock(mutex_);
    changed_.wait(lock, [this] { return started_; });
}

ThreadMainLoop::~ThreadMainLoop() {
    {
        const std::lock_guard lock(mutex_);
        stopping_ = true;
        changed_.notify_all();
    }
    thread_.join();
}

void ThreadMainLoop::post(Task task) {
    const std::lock_guard lock(mutex_);
    tasks_.push_back(std::move(task));
    changed_.notify_all();
}

orvik::MainThread::TimerID ThreadMainLoop::postAfter(orvik::Duration delay, orvik::Duration, Task task) {
    orvik::assertOnMainThread(*this);
    const auto dueAt = Clock::now() + std::chrono::duration_cast<Clock::duration>(delay);
    const std::lock_guard lock(mutex_);
    const TimerID id = nextTimerID_++;
    timers_.emplace(id, Timer{dueAt, std::move(task)});
    // The loop thread is the caller: it looks at the timers before it waits.
    return id;
}

void ThreadMainLoop::cancel(TimerID timer) {
    orvik::assertOnMainThread(*this);
    std::optional<Timer> cancelled;
    {
        const std::lock_guard lock(mutex_);
        if (auto node = timers_.extract(timer)) cancelled = std::move(node.mapped());
    }
    // Released off the lock: its task may hold anything.
}

bool ThreadMainLoop::runAndWait(std::function<void()> work, std::chrono::milliseconds timeout) {
    if (isCurrent()) {
        std::fputs("ThreadMainLoop::runAndWait called on the loop thread: it would wait for itself\n", stderr);
        std::abort();
    }
    struct Completion {
        std::mutex mutex;
        std::condition_variable done;
        bool finished = false;
    };
    auto completion = std::make_shared<Completion>();
    post([completion, work = std::move(work)] {
        work();
        const std::lock_guard lock(completion->mutex);
        completion->finished = true;
        completion->done.notify_all();
    });
    std::unique_lock lock(completion->mutex);
    return completion->done.wait_for(lock, timeout, [&] { return completion->finished; });
}

void ThreadMainLoop::loop() {
    std::unique_lock lock(mutex_);
    loopID_ = std::this_thread::get_id();
    started_ = true;
    changed_.notify_all();
    while (!stopping_) {
        if (!tasks_.empty()) {
            {
                Task task = std::move(tasks_.front());
                tasks_.pop_front();
                lock.unlock();
                task();
            }  // released off the lock, on the loop thread
            lock.lock();
            continue;
        }
        auto earliest = timers_.end();
        for (auto timer = timers_.begin(); timer != timers_.end(); ++timer) {
            if (earliest == timers_.end() || timer->second.dueAt < earliest->second.dueAt) earliest = timer;
        }
        if (earliest != timers_.end() && earliest->second.dueAt <= Clock::now()) {
            {
                Task task = std::move(earliest->second.task);
                timers_.erase(earliest);
                lock.unlock();
                task();
            }
            lock.lock();
            continue;
        }
        // Nothing to do yet: wait for a post, a stop, or the next timer.
        if (earliest != timers_.end()) {
            const Clock::time_point dueAt = earliest->second.dueAt;
            changed_.wait_until(lock, dueAt);
        } else {
            changed_.wait(lock);
        }
    }
    // Stopping: what never ran is released here, on the loop thread.
    std::deque<Task> unrun = std::move(tasks_);
    std::map<TimerID, Timer> unfired = std::move(timers_);
    lock.unlock();
}

}  // namespace testsupport
