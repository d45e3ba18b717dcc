// Looking up an option's value in the process's arguments.
#pragma once

#include <optional>
#include <span>
#include <string>
#include <string_view>

namespace orvik::CommandLineOption {

// The argument that follows the first one equal to `after` (exact
// comparison); nothing when `after` is absent or is the last argument.
// Later occurrences are ignored.
std::optional<std::string> value(std::string_view after, std::span<const std::string> in);

}  // namespace orvik::CommandLineOption
