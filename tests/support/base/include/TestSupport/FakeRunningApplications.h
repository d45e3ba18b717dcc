// Running applications as the test sets them; every question is recorded.
#pragma once

#include <cstddef>
#include <functional>
#include <mutex>
#include <set>
#include <string>
#include <string_view>
#include <vector>

#include "OrvikKit/SystemServices.h"

namespace testsupport {

class FakeRunningApplications final : public orvik::RunningApplications {
public:
    void setRunning(std::string_view bundleIdentifier, bool running) {
        const std::lock_guard lock(mutex_);
        if (running) {
            running_.emplace(bundleIdentifier);
        } else if (auto found = running_.find(bundleIdentifier); found != running_.end()) {
            running_.erase(found);
        }
    }

    bool isRunning(std::string_view bundleIdentifier) const override {
        const std::lock_guard lock(mutex_);
        questions_.emplace_back(bundleIdentifier);
        return running_.contains(bundleIdentifier);
    }

    // The bundle identifiers asked about, in order.
    std::vector<std::string> questions() const {
        const std::lock_guard lock(mutex_);
        return questions_;
    }

private:
    mutable std::mutex mutex_;
    std::set<std::string, std::less<>> running_;
    mutable std::vector<std::string> questions_;
};

}  // namespace testsupport
