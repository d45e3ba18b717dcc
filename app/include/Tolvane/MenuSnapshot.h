// Snapshot mode: the menu rendered with fixed sample data to PNG files in
// light and dark appearance. The sample is a made-up track, its gradient
// artwork (drawn by the platform from the description here), and a preview
// state with the sample applied. `render` builds the sample and hands the
// menu view over it to Snapshot::renderMenu.
//
// Main thread only.
#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

#include "OrvikKit/Snapshot.h"
#include "OrvikKit/SystemServices.h"
#include "Tolvane/AppState.h"
#include "Tolvane/Track.h"

namespace tolvane::MenuSnapshot {

inline constexpr std::string_view sampleTitle = "Manh\u00E3 de N\u00E9voa";
inline constexpr std::string_view sampleArtist = "Lia Moreno & Davi Sato";
inline constexpr std::int64_t sampleKeysForwarded = 12;

struct RGBA {
    double red, green, blue, alpha;
};

// An 88 × 88 point image filled with a linear gradient between two sRGB
// colours, drawn across the whole image at an angle of -60 degrees.
struct SampleArtwork {
    double sizeInPoints = 88;
    RGBA from{0.29, 0.33, 0.85, 1.0};
    RGBA to{0.85, 0.31, 0.62, 1.0};
    double angleInDegrees = -60;
};

TrackSummary sampleSummary();

// An artwork image over the platform's image content (the one place outside
// the scripting layer that makes one; none for no content).
std::optional<ArtworkImage> artworkImage(std::shared_ptr<const ArtworkImage::Content> content);

// A preview state over an empty in-memory store (so every setting has its
// default), with the sample track (playing, with `artwork`) applied,
// Accessibility granted and 12 keys forwarded. Its update reminder is a
// preview that is not due. Calls nothing of `services`.
std::shared_ptr<AppState> sampleState(AppServices services, std::optional<ArtworkImage> artwork);

// What rendering the sample menu needs of the platform. None of the
// services is called: the preview state keeps them without using them, and
// the open-at-login row is not read while a snapshot renders.
struct Platform {
    orvik::SnapshotPlatform& rendering;
    AppServices services;
    std::shared_ptr<orvik::LoginItemService> loginItem;  // may be null
    std::string version;                                 // the app's version, shown in the footer
    // Draws the sample artwork as a platform image; none when it cannot.
    std::function<std::optional<ArtworkImage>(const SampleArtwork&)> makeArtwork;
};

// Builds the sample artwork, then renders the app's menu over a fresh sample
// state for each appearance into the directory `to`, with no variant. Every
// failure is silent.
void render(std::string_view to, Platform& platform);

}  // namespace tolvane::MenuSnapshot
