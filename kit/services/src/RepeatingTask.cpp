#include "OrvikKit/RepeatingTask.h"

#include <optional>
#include <utility>

namespace orvik {

// Shared with the scheduled timer only weakly, so that releasing the task
// ends the repetition even when the platform still holds the timer.
struct RepeatingTask::Loop : std::enable_shared_from_this<Loop> {
    MainThread& mainThread;
    Duration interval;
    std::function<void()> action;
    std::optional<MainThread::TimerID> pending;
    bool cancelled = false;

    Loop(MainThread& mainThread, Duration interval, std::function<void()> action)
        : mainThread(mainThread), interval(interval), action(std::move(action)) {}

    void scheduleNext() {
        pending = mainThread.postAfter(interval, interval / 10.0, [weak = weak_from_this()] {
            if (auto loop = weak.lock()) loop->fire();
        });
    }

    void fire() {
        pending.reset();
        if (cancelled) return;
        action();
        if (!cancelled) scheduleNext();
    }

    void cancel() {
        cancelled = true;
        if (pending) {
            mainThread.cancel(*pending);
            pending.reset();
        }
    }
};

RepeatingTask::RepeatingTask(MainThread& mainThread, Duration every, std::function<void()> action)
    : loop_(std::make_shared<Loop>(mainThread, every, std::move(action))) {
    assertOnMainThread(mainThread);
    loop_->scheduleNext();
}

RepeatingTask::~RepeatingTask() { cancel(); }

void RepeatingTask::cancel() { loop_->cancel(); }

}  // namespace orvik
