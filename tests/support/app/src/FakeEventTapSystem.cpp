#include "TestSupport/FakeEventTapSystem.h"

namespace testsupport {

std::optional<tolvane::EventTapSystem::Handle> FakeEventTapSystem::createTap(void* userInfo) noexcept {
    if (refuseCreation) {
        calls_.push_back("create refused");
        return std::nullopt;
    }
    const Handle handle = nextHandle_++;
    ++tapsCreated_;
    userInfo_ = userInfo;
    calls_.push_back("create " + std::to_string(handle));
    return handle;
}

bool FakeEventTapSystem::addToMainRunLoop(Handle tap) noexcept {
    if (refuseRunLoopSource) {
        calls_.push_back("add " + std::to_string(tap) + " refused");
        return false;
    }
    calls_.push_back("add " + std::to_string(tap));
    live_ = tap;
    enabled_ = false;
    return true;
}

void FakeEventTapSystem::enable(Handle tap, bool enabled) noexcept {
    calls_.push_back("enable " + std::to_string(tap) + (enabled ? " on" : " off"));
    if (live_ == tap) enabled_ = enabled;
}

bool FakeEventTapSystem::isEnabled(Handle tap) const noexcept {
    ++isEnabledQueries_;
    return live_ == tap && enabled_;
}

void FakeEventTapSystem::invalidate(Handle tap) noexcept { calls_.push_back("invalidate " + std::to_string(tap)); }

void FakeEventTapSystem::release(Handle tap) noexcept {
    calls_.push_back("release " + std::to_string(tap));
    ++tapsReleased_;
    if (live_ == tap) {
        live_.reset();
        enabled_ = false;
    }
}

bool FakeEventTapSystem::deliver(std::uint32_t type, std::optional<tolvane::SystemDefinedFields> fields) {
    return tolvane::MediaKeyTap::dropsEvent(userInfo_, type, [&] { return fields; });
}

bool FakeEventTapSystem::deliverMediaKey(std::int64_t data1) {
    return deliver(tolvane::TapEventType::systemDefined,
                   tolvane::SystemDefinedFields{tolvane::MediaKeyEvent::auxControlButtonsSubtype, data1});
}

}  // namespace testsupport
