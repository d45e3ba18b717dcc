// A logger that keeps every line. Safe from any thread.
#pragma once

#include <mutex>
#include <string>
#include <string_view>
#include <vector>

#include "OrvikKit/SystemServices.h"

namespace testsupport {

class RecordingLogger final : public orvik::Logger {
public:
    void error(std::string_view message) noexcept override {
        const std::lock_guard lock(mutex_);
        lines_.emplace_back(message);
    }

    // Every error line, in order.
    std::vector<std::string> lines() const {
        const std::lock_guard lock(mutex_);
        return lines_;
    }

private:
    mutable std::mutex mutex_;
    std::vector<std::string> lines_;
};

}  // namespace testsupport
