#include "OrvikKit/MainThread.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <limits>

namespace orvik {
namespace {

TEST(WholeNanosecondsTest, ConvertsSecondsToWholeNanoseconds) {
    EXPECT_EQ(wholeNanoseconds(Duration(2.0)), 2'000'000'000);
    EXPECT_EQ(wholeNanoseconds(Duration(0.2)), 200'000'000);
    EXPECT_EQ(wholeNanoseconds(Duration(3600.0)), 3'600'000'000'000);
}

TEST(WholeNanosecondsTest, RoundsToTheNearestNanosecond) {
    EXPECT_EQ(wholeNanoseconds(Duration(1.4e-9)), 1);
    EXPECT_EQ(wholeNanoseconds(Duration(1.6e-9)), 2);
}

TEST(WholeNanosecondsTest, NegativeAndNotANumberAreZero) {
    EXPECT_EQ(wholeNanoseconds(Duration(-1.0)), 0);
    EXPECT_EQ(wholeNanoseconds(Duration(0.0)), 0);
    EXPECT_EQ(wholeNanoseconds(Duration(std::numeric_limits<double>::quiet_NaN())), 0);
}

TEST(WholeNanosecondsTest, BeyondTheRangeIsTheLargestValue) {
    EXPECT_EQ(wholeNanoseconds(Duration(1e300)), std::numeric_limits<std::int64_t>::max());
    EXPECT_EQ(wholeNanoseconds(Duration(std::numeric_limits<double>::infinity())),
              std::numeric_limits<std::int64_t>::max());
}

}  // namespace
}  // namespace orvik
