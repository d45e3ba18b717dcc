// Running applications as the test sets them, answering without recording
// or allocating: for the allocation tests and the benchmarks of the key path.
#pragma once

#include <atomic>
#include <string_view>

#include "OrvikKit/SystemServices.h"

namespace testsupport {

class QuietRunningApplications final : public orvik::RunningApplications {
public:
    std::atomic<bool> musicRuns{false};

    bool isRunning(std::string_view bundleIdentifier) const override {
        return bundleIdentifier == "com.apple.Music" && musicRuns.load(std::memory_order_relaxed);
    }
};

}  // namespace testsupport
