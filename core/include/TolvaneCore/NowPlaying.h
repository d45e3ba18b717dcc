// What Music is playing, in the two forms it reaches Tolvane (the track
// query's tab-separated output and the user info of Music's player
// notification), and the rule that tells whether the song changed.
//
// Pure value types; safe on any thread.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

namespace tolvane {

struct TrackSummary {
    std::string name;
    std::string artist;
    bool isPlaying = false;

    // Parses the track query's output: title, tab, artist, tab, player state.
    // Yields nothing unless there are exactly three pieces (so the empty output
    // of a stopped player, or a title holding a tab, gives nothing). Only the
    // exact lower-case "playing" counts as playing.
    static std::optional<TrackSummary> fromScriptOutput(std::string_view output);

    friend bool operator==(const TrackSummary&, const TrackSummary&) = default;
};

// Stands for any user-info value that carries no meaning here (a date, an
// array, a nested dictionary, ...): present, but of no kind Tolvane reads.
struct OtherUserInfoValue {
    friend constexpr bool operator==(OtherUserInfoValue, OtherUserInfoValue) noexcept { return true; }
};

// A key or value of a notification's user-info dictionary.
using UserInfoValue = std::variant<OtherUserInfoValue, bool, std::int64_t, double, std::string>;

struct UserInfoEntry {
    UserInfoValue key;
    UserInfoValue value;
};

// A notification's user-info dictionary, entries in the platform's order.
// Lookups take the first entry whose key matches.
using UserInfo = std::vector<UserInfoEntry>;

struct PlayerInfo {
    enum class State : std::uint8_t { playing, paused, stopped };

    State state = State::paused;
    std::string name;    // empty when absent
    std::string artist;  // empty when absent

    // Reads "Player State", "Name" and "Artist". Never fails: an unknown,
    // missing or non-string state reads as paused (which keeps the current
    // song on screen), a missing or non-string name or artist as "".
    static PlayerInfo fromUserInfo(const UserInfo& userInfo);

    friend bool operator==(const PlayerInfo&, const PlayerInfo&) = default;
};

// How a player notification relates to the track on screen.
class NowPlayingChange {
public:
    enum class Kind : std::uint8_t {
        sameSong,  // still the song shown; only isPlaying may differ
        newSong,   // another (or the first) song is now current
        cleared,   // Music stopped; nothing is playing
    };

    static NowPlayingChange sameSong(TrackSummary summary) { return {Kind::sameSong, std::move(summary)}; }
    static NowPlayingChange newSong(TrackSummary summary) { return {Kind::newSong, std::move(summary)}; }
    static NowPlayingChange cleared() { return {Kind::cleared, std::nullopt}; }

    // Compares the summary on screen (if any) with a notification. The song is
    // the same when name and artist are exactly equal.
    static NowPlayingChange from(const std::optional<TrackSummary>& current, const PlayerInfo& info);

    Kind kind() const noexcept { return kind_; }
    // The new summary for sameSong and newSong; nothing for cleared.
    const std::optional<TrackSummary>& summary() const noexcept { return summary_; }

    friend bool operator==(const NowPlayingChange&, const NowPlayingChange&) = default;

private:
    NowPlayingChange(Kind kind, std::optional<TrackSummary> summary) : kind_(kind), summary_(std::move(summary)) {}

    Kind kind_;
    std::optional<TrackSummary> summary_;
};

}  // namespace tolvane
