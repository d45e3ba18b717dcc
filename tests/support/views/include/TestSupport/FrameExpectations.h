// A laid-out frame compared with the one expected, side by side, within a
// rounding error, so a failure names the side that is off.
#pragma once

#include <gtest/gtest.h>

#include "OrvikKit/Layout.h"

namespace testsupport {

inline void expectFrame(const orvik::Rect& actual, const orvik::Rect& expected) {
    EXPECT_NEAR(actual.x, expected.x, 1e-9);
    EXPECT_NEAR(actual.y, expected.y, 1e-9);
    EXPECT_NEAR(actual.width, expected.width, 1e-9);
    EXPECT_NEAR(actual.height, expected.height, 1e-9);
}

}  // namespace testsupport
