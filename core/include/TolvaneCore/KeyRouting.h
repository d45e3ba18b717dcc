// What becomes of a media-key press: the Music commands, the user's choice for
// when Music is closed, the routing verdict, and the gate that gives a
// press's auto-repeats and release the verdict of its key-down.
//
// Pure and allocation-free. The gate has no lock: its owner uses it from one
// thread (the main thread, where the event tap's callback runs).
#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <string_view>
#include <type_traits>

#include "TolvaneCore/MediaKeyEvent.h"

namespace tolvane {

enum class MusicCommand : std::uint8_t {
    playPause,      // toggle playback
    next,           // next track
    previous,       // previous track
    launchAndPlay,  // start Music and begin playback (play/pause while Music is closed)
};

// The command a media key stands for while Music runs.
constexpr MusicCommand musicCommand(MediaKey key) noexcept {
    switch (key) {
    case MediaKey::playPause: return MusicCommand::playPause;
    case MediaKey::next: return MusicCommand::next;
    case MediaKey::previous: return MusicCommand::previous;
    }
    return MusicCommand::playPause;  // unreachable: every key is handled above
}

// What a media key does while Music is not running. Its raw value strings are
// its stored form in the preferences.
enum class ClosedBehavior : std::uint8_t { launchMusic, ignore, system };

// Every case, in the order the settings picker lists them.
inline constexpr std::array<ClosedBehavior, 3> allClosedBehaviors{
    ClosedBehavior::launchMusic, ClosedBehavior::ignore, ClosedBehavior::system};

constexpr std::string_view rawValue(ClosedBehavior behavior) noexcept {
    switch (behavior) {
    case ClosedBehavior::launchMusic: return "launchMusic";
    case ClosedBehavior::ignore: return "ignore";
    case ClosedBehavior::system: return "system";
    }
    return "launchMusic";  // unreachable
}

// The case whose raw value is `raw` (case-sensitive), or nothing.
constexpr std::optional<ClosedBehavior> closedBehaviorFromRawValue(std::string_view raw) noexcept {
    for (ClosedBehavior behavior : allClosedBehaviors) {
        if (rawValue(behavior) == raw) {
            return behavior;
        }
    }
    return std::nullopt;
}

// Lets generic code (the preference layer) find the raw-value constructor by
// argument-dependent lookup.
constexpr std::optional<ClosedBehavior> fromRawValue(std::type_identity<ClosedBehavior>,
                                                     std::string_view raw) noexcept {
    return closedBehaviorFromRawValue(raw);
}

// The verdict for one key press.
class KeyRoute {
public:
    enum class Kind : std::uint8_t {
        send,         // swallow the key and have Music perform command()
        swallow,      // swallow the key and do nothing
        passThrough,  // leave the key to macOS
    };

    static constexpr KeyRoute send(MusicCommand command) noexcept { return {Kind::send, command}; }
    static constexpr KeyRoute swallow() noexcept { return {Kind::swallow, MusicCommand::playPause}; }
    static constexpr KeyRoute passThrough() noexcept { return {Kind::passThrough, MusicCommand::playPause}; }

    constexpr Kind kind() const noexcept { return kind_; }
    // The command to send; nothing unless kind() is send.
    constexpr std::optional<MusicCommand> command() const noexcept {
        return kind_ == Kind::send ? std::optional<MusicCommand>(command_) : std::nullopt;
    }
    // True for send and swallow: the system takes the key away from macOS.
    constexpr bool takesKey() const noexcept { return kind_ != Kind::passThrough; }

    friend constexpr bool operator==(const KeyRoute&, const KeyRoute&) = default;

private:
    constexpr KeyRoute(Kind kind, MusicCommand command) noexcept : kind_(kind), command_(command) {}

    Kind kind_;
    // Meaningful for send only; the other kinds keep a fixed value so that
    // equality compares kinds alone for them.
    MusicCommand command_;
};

namespace KeyRouting {

// Decides one key press from whether Music runs now and the user's choice for
// when it is closed. While Music runs the choice has no effect; with
// launchMusic only play/pause starts Music, and next/previous are swallowed
// rather than handed to macOS.
constexpr KeyRoute route(MediaKey key, bool musicIsRunning, ClosedBehavior whenClosed) noexcept {
    if (musicIsRunning) {
        return KeyRoute::send(musicCommand(key));
    }
    switch (whenClosed) {
    case ClosedBehavior::launchMusic:
        return key == MediaKey::playPause ? KeyRoute::send(MusicCommand::launchAndPlay) : KeyRoute::swallow();
    case ClosedBehavior::ignore: return KeyRoute::swallow();
    case ClosedBehavior::system: return KeyRoute::passThrough();
    }
    return KeyRoute::passThrough();  // unreachable
}

}  // namespace KeyRouting

// A set of media-key codes. Decoded events only carry codes 16 to 20, so one
// machine word holds the whole set and no operation allocates.
class KeyCodeSet {
public:
    constexpr bool contains(std::int64_t keyCode) const noexcept {
        return isStorable(keyCode) && (bits_ & bit(keyCode)) != 0;
    }
    // Adds the code; answers whether it could be stored. A code outside 0 to
    // 63 (never a decoded media key) is not stored, in every build.
    constexpr bool insert(std::int64_t keyCode) noexcept {
        if (!isStorable(keyCode)) {
            return false;
        }
        bits_ |= bit(keyCode);
        return true;
    }
    // Removes the code; answers whether it was there.
    constexpr bool erase(std::int64_t keyCode) noexcept {
        const bool had = contains(keyCode);
        if (had) {
            bits_ &= ~bit(keyCode);
        }
        return had;
    }
    constexpr void clear() noexcept { bits_ = 0; }
    constexpr bool empty() const noexcept { return bits_ == 0; }

    friend constexpr bool operator==(const KeyCodeSet&, const KeyCodeSet&) = default;

private:
    static constexpr bool isStorable(std::int64_t keyCode) noexcept { return keyCode >= 0 && keyCode < 64; }
    static constexpr std::uint64_t bit(std::int64_t keyCode) noexcept {
        return std::uint64_t{1} << static_cast<unsigned>(keyCode);
    }

    std::uint64_t bits_ = 0;
};

// Makes the routing decision once per physical press: asks on the key-down
// and gives that press's auto-repeats and key-up the same verdict.
class MediaKeyGate {
public:
    // Answers whether `event` is to be swallowed. `wantsKey` (MediaKey -> bool,
    // true meaning the system takes the key) is called only for a key-down
    // that is not a repeat, and at most once.
    template <class WantsKey>
        requires std::is_invocable_r_v<bool, WantsKey&, MediaKey>
    bool shouldSwallow(const MediaKeyEvent& event, WantsKey&& wantsKey) {
        if (!event.isDown()) {
            return swallowedKeyCodes_.erase(event.keyCode());
        }
        if (event.isRepeat()) {
            return swallowedKeyCodes_.contains(event.keyCode());
        }
        if (!wantsKey(event.key())) {
            // A code already remembered stays: its key-up is still swallowed.
            return false;
        }
        swallowedKeyCodes_.insert(event.keyCode());
        return true;
    }

    // Forgets every remembered press (the tap calls this whenever it stops).
    constexpr void reset() noexcept { swallowedKeyCodes_.clear(); }

    // Codes of presses whose key-down was swallowed and whose key-up has not
    // been seen yet.
    constexpr const KeyCodeSet& swallowedKeyCodes() const noexcept { return swallowedKeyCodes_; }

private:
    KeyCodeSet swallowedKeyCodes_;
};

}  // namespace tolvane
