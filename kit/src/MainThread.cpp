#include "OrvikKit/MainThread.h"

#include <cstdio>
#include <cstdlib>

namespace orvik {

void assertOnMainThread(const MainThread& mainThread) {
    if (!mainThread.isCurrent()) {
        std::fputs("Tolvane: main-thread work was called from another thread\n", stderr);
        std::abort();
    }
}

}  // namespace orvik
