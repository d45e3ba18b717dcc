// The CoreGraphics event-tap adapter. macOS only.
#include <ApplicationServices/ApplicationServices.h>

#include <gtest/gtest.h>

#include "TolvaneMac/Adapters.h"

namespace tolvane::mac {
namespace {

TEST(CoreGraphicsEventTapsTest, WithoutAccessibilityNoTapIsCreated) {
    if (AXIsProcessTrusted()) GTEST_SKIP() << "this process is trusted for Accessibility, so the system allows taps";
    const auto taps = makeEventTapSystem();
    EXPECT_EQ(taps->createTap(nullptr), std::nullopt);
}

}  // namespace
}  // namespace tolvane::mac
