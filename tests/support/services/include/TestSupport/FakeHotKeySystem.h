// The platform's hot-key service as a test drives it: installation and
// registration succeed unless told otherwise, and every call is recorded.
#pragma once

#include <cstddef>
#include <cstdint>
#include <map>
#include <optional>
#include <set>
#include <utility>
#include <vector>

#include "OrvikKit/HotKeys.h"

namespace testsupport {

class FakeHotKeySystem final : public orvik::HotKeySystem {
public:
    struct Registration {
        std::uint32_t keyCode;
        std::uint32_t modifiers;
        orvik::HotKeyID id;
    };

    bool installApplicationEventHandler(orvik::HotKeyDispatcher& dispatcher) override {
        ++installAttempts;
        if (!installSucceeds) return false;
        installedFor = &dispatcher;
        return true;
    }

    std::optional<orvik::HotKeyReference> registerHotKey(std::uint32_t keyCode, std::uint32_t modifiers,
                                                         orvik::HotKeyID id) override {
        registrations.push_back({keyCode, modifiers, id});
        if (refusedKeyCodes.contains(keyCode)) return std::nullopt;
        const auto reference = orvik::HotKeyReference{nextReference_++};
        live_.emplace(reference, id);
        return reference;
    }

    void unregisterHotKey(orvik::HotKeyReference reference) override {
        unregistered.push_back(reference);
        live_.erase(reference);
    }

    // The hot-key ids registered with the system and not unregistered.
    std::vector<orvik::HotKeyID> liveHotKeys() const {
        std::vector<orvik::HotKeyID> ids;
        for (const auto& entry : live_) ids.push_back(entry.second);
        return ids;
    }
    std::size_t liveCount() const noexcept { return live_.size(); }

    bool installSucceeds = true;
    std::size_t installAttempts = 0;
    orvik::HotKeyDispatcher* installedFor = nullptr;
    // Key codes the system refuses to register (taken by another app).
    std::set<std::uint32_t> refusedKeyCodes;
    std::vector<Registration> registrations;  // every attempt, in order
    std::vector<orvik::HotKeyReference> unregistered;

private:
    std::uintptr_t nextReference_ = 0x1000;
    std::map<orvik::HotKeyReference, orvik::HotKeyID> live_;
};

}  // namespace testsupport
