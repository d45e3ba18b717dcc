// The app's macOS adapters (event taps, AppleScript, thumbnails) and the
// launch of the app's parts. Plain C++: no Objective-C type appears here; the
// definitions are Objective-C++ (app/mac/*.mm) and build only on Apple
// platforms.
#pragma once

#include <memory>
#include <optional>
#include <string>

#include "OrvikKit/MainThread.h"
#include "OrvikKit/MenuBarApp.h"
#include "Tolvane/AppState.h"
#include "Tolvane/MediaKeyTap.h"
#include "Tolvane/MenuSnapshot.h"
#include "Tolvane/MusicScripting.h"

namespace tolvane::mac {

// CoreGraphics event taps: an active session tap at the head, for
// system-defined events only, whose callback is mediaKeyTapCallback.
std::shared_ptr<EventTapSystem> makeEventTapSystem();

// NSAppleScript, on whatever thread its scripts are made and run (the
// scripting queue).
std::shared_ptr<ScriptEngine> makeScriptEngine();

// ImageIO thumbnails of at most 128 pixels, with the image's orientation
// applied; the artwork's content is a CGImage compared with CFEqual.
std::shared_ptr<Thumbnailer> makeThumbnailer();

// The snapshot's sample artwork drawn with CoreGraphics at two pixels per
// point: a linear gradient across the whole square at the sample's angle.
std::optional<ArtworkImage> makeSampleArtwork(const MenuSnapshot::SampleArtwork& sample);

// Snapshot mode: renders the sample menu, light and dark, as PNG files into
// `directory`, through the kit's CoreGraphics snapshot platform and
// services that refuse every call (MenuSnapshot::refusingServices). Builds
// no app state, event tap or status item.
void renderSnapshots(const std::string& directory);

// The app's one state, built on first use over the standard user defaults
// and the macOS adapters. Main thread only.
std::shared_ptr<AppState> sharedAppState(const std::shared_ptr<orvik::MainThread>& mainThread);

// The app's launch function: takes the shared state, builds the status-item
// controller titled "Tolvane" over it (with the help window it shows when
// the app is opened again while the icon is hidden), and answers the parts
// to keep.
orvik::MenuBarApp::Parts launch(const std::shared_ptr<orvik::MainThread>& mainThread);

}  // namespace tolvane::mac
