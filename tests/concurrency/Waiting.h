// Bounded waiting for the thread tests: every wait has a generous limit, and
// a wait that runs out fails the test instead of hanging it. Nothing here
// sleeps to let another thread get somewhere.
#pragma once

#include <chrono>
#include <condition_variable>
#include <cstddef>
#include <mutex>

namespace tolvane::concurrency {

// How long any one wait may take before the test fails. Far beyond what the
// work needs, even under ThreadSanitizer on a loaded machine.
inline constexpr std::chrono::milliseconds patience{30'000};

// A count that other threads raise and the test waits on.
class Tally {
public:
    // Notifies under the lock: a waiter that sees the count may destroy the
    // tally as soon as it returns.
    void add() {
        const std::lock_guard lock(mutex_);
        ++count_;
        changed_.notify_all();
    }

    std::size_t count() const {
        const std::lock_guard lock(mutex_);
        return count_;
    }

    // False when the count did not reach `count` within `timeout`.
    [[nodiscard]] bool waitFor(std::size_t count, std::chrono::milliseconds timeout = patience) const {
        std::unique_lock lock(mutex_);
        return changed_.wait_for(lock, timeout, [&] { return count_ >= count; });
    }

private:
    mutable std::mutex mutex_;
    mutable std::condition_variable changed_;
    std::size_t count_ = 0;
};

}  // namespace tolvane::concurrency
