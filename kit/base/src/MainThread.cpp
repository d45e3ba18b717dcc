#include "OrvikKit/MainThread.h"

#include <cmath>
#include <limits>

#include "OrvikKit/FatalError.h"

namespace orvik {

std::int64_t wholeNanoseconds(Duration duration) noexcept {
    const double nanoseconds = std::round(duration.count() * 1e9);
    if (!(nanoseconds > 0)) return 0;
    // 2^63 is the first double past the range.
    if (nanoseconds >= 9223372036854775808.0) return std::numeric_limits<std::int64_t>::max();
    return static_cast<std::int64_t>(nanoseconds);
}

void assertOnMainThread(const MainThread& mainThread) {
    if (!mainThread.isCurrent()) {
        fatalError("main-thread work was called from another thread");
    }
}

}  // namespace orvik
