#include "Tolvane/Entry.h"

#include "OrvikKitCore/CommandLineOption.h"

namespace tolvane {

std::optional<int> runSnapshotIfAsked(std::span<const std::string> arguments,
                                      const std::function<void(const std::string& directory)>& renderSnapshots) {
    const std::optional<std::string> directory = orvik::CommandLineOption::value(snapshotOption, arguments);
    if (!directory) return std::nullopt;
    renderSnapshots(*directory);
    return snapshotExitStatus;
}

}  // namespace tolvane
