#include "TestSupport/FakeEventTapSystem.h"

namespace testsupport {

std::optional<tolvane::EventTapSystem::Handle> FakeEventTapSystem::createTap(void* userInfo) {
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

void FakeEventTapSystem::addToMainRunLoop(Handle tap) {
    calls_.push_back("add " + std::to_string(tap));
    live_ = tap;
    enabled_ = false;
}

void FakeEventTapSystem::enable(Handle tap, bool enabled) {
    calls_.push_back("enable " + std::to_string(tap) + (enabled ? " on" : " off"));
    if (live_ == tap) enabled_ = enabled;
}

bool FakeEventTapSystem::isEnabled(Handle tap) const { return live_ == tap && enabled_; }

void FakeEventTapSystem::invalidate(Handle tap) { calls_.push_back("invalidate " + std::to_string(tap)); }

void FakeEventTapSystem::removeFromMainRunLoop(Handle tap) {
    calls_.push_back("remove " + std::to_string(tap));
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
