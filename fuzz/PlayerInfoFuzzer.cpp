// Reads arbitrary user-info dictionaries as Music's player notification, then
// relates the result to an arbitrary summary on screen.
//
// Input layout:
//   byte        entry count (0 to 12)
//   per entry   a key, then a value, each a user-info value (see `userInfoValue`)
//   then        the summary on screen (see `currentSummary`)
//
// Checked against the rules restated here: each of "Player State", "Name" and
// "Artist" is looked up in the first entry whose key is that string; only a
// string value counts; "Playing" and "Stopped" are the only states that are
// not paused. Then the change: stopped clears; otherwise the summary comes
// from the notification and it is the same song exactly when a summary is on
// screen with equal name and artist.

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <variant>

#include "FuzzInput.h"
#include "TolvaneCore/NowPlaying.h"

namespace {

using namespace std::string_view_literals;
using tolvane::NowPlayingChange;
using tolvane::PlayerInfo;
using tolvane::TrackSummary;
using tolvane::UserInfo;
using tolvane::UserInfoValue;
using tolvane::fuzz::FuzzInput;
using tolvane::fuzz::require;

// Keys the notification is read for, and near misses.
constexpr std::array keyWords{
    "Player State"sv, "Name"sv, "Artist"sv, "Album"sv, "player state"sv, "Name "sv, "Artist\0"sv, ""sv,
};

// The states the notification carries, and near misses.
constexpr std::array valueWords{
    "Playing"sv, "Paused"sv, "Stopped"sv, "playing"sv, "STOPPED"sv, "Stopped\0"sv, " Playing"sv, ""sv,
};

// One user-info value: a selector byte, then the alternative's bytes.
//   0 other (no more bytes), 1 bool (1 byte), 2 int64 (8), 3 double (8 bytes,
//   any bit pattern), 4 string (length byte up to 24, then the bytes),
//   5-7 a string from `words` (1 byte).
UserInfoValue userInfoValue(FuzzInput& input, const std::array<std::string_view, 8>& words) {
    switch (input.below(8)) {
    case 0: return tolvane::OtherUserInfoValue{};
    case 1: return input.boolean();
    case 2: return input.signedInteger<std::int64_t>();
    case 3: return input.real();
    case 4: return input.string(24);
    default: return std::string(input.pick(words));
    }
}

// The summary on screen: a presence byte (low bit); when present, a choice
// byte each for name and artist (0 the notification's own, 1 empty, 2 a
// string read next), then a byte whose low bit is isPlaying.
std::optional<TrackSummary> currentSummary(FuzzInput& input, const PlayerInfo& info) {
    if (!input.boolean()) {
        return std::nullopt;
    }
    const auto piece = [&input](const std::string& fromNotification) -> std::string {
        switch (input.below(3)) {
        case 0: return fromNotification;
        case 1: return "";
        default: return input.string(24);
        }
    };
    TrackSummary summary;
    summary.name = piece(info.name);
    summary.artist = piece(info.artist);
    summary.isPlaying = input.boolean();
    return summary;
}

// The value of the first entry whose key is the string `key`, when that value
// is a string.
std::optional<std::string> firstStringValue(const UserInfo& userInfo, std::string_view key) {
    for (std::size_t index = 0; index < userInfo.size(); ++index) {
        const UserInfoValue& entryKey = userInfo[index].key;
        if (entryKey.index() == 4 && std::get<4>(entryKey) == key) {
            const UserInfoValue& value = userInfo[index].value;
            if (value.index() == 4) {
                return std::get<4>(value);
            }
            return std::nullopt;
        }
    }
    return std::nullopt;
}

PlayerInfo expectedPlayerInfo(const UserInfo& userInfo) {
    PlayerInfo expected;
    const std::optional<std::string> state = firstStringValue(userInfo, "Player State");
    if (state == "Playing") {
        expected.state = PlayerInfo::State::playing;
    } else if (state == "Stopped") {
        expected.state = PlayerInfo::State::stopped;
    } else {
        expected.state = PlayerInfo::State::paused;
    }
    expected.name = firstStringValue(userInfo, "Name").value_or("");
    expected.artist = firstStringValue(userInfo, "Artist").value_or("");
    return expected;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    FuzzInput input(data, size);

    UserInfo userInfo;
    const std::size_t entries = input.below(13);
    for (std::size_t index = 0; index < entries; ++index) {
        UserInfoValue key = userInfoValue(input, keyWords);
        UserInfoValue value = userInfoValue(input, valueWords);
        userInfo.push_back({std::move(key), std::move(value)});
    }

    const PlayerInfo info = PlayerInfo::fromUserInfo(userInfo);
    const PlayerInfo expected = expectedPlayerInfo(userInfo);
    require(info.state == expected.state, "state from the first \"Player State\" entry");
    require(info.name == expected.name, "name from the first \"Name\" entry");
    require(info.artist == expected.artist, "artist from the first \"Artist\" entry");

    const std::optional<TrackSummary> current = currentSummary(input, info);
    const NowPlayingChange change = NowPlayingChange::from(current, info);
    if (info.state == PlayerInfo::State::stopped) {
        require(change.kind() == NowPlayingChange::Kind::cleared, "stopped clears");
        require(!change.summary().has_value(), "a cleared change has no summary");
        return 0;
    }

    require(change.summary().has_value(), "a song change carries a summary");
    require(change.summary()->name == info.name, "the new summary's name is the notification's");
    require(change.summary()->artist == info.artist, "the new summary's artist is the notification's");
    require(change.summary()->isPlaying == (info.state == PlayerInfo::State::playing),
            "the new summary plays exactly when the notification says playing");
    const bool sameSong = current.has_value() && current->name == info.name && current->artist == info.artist;
    require(change.kind() == (sameSong ? NowPlayingChange::Kind::sameSong : NowPlayingChange::Kind::newSong),
            "same song exactly when name and artist on screen are equal");
    return 0;
}
