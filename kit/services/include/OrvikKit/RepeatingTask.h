// Runs an action on the main thread at a fixed interval until cancelled or
// released.
//
// The first run comes one interval after creation, never at creation. The
// interval is measured from the end of one run to the next, with a leeway of
// a tenth of the interval, on the main thread's monotonic clock (see
// MainThread.h): setting the date and time neither hurries nor delays it. A
// task cancelled while its action runs lets that action finish and starts no
// other. Main thread only.
#pragma once

#include <functional>
#include <memory>

#include "OrvikKit/MainThread.h"

namespace orvik {

class RepeatingTask {
public:
    RepeatingTask(MainThread& mainThread, Duration every, std::function<void()> action);
    ~RepeatingTask();

    RepeatingTask(const RepeatingTask&) = delete;
    RepeatingTask& operator=(const RepeatingTask&) = delete;

    // Stops the repetition. Idempotent.
    void cancel();

private:
    struct Loop;
    std::shared_ptr<Loop> loop_;
};

}  // namespace orvik
