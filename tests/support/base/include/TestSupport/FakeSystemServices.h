// Fakes of the system-service interfaces (SystemServices.h): they answer as
// the test sets them up and record every call, for any test to use.
#pragma once

#include <cstddef>
#include <functional>
#include <map>
#include <memory>
#include <mutex>
#include <set>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "OrvikKit/SystemServices.h"
#include "TestSupport/RecordingLogger.h"

namespace testsupport {

// Opens every URL unless told otherwise; remembers each one asked for.
class FakeURLOpener final : public orvik::URLOpener {
public:
    orvik::URLOpenResult open(std::string_view url) override {
        opened_.emplace_back(url);
        if (unparsable.contains(std::string(url))) return orvik::URLOpenResult::notAURL;
        if (failing.contains(std::string(url))) return orvik::URLOpenResult::notOpened;
        return opensByDefault ? orvik::URLOpenResult::opened : orvik::URLOpenResult::notOpened;
    }

    // Strings that do not parse as URLs.
    std::set<std::string> unparsable;
    // URLs that fail to open, whatever `opensByDefault` says.
    std::set<std::string> failing;
    // The answer for every URL not in `failing`.
    bool opensByDefault = true;

    // Every URL asked for, in order, whether it opened or not.
    const std::vector<std::string>& opened() const noexcept { return opened_; }

private:
    std::vector<std::string> opened_;
};

// The login item: `enabled` is the state the system reports. A change is
// applied unless `refusesChanges` is set (as when registering needs the
// user's approval or fails), and the state afterwards is answered.
class FakeLoginItemService final : public orvik::LoginItemService {
public:
    explicit FakeLoginItemService(bool enabled = false) : enabled(enabled) {}

    bool isEnabled() override {
        ++isEnabledCalls;
        return enabled;
    }
    bool setEnabled(bool wanted) override {
        requests.push_back(wanted);
        if (!refusesChanges) enabled = wanted;
        return enabled;
    }

    bool enabled;
    bool refusesChanges = false;
    std::size_t isEnabledCalls = 0;
    std::vector<bool> requests;  // every setEnabled argument, in order
};

// The accessibility trust: `trusted` is the system's answer. Asking with the
// prompt counts a prompt whenever the process is not trusted; the prompt
// does not change the answer (the user grants later, if at all).
class FakeAccessibilityTrust final : public orvik::AccessibilityTrust {
public:
    explicit FakeAccessibilityTrust(bool trusted = false) : trusted(trusted) {}

    bool isTrusted() override {
        ++isTrustedCalls;
        return trusted;
    }
    bool requestIfNeeded() override {
        ++requestCalls;
        if (!trusted) ++promptsShown;
        return trusted;
    }

    bool trusted;
    std::size_t isTrustedCalls = 0;
    std::size_t requestCalls = 0;
    std::size_t promptsShown = 0;
};

// The app's version and one RecordingLogger per category.
class FakeAppInfoSource final : public orvik::AppInfoSource {
public:
    explicit FakeAppInfoSource(std::string version = "1.0") : versionString(std::move(version)) {}

    std::string version() const override { return versionString; }

    std::shared_ptr<orvik::Logger> logger(std::string_view category) override {
        auto& logger = loggers_[std::string(category)];
        if (!logger) logger = std::make_shared<RecordingLogger>();
        return logger;
    }

    // The logger handed out for `category`, or null when none was asked for.
    std::shared_ptr<RecordingLogger> loggerFor(std::string_view category) const {
        const auto found = loggers_.find(std::string(category));
        return found == loggers_.end() ? nullptr : found->second;
    }

    std::string versionString;

private:
    std::map<std::string, std::shared_ptr<RecordingLogger>> loggers_;
};

}  // namespace testsupport
