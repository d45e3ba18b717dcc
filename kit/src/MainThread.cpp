#include "OrvikKit/MainThread.h"

#include "OrvikKit/FatalError.h"

namespace orvik {

void assertOnMainThread(const MainThread& mainThread) {
    if (!mainThread.isCurrent()) {
        fatalError("main-thread work was called from another thread");
    }
}

}  // namespace orvik
