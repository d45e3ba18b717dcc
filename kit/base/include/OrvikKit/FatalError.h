// Stops the process on a programming fault (a broken threading rule, a
// counter run out), printing why. Faults are not errors to recover from:
// failing loudly finds them at once.
#pragma once

#include <string_view>

namespace orvik {

[[noreturn]] void fatalError(std::string_view message) noexcept;

}  // namespace orvik
