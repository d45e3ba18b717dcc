// For tests of the main-thread rule: runs work on another thread and waits
// for it, and the message the process stops with when main-thread work is
// called from elsewhere.
#pragma once

#include <functional>
#include <thread>

namespace testsupport {

inline constexpr const char* mainThreadFault = "main-thread work was called from another thread";

// Runs `work` on a thread of its own and waits for it to finish.
inline void offTheMainThread(const std::function<void()>& work) {
    std::thread other(work);
    other.join();
}

}  // namespace testsupport
