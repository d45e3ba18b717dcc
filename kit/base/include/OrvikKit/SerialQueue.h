// A serial work queue off the main thread: work items run one at a time, in
// submission order. On macOS a serial dispatch queue; tests use a manual
// queue or a real worker thread.
#pragma once

#include <functional>

namespace orvik {

class SerialQueue {
public:
    using WorkItem = std::function<void()>;

    virtual ~SerialQueue() = default;

    // Queues `work`; never blocks the caller. Safe from any thread.
    virtual void async(WorkItem work) = 0;
};

}  // namespace orvik
