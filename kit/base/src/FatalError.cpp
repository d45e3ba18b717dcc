#include "OrvikKit/FatalError.h"

#include <cstdio>
#include <cstdlib>

namespace orvik {

void fatalError(std::string_view message) noexcept {
    std::fprintf(stderr, "fatal error: %.*s\n", static_cast<int>(message.size()), message.data());
    std::abort();
}

}  // namespace orvik
