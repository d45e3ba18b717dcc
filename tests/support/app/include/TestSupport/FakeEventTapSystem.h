// An event-tap system that records every call, can refuse to create taps,
// and delivers events to the tap through the user data it was given, as the
// platform's callback does.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "Tolvane/MediaKeyTap.h"

namespace testsupport {

class FakeEventTapSystem final : public tolvane::EventTapSystem {
public:
    // When true, createTap refuses (as without Accessibility, or after the
    // app was re-signed).
    bool refuseCreation = false;
    // When true, the run-loop source cannot be made for a new tap.
    bool refuseRunLoopSource = false;

    std::optional<Handle> createTap(void* userInfo) noexcept override;
    bool addToMainRunLoop(Handle tap) noexcept override;
    void enable(Handle tap, bool enabled) noexcept override;
    bool isEnabled(Handle tap) const noexcept override;
    void invalidate(Handle tap) noexcept override;
    void release(Handle tap) noexcept override;

    // Every call in order, as "create 1", "add 1", "enable 1 on", "enable 1
    // off", "invalidate 1", "release 1", "create refused", "add 1 refused".
    // Queries of whether a tap is enabled are counted, not listed.
    const std::vector<std::string>& calls() const noexcept { return calls_; }
    void clearCalls() {
        calls_.clear();
        isEnabledQueries_ = 0;
    }
    std::size_t isEnabledQueries() const noexcept { return isEnabledQueries_; }

    std::size_t tapsCreated() const noexcept { return tapsCreated_; }
    // Taps created and not yet released: a tap the app lost track of stays
    // here.
    std::size_t tapsHeld() const noexcept { return tapsCreated_ - tapsReleased_; }
    // The tap that is installed (created, added and not yet removed).
    std::optional<Handle> liveTap() const noexcept { return live_; }
    bool liveTapIsEnabled() const noexcept { return live_ && enabled_; }

    // The system switches the tap off silently (as after sleep).
    void disableSilently() { enabled_ = false; }

    // Delivers an event to the live tap's callback, as the window server
    // would; answers whether the tap dropped it. Without a live tap the
    // callback still runs with the last user data (a late callback).
    bool deliver(std::uint32_t type, std::optional<tolvane::SystemDefinedFields> fields);
    // A system-defined event with the media-key subtype and this data1.
    bool deliverMediaKey(std::int64_t data1);

private:
    std::vector<std::string> calls_;
    std::size_t tapsCreated_ = 0;
    std::size_t tapsReleased_ = 0;
    mutable std::size_t isEnabledQueries_ = 0;
    Handle nextHandle_ = 1;
    std::optional<Handle> live_;
    bool enabled_ = false;
    void* userInfo_ = nullptr;
};

// data1 for a media key: key type, down or up, repeat flag.
constexpr std::int64_t mediaKeyData1(std::int64_t keyType, bool isDown, bool isRepeat = false) {
    return keyType << 16 | (isDown ? 0x0A00 : 0x0B00) | (isRepeat ? 1 : 0);
}

inline constexpr std::int64_t playKey = 16;
inline constexpr std::int64_t nextKey = 17;
inline constexpr std::int64_t previousKey = 18;
inline constexpr std::int64_t fastKey = 19;
inline constexpr std::int64_t rewindKey = 20;

}  // namespace testsupport
