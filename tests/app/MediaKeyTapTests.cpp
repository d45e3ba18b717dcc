#include "Tolvane/MediaKeyTap.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <new>
#include <stdexcept>
#include <vector>

#include "TestSupport/FakeEventTapSystem.h"
#include "TestSupport/ManualMainThread.h"
#include "TestSupport/RecordingLogger.h"
#include "TestSupport/OffTheMainThread.h"

namespace tolvane {
namespace {

using testsupport::FakeEventTapSystem;
using testsupport::mediaKeyData1;
using testsupport::nextKey;
using testsupport::playKey;
using Strings = std::vector<std::string>;

class MediaKeyTapTest : public testing::Test {
protected:
    testsupport::ManualMainThread mainThread;
    std::shared_ptr<FakeEventTapSystem> system = std::make_shared<FakeEventTapSystem>();
    std::shared_ptr<testsupport::RecordingLogger> logger = std::make_shared<testsupport::RecordingLogger>();
    MediaKeyTap tap{mainThread, system, logger};
    std::vector<MediaKey> asked;

    void takeEveryKey() {
        tap.onKey = [this](MediaKey key) {
            asked.push_back(key);
            return true;
        };
    }
};

TEST_F(MediaKeyTapTest, StartCreatesAddsAndEnablesTheTap) {
    EXPECT_TRUE(tap.start());
    EXPECT_TRUE(tap.isRunning());
    EXPECT_EQ(system->calls(), (Strings{"create 1", "add 1", "enable 1 on"}));
    EXPECT_TRUE(system->liveTapIsEnabled());
}

TEST_F(MediaKeyTapTest, StartingTwiceAnswersTrueBothTimesAndCreatesOneTap) {
    EXPECT_TRUE(tap.start());
    EXPECT_TRUE(tap.start());
    EXPECT_EQ(system->tapsCreated(), 1u);
}

TEST_F(MediaKeyTapTest, RefusedCreationAnswersFalseAndInstallsNothing) {
    system->refuseCreation = true;
    EXPECT_FALSE(tap.start());
    EXPECT_FALSE(tap.isRunning());
    EXPECT_EQ(system->calls(), Strings{"create refused"});
}

TEST_F(MediaKeyTapTest, RefusedRunLoopSourceGivesTheTapBackAndAnswersFalse) {
    system->refuseRunLoopSource = true;
    EXPECT_FALSE(tap.start());
    EXPECT_FALSE(tap.isRunning());
    EXPECT_EQ(system->calls(), (Strings{"create 1", "add 1 refused", "invalidate 1", "release 1"}));
    EXPECT_EQ(system->tapsHeld(), 0u);
}

TEST_F(MediaKeyTapTest, StartAfterARefusedRunLoopSourceCreatesAFreshTap) {
    system->refuseRunLoopSource = true;
    ASSERT_FALSE(tap.start());
    system->refuseRunLoopSource = false;
    EXPECT_TRUE(tap.start());
    EXPECT_EQ(system->liveTap(), std::optional<EventTapSystem::Handle>(2));
    EXPECT_EQ(system->tapsHeld(), 1u);
}

TEST_F(MediaKeyTapTest, StartAfterARefusalTriesAgain) {
    system->refuseCreation = true;
    ASSERT_FALSE(tap.start());
    system->refuseCreation = false;
    EXPECT_TRUE(tap.start());
    EXPECT_TRUE(tap.isRunning());
}

TEST_F(MediaKeyTapTest, StopDisablesInvalidatesAndRemovesTheTap) {
    ASSERT_TRUE(tap.start());
    system->clearCalls();
    tap.stop();
    EXPECT_FALSE(tap.isRunning());
    EXPECT_EQ(system->calls(), (Strings{"enable 1 off", "invalidate 1", "release 1"}));
    EXPECT_EQ(system->liveTap(), std::nullopt);
}

TEST_F(MediaKeyTapTest, StopBeforeAnyStartDoesNothingAndLeavesTheGateEmpty) {
    tap.stop();
    EXPECT_TRUE(system->calls().empty());
    EXPECT_TRUE(tap.gate().swallowedKeyCodes().empty());
}

TEST_F(MediaKeyTapTest, PressSwallowedBeforeStopIsReleasedAfterRestartAndPasses) {
    takeEveryKey();
    ASSERT_TRUE(tap.start());
    ASSERT_TRUE(system->deliverMediaKey(mediaKeyData1(playKey, true)));
    tap.stop();
    ASSERT_TRUE(tap.start());
    EXPECT_FALSE(system->deliverMediaKey(mediaKeyData1(playKey, false)));
}

TEST_F(MediaKeyTapTest, WantedPressRepeatAndReleaseAreAllDroppedWithOneQuestion) {
    takeEveryKey();
    ASSERT_TRUE(tap.start());
    EXPECT_TRUE(system->deliverMediaKey(mediaKeyData1(nextKey, true)));
    EXPECT_TRUE(system->deliverMediaKey(mediaKeyData1(nextKey, true, true)));
    EXPECT_TRUE(system->deliverMediaKey(mediaKeyData1(nextKey, false)));
    EXPECT_EQ(asked, std::vector<MediaKey>{MediaKey::next});
}

TEST_F(MediaKeyTapTest, DefaultHandlerLetsEveryMediaKeyPass) {
    ASSERT_TRUE(tap.start());
    for (std::int64_t keyType = 16; keyType <= 20; ++keyType) {
        EXPECT_FALSE(system->deliverMediaKey(mediaKeyData1(keyType, true)));
        EXPECT_FALSE(system->deliverMediaKey(mediaKeyData1(keyType, false)));
    }
}

TEST_F(MediaKeyTapTest, TimeoutDisableReenablesTheTapAndPassesTheEvent) {
    ASSERT_TRUE(tap.start());
    system->disableSilently();
    system->clearCalls();
    EXPECT_FALSE(system->deliver(TapEventType::disabledByTimeout, std::nullopt));
    EXPECT_EQ(system->calls(), Strings{"enable 1 on"});
    EXPECT_TRUE(system->liveTapIsEnabled());
}

TEST_F(MediaKeyTapTest, UserInputDisableReenablesTheTap) {
    ASSERT_TRUE(tap.start());
    system->disableSilently();
    EXPECT_FALSE(system->deliver(TapEventType::disabledByUserInput, std::nullopt));
    EXPECT_TRUE(system->liveTapIsEnabled());
}

TEST_F(MediaKeyTapTest, LateTimeoutAfterStopPassesWithoutTouchingTheSystem) {
    ASSERT_TRUE(tap.start());
    tap.stop();
    system->clearCalls();
    EXPECT_FALSE(system->deliver(TapEventType::disabledByTimeout, std::nullopt));
    EXPECT_TRUE(system->calls().empty());
}

TEST_F(MediaKeyTapTest, SystemDefinedEventOfAnotherSubtypePasses) {
    takeEveryKey();
    ASSERT_TRUE(tap.start());
    EXPECT_FALSE(system->deliver(TapEventType::systemDefined, SystemDefinedFields{7, mediaKeyData1(playKey, true)}));
    EXPECT_TRUE(asked.empty());
}

TEST_F(MediaKeyTapTest, VolumeKeyOfTheMediaSubtypePasses) {
    takeEveryKey();
    ASSERT_TRUE(tap.start());
    EXPECT_FALSE(system->deliverMediaKey(mediaKeyData1(0, true)));   // sound up
    EXPECT_FALSE(system->deliverMediaKey(mediaKeyData1(7, true)));   // mute
    EXPECT_FALSE(system->deliverMediaKey(mediaKeyData1(21, true)));  // just past rewind
    EXPECT_TRUE(asked.empty());
}

TEST_F(MediaKeyTapTest, UnreadableSystemDefinedEventPasses) {
    takeEveryKey();
    ASSERT_TRUE(tap.start());
    EXPECT_FALSE(system->deliver(TapEventType::systemDefined, std::nullopt));
    EXPECT_TRUE(asked.empty());
}

TEST_F(MediaKeyTapTest, OtherEventTypesPassWithoutBeingRead) {
    takeEveryKey();
    ASSERT_TRUE(tap.start());
    bool read = false;
    EXPECT_FALSE(tap.dropsEvent(10u, [&] {
        read = true;
        return std::optional<SystemDefinedFields>(SystemDefinedFields{8, mediaKeyData1(playKey, true)});
    }));
    EXPECT_FALSE(read);
}

// What the platform callback relies on: it hands over the event's type and a
// reader, and the fields (which the platform can read only for system-defined
// events) are read once, and only for a system-defined event with a tap
// behind the user data.
TEST_F(MediaKeyTapTest, TheCallbackReadsFieldsOnlyForSystemDefinedEventsAndOnce) {
    takeEveryKey();
    ASSERT_TRUE(tap.start());
    int reads = 0;
    const auto reader = [&] {
        ++reads;
        return std::optional<SystemDefinedFields>(SystemDefinedFields{8, mediaKeyData1(playKey, true)});
    };
    for (const std::uint32_t type : {0u, 1u, 10u, 11u, 12u, 13u, 15u, TapEventType::disabledByTimeout,
                                     TapEventType::disabledByUserInput}) {
        EXPECT_FALSE(MediaKeyTap::dropsEvent(&tap, type, reader));
    }
    EXPECT_EQ(reads, 0);
    EXPECT_FALSE(MediaKeyTap::dropsEvent(nullptr, TapEventType::systemDefined, reader));
    EXPECT_EQ(reads, 0);
    EXPECT_TRUE(MediaKeyTap::dropsEvent(&tap, TapEventType::systemDefined, reader));
    EXPECT_EQ(reads, 1);
}

TEST_F(MediaKeyTapTest, NullUserDataLetsTheEventPass) {
    EXPECT_FALSE(MediaKeyTap::dropsEvent(nullptr, TapEventType::systemDefined, [] {
        return std::optional<SystemDefinedFields>(SystemDefinedFields{8, mediaKeyData1(playKey, true)});
    }));
}

TEST_F(MediaKeyTapTest, SilentlyDisabledTapIsRevived) {
    ASSERT_TRUE(tap.start());
    EXPECT_FALSE(tap.reviveIfDisabled());
    system->disableSilently();
    EXPECT_TRUE(tap.reviveIfDisabled());
    EXPECT_TRUE(system->liveTapIsEnabled());
}

TEST_F(MediaKeyTapTest, ReviveWithoutATapDoesNothing) {
    EXPECT_FALSE(tap.reviveIfDisabled());
    EXPECT_TRUE(system->calls().empty());
}

// The callback is entered from the window server's C callback: nothing may
// throw out of it.
static_assert(noexcept(std::declval<MediaKeyTap&>().dropsEvent(
    0u, [] { return std::optional<SystemDefinedFields>(); })));
static_assert(noexcept(MediaKeyTap::dropsEvent(nullptr, 0u, [] { return std::optional<SystemDefinedFields>(); })));

TEST_F(MediaKeyTapTest, HandlerThatThrowsLetsTheKeyPassAndIsLogged) {
    tap.onKey = [](MediaKey) -> bool { throw std::runtime_error("handler broke"); };
    ASSERT_TRUE(tap.start());
    bool dropped = true;
    EXPECT_NO_THROW(dropped = system->deliverMediaKey(mediaKeyData1(playKey, true)));
    EXPECT_FALSE(dropped);
    EXPECT_EQ(logger->lines(), Strings{std::string(MediaKeyTap::handlingFailedMessage)});
    // Nothing was remembered: the release passes too.
    EXPECT_TRUE(tap.gate().swallowedKeyCodes().empty());
    EXPECT_FALSE(system->deliverMediaKey(mediaKeyData1(playKey, false)));
}

TEST_F(MediaKeyTapTest, FieldReaderThatThrowsLetsTheEventPass) {
    takeEveryKey();
    ASSERT_TRUE(tap.start());
    EXPECT_FALSE(tap.dropsEvent(TapEventType::systemDefined, []() -> std::optional<SystemDefinedFields> {
        throw std::bad_alloc();
    }));
    EXPECT_TRUE(asked.empty());
    EXPECT_EQ(logger->lines().size(), 1u);
}

TEST_F(MediaKeyTapTest, EmptyHandlerLetsEveryMediaKeyPass) {
    tap.onKey = nullptr;
    ASSERT_TRUE(tap.start());
    EXPECT_FALSE(system->deliverMediaKey(mediaKeyData1(playKey, true)));
    EXPECT_FALSE(system->deliverMediaKey(mediaKeyData1(playKey, false)));
    EXPECT_TRUE(logger->lines().empty());
}

TEST_F(MediaKeyTapTest, CallbackOffTheMainThreadStopsTheProcess) {
    takeEveryKey();
    ASSERT_TRUE(tap.start());
    EXPECT_DEATH(testsupport::offTheMainThread([&] { system->deliverMediaKey(mediaKeyData1(playKey, true)); }),
                 testsupport::mainThreadFault);
}

}  // namespace
}  // namespace tolvane
