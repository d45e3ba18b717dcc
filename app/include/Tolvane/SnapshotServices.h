// The app services a snapshot run hands to the preview state: snapshot mode
// does no system work, so every service here stops the process (a fatal
// error naming the call) if anything ever calls it. The main thread answers
// that it is current and posts nothing; the standard defaults are an empty
// in-memory store; the clock stands at 1970. Each platform's snapshot entry
// (the Mac app's main, the Linux preview) passes them to
// MenuSnapshot::render.
//
// Main thread only.
#pragma once

#include <string>

#include "Tolvane/AppState.h"

namespace tolvane::MenuSnapshot {

// Services that refuse every call; the app info answers `version`.
AppServices refusingServices(std::string version);

}  // namespace tolvane::MenuSnapshot
