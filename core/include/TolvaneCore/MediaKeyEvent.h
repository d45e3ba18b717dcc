// Media keys as the rest of Tolvane sees them, and the one rule that decodes a
// system-defined event's (subtype, data1) pair into such a key press.
//
// Pure value types: no platform dependency, no allocation, safe on any thread.
#pragma once

#include <cstdint>
#include <optional>

namespace tolvane {

// The three keys the system acts on. Fast-forward and rewind fold onto `next`
// and `previous` when decoded.
enum class MediaKey : std::uint8_t { playPause, next, previous };

// One media-key press, release or auto-repeat.
//
// The only way to make one is to decode a real event with `fromSystemEvent`,
// so `keyCode()` is always one of the handled key types 16 to 20. The gate
// relies on that to remember codes without allocating.
class MediaKeyEvent {
public:
    // Event type number of system-defined events (the tap's mask and type test).
    static constexpr std::uint32_t systemDefinedEventType = 14;
    // Subtype of system-defined events that carries the media keys.
    static constexpr std::int16_t auxControlButtonsSubtype = 8;

    // Decodes the event's subtype and first data word. Yields nothing when the
    // pair is not a media key that Tolvane handles (another subtype, volume,
    // brightness, eject, ...); the caller then lets the raw event pass.
    static constexpr std::optional<MediaKeyEvent> fromSystemEvent(std::int16_t subtype,
                                                                  std::int64_t data1) noexcept;

    constexpr MediaKey key() const noexcept { return key_; }
    // The raw key type from data1 (16 to 20), kept unfolded: a rewind press
    // has key() == previous and keyCode() == 20.
    constexpr std::int64_t keyCode() const noexcept { return keyCode_; }
    constexpr bool isDown() const noexcept { return isDown_; }
    constexpr bool isRepeat() const noexcept { return isRepeat_; }

    friend constexpr bool operator==(const MediaKeyEvent&, const MediaKeyEvent&) = default;

private:
    constexpr MediaKeyEvent(MediaKey key, std::int64_t keyCode, bool isDown, bool isRepeat) noexcept
        : key_(key), keyCode_(keyCode), isDown_(isDown), isRepeat_(isRepeat) {}

    MediaKey key_;
    std::int64_t keyCode_;
    bool isDown_;
    bool isRepeat_;
};

constexpr std::optional<MediaKeyEvent> MediaKeyEvent::fromSystemEvent(std::int16_t subtype,
                                                                      std::int64_t data1) noexcept {
    if (subtype != auxControlButtonsSubtype) {
        return std::nullopt;
    }
    // data1 packs the key type into bits 16-31, the key state into bits 8-15
    // and the repeat flag into bit 0. Bits above 31 carry nothing for us.
    const auto word = static_cast<std::uint64_t>(data1);
    const auto keyCode = static_cast<std::int64_t>((word & 0xFFFF0000u) >> 16);

    MediaKey key{};
    switch (keyCode) {
    case 16: key = MediaKey::playPause; break;  // play
    case 17: key = MediaKey::next; break;       // next
    case 18: key = MediaKey::previous; break;   // previous
    case 19: key = MediaKey::next; break;       // fast-forward acts as next
    case 20: key = MediaKey::previous; break;   // rewind acts as previous
    default: return std::nullopt;
    }
    // 0x0A is key down; 0x0B key up. Any other state byte counts as a release.
    const bool isDown = (word & 0xFF00u) == 0x0A00u;
    const bool isRepeat = (word & 0x1u) != 0;
    return MediaKeyEvent(key, keyCode, isDown, isRepeat);
}

}  // namespace tolvane
