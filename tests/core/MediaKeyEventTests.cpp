#include "TolvaneCore/MediaKeyEvent.h"

#include <gtest/gtest.h>

namespace tolvane {
namespace {

constexpr std::int16_t mediaSubtype = MediaKeyEvent::auxControlButtonsSubtype;

struct Decoded {
    MediaKey key;
    std::int64_t keyCode;
    bool isDown;
    bool isRepeat;
};

void expectDecodes(std::int64_t data1, Decoded expected) {
    const auto event = MediaKeyEvent::fromSystemEvent(mediaSubtype, data1);
    ASSERT_TRUE(event.has_value()) << std::hex << "data1 0x" << data1;
    EXPECT_EQ(event->key(), expected.key);
    EXPECT_EQ(event->keyCode(), expected.keyCode);
    EXPECT_EQ(event->isDown(), expected.isDown);
    EXPECT_EQ(event->isRepeat(), expected.isRepeat);
}

TEST(MediaKeyEvent, ConstantsAreSystemDefinedTypeAndAuxControlSubtype) {
    EXPECT_EQ(MediaKeyEvent::systemDefinedEventType, 14u);
    EXPECT_EQ(MediaKeyEvent::auxControlButtonsSubtype, 8);
}

TEST(MediaKeyEvent, PlayKeyDownDecodesAsPlayPausePress) {
    expectDecodes(0x100A00, {MediaKey::playPause, 16, true, false});
}

TEST(MediaKeyEvent, PlayKeyUpDecodesAsPlayPauseRelease) {
    expectDecodes(0x100B00, {MediaKey::playPause, 16, false, false});
}

TEST(MediaKeyEvent, NextKeyDownWithRepeatFlagDecodesAsRepeat) {
    expectDecodes(0x110A01, {MediaKey::next, 17, true, true});
}

TEST(MediaKeyEvent, RewindKeyUpFoldsOntoPreviousKeepingItsCode) {
    expectDecodes(0x140B00, {MediaKey::previous, 20, false, false});
}

TEST(MediaKeyEvent, FastForwardKeyDownFoldsOntoNext) { expectDecodes(0x130A00, {MediaKey::next, 19, true, false}); }

TEST(MediaKeyEvent, PreviousKeyDecodesAsPrevious) { expectDecodes(0x120A00, {MediaKey::previous, 18, true, false}); }

TEST(MediaKeyEvent, SoundUpKeyTypeZeroIsRejected) {
    EXPECT_FALSE(MediaKeyEvent::fromSystemEvent(mediaSubtype, 0x000A00).has_value());
}

TEST(MediaKeyEvent, AnotherSubtypeIsRejectedWhateverData1Holds) {
    for (std::int16_t subtype : {std::int16_t{0}, std::int16_t{1}, std::int16_t{7}, std::int16_t{9}, std::int16_t{-8},
                                 std::int16_t{32767}}) {
        EXPECT_FALSE(MediaKeyEvent::fromSystemEvent(subtype, 0x100A00).has_value()) << "subtype " << subtype;
    }
}

TEST(MediaKeyEvent, BitsAbove31AreIgnored) {
    expectDecodes(0x1'0010'0A00, {MediaKey::playPause, 16, true, false});
    expectDecodes(static_cast<std::int64_t>(0xFFFF'FFFF'0011'0B00), {MediaKey::next, 17, false, false});
}

TEST(MediaKeyEvent, KeyTypes15And21AreRejected) {
    EXPECT_FALSE(MediaKeyEvent::fromSystemEvent(mediaSubtype, 0x0F0A00).has_value());
    EXPECT_FALSE(MediaKeyEvent::fromSystemEvent(mediaSubtype, 0x150A00).has_value());
}

TEST(MediaKeyEvent, KeyTypes16To20AllDecode) {
    for (std::int64_t keyType = 16; keyType <= 20; ++keyType) {
        const auto event = MediaKeyEvent::fromSystemEvent(mediaSubtype, keyType << 16 | 0x0A00);
        ASSERT_TRUE(event.has_value()) << "key type " << keyType;
        EXPECT_EQ(event->keyCode(), keyType);
    }
}

TEST(MediaKeyEvent, EveryKeyTypeOutside16To20IsRejected) {
    for (std::int64_t keyType = 0; keyType <= 0xFFFF; ++keyType) {
        if (keyType >= 16 && keyType <= 20) continue;
        ASSERT_FALSE(MediaKeyEvent::fromSystemEvent(mediaSubtype, keyType << 16 | 0x0A00).has_value())
            << "key type " << keyType;
    }
}

TEST(MediaKeyEvent, UnexpectedStateByteCountsAsReleaseNotRejection) {
    expectDecodes(0x100C00, {MediaKey::playPause, 16, false, false});
    expectDecodes(0x100000, {MediaKey::playPause, 16, false, false});
}

TEST(MediaKeyEvent, RepeatIsReadFromBitZeroAlone) {
    expectDecodes(0x100A01, {MediaKey::playPause, 16, true, true});
    expectDecodes(0x100A03, {MediaKey::playPause, 16, true, true});
    expectDecodes(0x100A02, {MediaKey::playPause, 16, true, false});
}

TEST(MediaKeyEvent, FastForwardAndNextPressesAreDifferentEventsWithTheSameKey) {
    const auto fastForward = MediaKeyEvent::fromSystemEvent(mediaSubtype, 0x130A00);
    const auto next = MediaKeyEvent::fromSystemEvent(mediaSubtype, 0x110A00);
    ASSERT_TRUE(fastForward && next);
    EXPECT_EQ(fastForward->key(), next->key());
    EXPECT_NE(*fastForward, *next);
}

TEST(MediaKeyEvent, EventsWithEqualFieldsAreEqual) {
    EXPECT_EQ(MediaKeyEvent::fromSystemEvent(mediaSubtype, 0x100A00),
              MediaKeyEvent::fromSystemEvent(mediaSubtype, 0x7'0010'0A00));
    EXPECT_NE(MediaKeyEvent::fromSystemEvent(mediaSubtype, 0x100A00),
              MediaKeyEvent::fromSystemEvent(mediaSubtype, 0x100A01));
}

TEST(MediaKeyEvent, DecodingWorksAtCompileTime) {
    constexpr auto event = MediaKeyEvent::fromSystemEvent(8, 0x120B00);
    static_assert(event.has_value() && event->key() == MediaKey::previous && !event->isDown());
    SUCCEED();
}

}  // namespace
}  // namespace tolvane
