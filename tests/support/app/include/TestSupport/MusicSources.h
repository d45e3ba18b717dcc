// The full script sources Music receives, as the fake script engine records
// them: every command's and both queries'. Spelled out from the bodies, so a
// test that compares against them checks the exact texts.
#pragma once

#include <string>
#include <string_view>

#include "Tolvane/MusicScripting.h"

namespace testsupport::sources {

inline std::string music(std::string_view body) { return tolvane::MusicScripting::fullSource(body); }
inline std::string command(tolvane::MusicCommand command) { return music(tolvane::MusicScripting::body(command)); }

inline const std::string playpause = music("playpause");
inline const std::string nextTrack = music("next track");
inline const std::string backTrack = music("back track");
inline const std::string play = music("play");
inline const std::string trackQuery = music(tolvane::MusicScripting::trackQuery);
inline const std::string artworkQuery = music(tolvane::MusicScripting::artworkQuery);

}  // namespace testsupport::sources
