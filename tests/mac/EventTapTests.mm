// The CoreGraphics event-tap adapter. macOS only.
#include <ApplicationServices/ApplicationServices.h>

#include <gtest/gtest.h>

#include <optional>

#include "TolvaneMac/Adapters.h"

namespace tolvane::mac {
namespace {

// Without Accessibility the system refuses a tap that may drop events, and
// the adapter answers no handle. Apple documents the permission rather than
// the refusal, so the test runs only where it can say something: a runner
// trusted for Accessibility may create taps, and the test is skipped there.
// A tap made anyway is released before the test ends.
TEST(CoreGraphicsEventTapsTest, WithoutAccessibilityNoTapIsCreated) {
    if (AXIsProcessTrusted()) {
        GTEST_SKIP() << "this test runner is trusted for Accessibility, so the system allows it taps";
    }
    const auto taps = makeEventTapSystem();
    const std::optional<EventTapSystem::Handle> tap = taps->createTap(nullptr);
    if (tap) {
        taps->invalidate(*tap);
        taps->release(*tap);
    }
    EXPECT_EQ(tap, std::nullopt) << "the system made a tap for an untrusted process";
}

}  // namespace
}  // namespace tolvane::mac
