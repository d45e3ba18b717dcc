// Opening a pane of System Settings (System Preferences before macOS 13's
// rename) at the place the app's advice points to, through the URL-opener
// port. Pure decisions: the panes' URLs and the order they are tried in.
//
// Main thread only (the URL opener is).
#pragma once

#include <cstdint>
#include <span>
#include <string_view>

#include "OrvikKit/SystemServices.h"

namespace orvik {

namespace SystemSettings {

// `menuBar` is macOS 26's Menu Bar pane, with its list "Allow in the Menu
// Bar"; macOS 13 to 15 have no such pane.
enum class Pane : std::uint8_t { accessibility, automation, screenRecording, keyboardShortcuts, menuBar };

// The URLs that open a pane, in the order to try them. The keyboard pane has
// two because newer System Settings answers only the first and older System
// Preferences only the second.
std::span<const std::string_view> candidateURLs(Pane pane) noexcept;

// Tries the pane's URLs in order and stops at the first that opens (one
// that does not parse is skipped). Answers whether one did; when none does,
// nothing else happens.
bool open(Pane pane, URLOpener& opener);

}  // namespace SystemSettings

}  // namespace orvik
