#include "TolvaneCore/NowPlaying.h"

#include <algorithm>

namespace tolvane {

std::optional<TrackSummary> TrackSummary::fromScriptOutput(std::string_view output) {
    if (std::count(output.begin(), output.end(), '\t') != 2) {
        return std::nullopt;
    }
    const auto firstTab = output.find('\t');
    const auto secondTab = output.find('\t', firstTab + 1);
    return TrackSummary{
        .name = std::string(output.substr(0, firstTab)),
        .artist = std::string(output.substr(firstTab + 1, secondTab - firstTab - 1)),
        .isPlaying = output.substr(secondTab + 1) == "playing",
    };
}

namespace {

// The string stored under the string key `key`, if the first entry with that
// key holds a string.
const std::string* stringValue(const UserInfo& userInfo, std::string_view key) {
    for (const UserInfoEntry& entry : userInfo) {
        const auto* entryKey = std::get_if<std::string>(&entry.key);
        if (entryKey != nullptr && *entryKey == key) {
            return std::get_if<std::string>(&entry.value);
        }
    }
    return nullptr;
}

}  // namespace

PlayerInfo PlayerInfo::fromUserInfo(const UserInfo& userInfo) {
    PlayerInfo info;
    if (const std::string* state = stringValue(userInfo, "Player State")) {
        if (*state == "Playing") {
            info.state = State::playing;
        } else if (*state == "Stopped") {
            info.state = State::stopped;
        }
    }
    if (const std::string* name = stringValue(userInfo, "Name")) {
        info.name = *name;
    }
    if (const std::string* artist = stringValue(userInfo, "Artist")) {
        info.artist = *artist;
    }
    return info;
}

NowPlayingChange NowPlayingChange::from(const std::optional<TrackSummary>& current, const PlayerInfo& info) {
    if (info.state == PlayerInfo::State::stopped) {
        return cleared();
    }
    TrackSummary summary{
        .name = info.name,
        .artist = info.artist,
        .isPlaying = info.state == PlayerInfo::State::playing,
    };
    if (current && current->name == info.name && current->artist == info.artist) {
        return sameSong(std::move(summary));
    }
    return newSong(std::move(summary));
}

}  // namespace tolvane
