// Parses arbitrary bytes as the track query's output: any byte values,
// invalid UTF-8 and NULs included. The whole input is the output text.
//
// Checked: a summary comes back exactly when the text holds two tabs; it then
// splits the text at them with nothing lost, and only a last piece of exactly
// "playing" means playing.

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "FuzzInput.h"
#include "TolvaneCore/NowPlaying.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using tolvane::fuzz::require;

    const std::string_view output(reinterpret_cast<const char*>(data), size);
    const std::optional<tolvane::TrackSummary> summary = tolvane::TrackSummary::fromScriptOutput(output);

    std::size_t tabs = 0;
    std::size_t firstTab = 0;
    std::size_t secondTab = 0;
    for (std::size_t index = 0; index < output.size(); ++index) {
        if (output[index] == '\t') {
            ++tabs;
            if (tabs == 1) {
                firstTab = index;
            } else if (tabs == 2) {
                secondTab = index;
            }
        }
    }

    require(summary.has_value() == (tabs == 2), "a summary exactly when the output holds two tabs");
    if (!summary) {
        return 0;
    }

    const std::string_view third = output.substr(secondTab + 1);
    require(summary->name == output.substr(0, firstTab), "name is the text before the first tab");
    require(summary->artist == output.substr(firstTab + 1, secondTab - firstTab - 1),
            "artist is the text between the tabs");
    require(summary->isPlaying == (third == "playing"), "playing exactly when the last piece is \"playing\"");

    const std::string rebuilt = summary->name + '\t' + summary->artist + '\t' + std::string(third);
    require(rebuilt.size() == output.size() && rebuilt == output, "the pieces and tabs rebuild the output");
    return 0;
}
