// The process entry's first decision, made before anything else: render
// snapshots and exit, or start the menu-bar app. The platform's `main` calls
// `runSnapshotIfAsked` with the process arguments; in snapshot mode nothing
// of the app is built (no shared state, no event tap, no status item): only
// `renderSnapshots` runs, with the directory that follows "--snapshot".
//
// Main thread only.
#pragma once

#include <functional>
#include <optional>
#include <span>
#include <string>
#include <string_view>

namespace tolvane {

inline constexpr std::string_view snapshotOption = "--snapshot";
inline constexpr int snapshotExitStatus = 0;

// When the arguments hold "--snapshot" followed by a path (the first
// occurrence counts), calls `renderSnapshots` with the path and answers the
// exit status the process ends with (0, whatever the rendering did).
// Otherwise calls nothing and answers nothing: the app starts normally (also
// when "--snapshot" is the last argument).
std::optional<int> runSnapshotIfAsked(std::span<const std::string> arguments,
                                      const std::function<void(const std::string& directory)>& renderSnapshots);

}  // namespace tolvane
