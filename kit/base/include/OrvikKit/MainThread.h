// The main thread's run loop as the portable code sees it: post a task, post
// one after a delay (with leeway), cancel a delayed task, and ask whether the
// caller is on the main thread.
//
// On macOS this is the main dispatch queue; tests use a virtual-clock fake
// (every delay is driven by the test, nothing sleeps) or a real loop on a
// thread of its own.
#pragma once

#include <chrono>
#include <cstdint>
#include <functional>

namespace orvik {

// Durations on a monotonic clock, in seconds and fractions: delayed tasks
// count on a clock that setting the date and time does not move (on macOS
// the default dispatch clock, which stands still while the Mac sleeps).
using Duration = std::chrono::duration<double>;

class MainThread {
public:
    using Task = std::function<void()>;
    using TimerID = std::uint64_t;

    virtual ~MainThread() = default;

    // Runs `task` on the main thread after the tasks already posted. Safe to
    // call from any thread.
    virtual void post(Task task) = 0;

    // Runs `task` on the main thread once `delay` has passed; the platform may
    // run it up to `leeway` later to save power. Main thread only.
    virtual TimerID postAfter(Duration delay, Duration leeway, Task task) = 0;

    // Forgets a delayed task that has not started. Unknown or finished IDs
    // are ignored. Main thread only.
    virtual void cancel(TimerID timer) = 0;

    // Whether the caller runs on the main thread.
    virtual bool isCurrent() const = 0;
};

// A delay or leeway as whole nanoseconds, as the platform's timers take
// them: rounded to the nearest nanosecond, negative and NaN durations as 0,
// durations past the 64-bit range as its largest value.
std::int64_t wholeNanoseconds(Duration duration) noexcept;

// Stops the process when called off the main thread: a broken threading rule
// is a programming fault, and failing loudly finds it at once.
void assertOnMainThread(const MainThread& mainThread);

}  // namespace orvik
