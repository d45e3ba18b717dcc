#include "OrvikKitCore/CommandLineOption.h"

#include <algorithm>

namespace orvik::CommandLineOption {

std::optional<std::string> value(std::string_view after, std::span<const std::string> in) {
    const auto option = std::find(in.begin(), in.end(), after);
    if (option == in.end() || std::next(option) == in.end()) {
        return std::nullopt;
    }
    return *std::next(option);
}

}  // namespace orvik::CommandLineOption
