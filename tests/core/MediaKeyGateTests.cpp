#include "TolvaneCore/KeyRouting.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <limits>
#include <vector>

namespace tolvane {
namespace {

// A decoded event for key type `keyCode` (16 to 20).
MediaKeyEvent event(std::int64_t keyCode, bool isDown, bool isRepeat = false) {
    const std::int64_t data1 = keyCode << 16 | (isDown ? 0x0A00 : 0x0B00) | (isRepeat ? 1 : 0);
    return MediaKeyEvent::fromSystemEvent(MediaKeyEvent::auxControlButtonsSubtype, data1).value();
}

MediaKeyEvent down(std::int64_t keyCode) { return event(keyCode, true); }
MediaKeyEvent repeat(std::int64_t keyCode) { return event(keyCode, true, true); }
MediaKeyEvent up(std::int64_t keyCode) { return event(keyCode, false); }

// A wantsKey callback that answers a fixed verdict and records what it was asked.
struct RecordingHandler {
    bool answer;
    std::vector<MediaKey> asked;

    bool operator()(MediaKey key) {
        asked.push_back(key);
        return answer;
    }
};

TEST(MediaKeyGate, NewGateRemembersNothing) {
    const MediaKeyGate gate;
    EXPECT_TRUE(gate.swallowedKeyCodes().empty());
}

TEST(MediaKeyGate, WantedPressSwallowsItsRepeatsAndReleaseWithOneQuestion) {
    MediaKeyGate gate;
    RecordingHandler wanted{true, {}};
    EXPECT_TRUE(gate.shouldSwallow(down(16), wanted));
    EXPECT_TRUE(gate.shouldSwallow(repeat(16), wanted));
    EXPECT_TRUE(gate.shouldSwallow(repeat(16), wanted));
    EXPECT_TRUE(gate.shouldSwallow(up(16), wanted));
    EXPECT_EQ(wanted.asked, std::vector<MediaKey>{MediaKey::playPause});
    EXPECT_TRUE(gate.swallowedKeyCodes().empty());
}

TEST(MediaKeyGate, UnwantedPressPassesItsRepeatsAndRelease) {
    MediaKeyGate gate;
    RecordingHandler unwanted{false, {}};
    EXPECT_FALSE(gate.shouldSwallow(down(16), unwanted));
    EXPECT_FALSE(gate.shouldSwallow(repeat(16), unwanted));
    EXPECT_FALSE(gate.shouldSwallow(up(16), unwanted));
    EXPECT_EQ(unwanted.asked.size(), 1u);
    EXPECT_TRUE(gate.swallowedKeyCodes().empty());
}

TEST(MediaKeyGate, ReleaseWithoutPressPassesWithoutAsking) {
    MediaKeyGate gate;
    RecordingHandler handler{true, {}};
    EXPECT_FALSE(gate.shouldSwallow(up(17), handler));
    EXPECT_TRUE(handler.asked.empty());
}

TEST(MediaKeyGate, RepeatWithoutPressPassesWithoutAsking) {
    MediaKeyGate gate;
    RecordingHandler handler{true, {}};
    EXPECT_FALSE(gate.shouldSwallow(repeat(17), handler));
    EXPECT_TRUE(handler.asked.empty());
}

TEST(MediaKeyGate, ReleaseIgnoresTheRepeatFlag) {
    MediaKeyGate gate;
    RecordingHandler wanted{true, {}};
    ASSERT_TRUE(gate.shouldSwallow(down(18), wanted));
    EXPECT_TRUE(gate.shouldSwallow(event(18, false, true), wanted));
    EXPECT_EQ(wanted.asked.size(), 1u);
    EXPECT_FALSE(gate.swallowedKeyCodes().contains(18));
}

TEST(MediaKeyGate, UnwantedSecondPressKeepsStaleEntrySoReleaseIsStillSwallowed) {
    MediaKeyGate gate;
    RecordingHandler wanted{true, {}};
    RecordingHandler unwanted{false, {}};
    ASSERT_TRUE(gate.shouldSwallow(down(16), wanted));
    EXPECT_FALSE(gate.shouldSwallow(down(16), unwanted));
    EXPECT_EQ(unwanted.asked.size(), 1u);
    EXPECT_TRUE(gate.swallowedKeyCodes().contains(16));
    EXPECT_TRUE(gate.shouldSwallow(up(16), unwanted));
    EXPECT_TRUE(gate.swallowedKeyCodes().empty());
}

TEST(MediaKeyGate, ResetForgetsSwallowedPressSoItsReleasePasses) {
    MediaKeyGate gate;
    RecordingHandler wanted{true, {}};
    ASSERT_TRUE(gate.shouldSwallow(down(19), wanted));
    gate.reset();
    EXPECT_TRUE(gate.swallowedKeyCodes().empty());
    EXPECT_FALSE(gate.shouldSwallow(up(19), wanted));
}

TEST(MediaKeyGate, RewindAndPreviousHeldTogetherAreRememberedSeparately) {
    MediaKeyGate gate;
    RecordingHandler wanted{true, {}};
    ASSERT_TRUE(gate.shouldSwallow(down(20), wanted));
    ASSERT_TRUE(gate.shouldSwallow(down(18), wanted));
    EXPECT_EQ(wanted.asked, (std::vector<MediaKey>{MediaKey::previous, MediaKey::previous}));
    EXPECT_TRUE(gate.shouldSwallow(up(20), wanted));
    EXPECT_TRUE(gate.swallowedKeyCodes().contains(18));
    EXPECT_FALSE(gate.swallowedKeyCodes().contains(20));
    EXPECT_TRUE(gate.shouldSwallow(up(18), wanted));
}

TEST(MediaKeyGate, HandlerIsAskedWithTheFoldedKey) {
    MediaKeyGate gate;
    RecordingHandler handler{false, {}};
    gate.shouldSwallow(down(19), handler);
    gate.shouldSwallow(down(20), handler);
    EXPECT_EQ(handler.asked, (std::vector<MediaKey>{MediaKey::next, MediaKey::previous}));
}

TEST(MediaKeyGate, OnePressDoesNotAffectAnotherKey) {
    MediaKeyGate gate;
    RecordingHandler wanted{true, {}};
    ASSERT_TRUE(gate.shouldSwallow(down(16), wanted));
    EXPECT_FALSE(gate.shouldSwallow(up(17), wanted));
    EXPECT_FALSE(gate.shouldSwallow(repeat(17), wanted));
    EXPECT_TRUE(gate.swallowedKeyCodes().contains(16));
}

TEST(KeyCodeSet, InsertContainsEraseAndClear) {
    KeyCodeSet set;
    EXPECT_TRUE(set.empty());
    set.insert(20);
    EXPECT_TRUE(set.contains(20));
    EXPECT_FALSE(set.contains(19));
    EXPECT_FALSE(set.contains(-1));
    EXPECT_FALSE(set.contains(64));
    EXPECT_TRUE(set.erase(20));
    EXPECT_FALSE(set.erase(20));
    set.insert(16);
    set.clear();
    EXPECT_TRUE(set.empty());
}

// Evaluated by the compiler, where an out-of-range shift is an error rather
// than silent undefined behaviour: inserting codes outside 0 to 63 must be
// defined in every build, and must store nothing.
constexpr bool outOfRangeInsertsStoreNothing() {
    KeyCodeSet set;
    const bool stored = set.insert(64) || set.insert(-1) || set.insert(1000) || set.insert(INT64_MIN);
    return !stored && set.empty();
}
static_assert(outOfRangeInsertsStoreNothing());

TEST(KeyCodeSet, CodesOutsideTheWordAreNotStoredInAnyBuild) {
    KeyCodeSet set;
    EXPECT_FALSE(set.insert(64));
    EXPECT_FALSE(set.insert(-1));
    EXPECT_FALSE(set.insert(std::numeric_limits<std::int64_t>::max()));
    EXPECT_TRUE(set.empty());
    EXPECT_TRUE(set.insert(0));
    EXPECT_TRUE(set.insert(63));
    EXPECT_TRUE(set.contains(0));
    EXPECT_TRUE(set.contains(63));
}

}  // namespace
}  // namespace tolvane
