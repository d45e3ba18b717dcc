#include "OrvikKit/HotKeys.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>
#include <limits>
#include <memory>
#include <set>
#include <thread>
#include <vector>

#include "TestSupport/FakeHotKeySystem.h"
#include "TestSupport/ManualMainThread.h"

namespace orvik {
namespace {

using testsupport::FakeHotKeySystem;
using testsupport::ManualMainThread;

enum class Action { playPause, next, previous, mute };

constexpr std::uint32_t controlOptionCommand = Shortcut::control | Shortcut::option | Shortcut::command;
constexpr Shortcut controlOptionCommandP{.keyCode = 35, .modifiers = controlOptionCommand};
constexpr Shortcut controlOptionCommandRight{.keyCode = KeyCode::rightArrow, .modifiers = controlOptionCommand};
constexpr Shortcut controlOptionCommandLeft{.keyCode = KeyCode::leftArrow, .modifiers = controlOptionCommand};
constexpr Shortcut shiftM{.keyCode = 46, .modifiers = Shortcut::shift};
constexpr Shortcut plainM{.keyCode = 46, .modifiers = 0};

constexpr HotKeyEvent ownEvent(std::uint32_t number) {
    return HotKeyEvent{.hotKeyID = HotKeyID{.signature = hotKeySignature, .id = number}};
}

// --- Signature and statuses ----------------------------------------------------

TEST(HotKeySignatureTest, IsOrhkAsAFourCharacterCode) {
    EXPECT_EQ(hotKeySignature, 0x4F72686Bu);
    EXPECT_EQ(fourCharCode("hkid"), 0x686B6964u);
    EXPECT_EQ(fourCharCode("keyb"), 0x6B657962u);
}

TEST(HotKeySignatureTest, StatusesAreThePlatformValues) {
    EXPECT_EQ(HotKeyStatus::handled, 0);
    EXPECT_EQ(HotKeyStatus::eventNotHandled, -9874);
}

// --- Dispatcher ---------------------------------------------------------------------

class HotKeyDispatcherTest : public testing::Test {
protected:
    ManualMainThread mainThread;
    FakeHotKeySystem system;
    HotKeyDispatcher dispatcher{system, mainThread};
    std::vector<std::uint32_t> fired;

    std::optional<std::uint32_t> registerKey(std::uint32_t keyCode, std::uint32_t tag) {
        return dispatcher.registerHotKey(keyCode, controlOptionCommand, [this, tag] { fired.push_back(tag); });
    }
};

TEST_F(HotKeyDispatcherTest, StartsWithNoHandlerAndNumberOne) {
    EXPECT_FALSE(dispatcher.handlerInstalled());
    EXPECT_EQ(dispatcher.nextID(), 1u);
    EXPECT_EQ(dispatcher.entryCount(), 0u);
    EXPECT_EQ(system.installAttempts, 0u);
}

TEST_F(HotKeyDispatcherTest, NumbersStartAtOneAndRegisterWithTheKitsSignature) {
    EXPECT_EQ(registerKey(35, 100), 1u);
    EXPECT_EQ(registerKey(KeyCode::rightArrow, 200), 2u);
    ASSERT_EQ(system.registrations.size(), 2u);
    EXPECT_EQ(system.registrations[0].keyCode, 35u);
    EXPECT_EQ(system.registrations[0].modifiers, controlOptionCommand);
    EXPECT_EQ(system.registrations[0].id, (HotKeyID{.signature = hotKeySignature, .id = 1}));
    EXPECT_EQ(system.registrations[1].id, (HotKeyID{.signature = hotKeySignature, .id = 2}));
    EXPECT_EQ(dispatcher.nextID(), 3u);
    EXPECT_TRUE(dispatcher.contains(1));
    EXPECT_TRUE(dispatcher.contains(2));
}

TEST_F(HotKeyDispatcherTest, InstallsTheEventHandlerOnceForItself) {
    registerKey(35, 100);
    registerKey(36, 200);
    EXPECT_EQ(system.installAttempts, 1u);
    EXPECT_EQ(system.installedFor, &dispatcher);
    EXPECT_TRUE(dispatcher.handlerInstalled());
}

TEST_F(HotKeyDispatcherTest, AFailedInstallationIsTriedAgainAtTheNextRegistration) {
    system.installSucceeds = false;
    EXPECT_EQ(registerKey(35, 100), 1u);  // the hot key itself still registers
    EXPECT_FALSE(dispatcher.handlerInstalled());
    EXPECT_EQ(system.installAttempts, 1u);

    system.installSucceeds = true;
    EXPECT_EQ(registerKey(36, 200), 2u);
    EXPECT_TRUE(dispatcher.handlerInstalled());
    EXPECT_EQ(system.installAttempts, 2u);

    registerKey(37, 300);
    EXPECT_EQ(system.installAttempts, 2u);
}

TEST_F(HotKeyDispatcherTest, ARefusedRegistrationUsesUpItsNumber) {
    system.refusedKeyCodes = {35};
    EXPECT_EQ(registerKey(35, 100), std::nullopt);
    EXPECT_FALSE(dispatcher.contains(1));
    EXPECT_EQ(dispatcher.nextID(), 2u);
    EXPECT_EQ(registerKey(36, 200), 2u);
    EXPECT_EQ(dispatcher.entryCount(), 1u);
}

TEST_F(HotKeyDispatcherTest, FireCallsTheHandlerOfThatNumberOnly) {
    registerKey(35, 100);
    registerKey(36, 200);
    dispatcher.fire(2);
    dispatcher.fire(1);
    dispatcher.fire(2);
    EXPECT_EQ(fired, (std::vector<std::uint32_t>{200, 100, 200}));
}

TEST_F(HotKeyDispatcherTest, UnknownNumbersAreIgnored) {
    registerKey(35, 100);
    dispatcher.fire(0);
    dispatcher.fire(7);
    dispatcher.unregisterHotKey(7);
    EXPECT_TRUE(fired.empty());
    EXPECT_TRUE(system.unregistered.empty());
}

TEST_F(HotKeyDispatcherTest, UnregisterRemovesTheSystemHotKeyAndTheEntry) {
    registerKey(35, 100);
    registerKey(36, 200);
    dispatcher.unregisterHotKey(1);
    EXPECT_EQ(system.unregistered.size(), 1u);
    EXPECT_EQ(system.liveHotKeys(), (std::vector<HotKeyID>{{.signature = hotKeySignature, .id = 2}}));
    EXPECT_FALSE(dispatcher.contains(1));
    dispatcher.fire(1);
    EXPECT_TRUE(fired.empty());
    dispatcher.unregisterHotKey(1);
    EXPECT_EQ(system.unregistered.size(), 1u);
}

TEST_F(HotKeyDispatcherTest, AHandlerMayUnregisterItsOwnHotKey) {
    std::uint32_t number = 0;
    int calls = 0;
    number = *dispatcher.registerHotKey(35, controlOptionCommand, [&] {
        ++calls;
        dispatcher.unregisterHotKey(number);
    });
    dispatcher.fire(number);
    dispatcher.fire(number);
    EXPECT_EQ(calls, 1);
    EXPECT_EQ(system.liveCount(), 0u);
}

TEST_F(HotKeyDispatcherTest, NumbersRunUpToTheLastBeforeTheLimit) {
    HotKeyDispatcher nearTheEnd(system, mainThread, 4294967293u);
    EXPECT_EQ(nearTheEnd.registerHotKey(35, controlOptionCommand, [] {}), 4294967293u);
    EXPECT_EQ(nearTheEnd.registerHotKey(36, controlOptionCommand, [] {}), 4294967294u);
    EXPECT_EQ(nearTheEnd.nextID(), std::numeric_limits<std::uint32_t>::max());
}

TEST(HotKeyDispatcherDeathTest, RunningPastTheLastNumberStopsTheProcess) {
    EXPECT_DEATH(
        {
            ManualMainThread mainThread;
            FakeHotKeySystem system;
            HotKeyDispatcher dispatcher(system, mainThread, std::numeric_limits<std::uint32_t>::max());
            dispatcher.registerHotKey(35, controlOptionCommand, [] {});
        },
        "hot-key numbers are used up");
}

// --- The event callback's decisions ---------------------------------------------------

class HotKeyEventTest : public HotKeyDispatcherTest {};

TEST_F(HotKeyEventTest, NoEventIsNotHandled) {
    registerKey(35, 100);
    EXPECT_EQ(handleHotKeyEvent(std::nullopt, dispatcher), -9874);
    EXPECT_TRUE(fired.empty());
}

TEST_F(HotKeyEventTest, AnEventWhoseHotKeyIDCannotBeReadIsNotHandled) {
    registerKey(35, 100);
    EXPECT_EQ(handleHotKeyEvent(HotKeyEvent{.hotKeyID = std::nullopt}, dispatcher), -9874);
    EXPECT_TRUE(fired.empty());
}

TEST_F(HotKeyEventTest, AnotherSignatureIsPassedOnUntouched) {
    registerKey(35, 100);
    const HotKeyEvent foreign{.hotKeyID = HotKeyID{.signature = fourCharCode("Xyzw"), .id = 1}};
    EXPECT_EQ(handleHotKeyEvent(foreign, dispatcher), HotKeyStatus::eventNotHandled);
    EXPECT_TRUE(fired.empty());
}

TEST_F(HotKeyEventTest, TheKitsSignatureFiresTheNumberAndIsHandled) {
    registerKey(35, 100);
    registerKey(36, 200);
    EXPECT_EQ(handleHotKeyEvent(ownEvent(2), dispatcher), HotKeyStatus::handled);
    EXPECT_EQ(fired, (std::vector<std::uint32_t>{200}));
}

TEST_F(HotKeyEventTest, AnUnknownNumberWithTheKitsSignatureIsHandledAndCallsNothing) {
    registerKey(35, 100);
    EXPECT_EQ(handleHotKeyEvent(ownEvent(9), dispatcher), 0);
    EXPECT_TRUE(fired.empty());
}

TEST(HotKeyEventDeathTest, AnEventOffTheMainThreadStopsTheProcess) {
    EXPECT_DEATH(
        {
            ManualMainThread mainThread;
            FakeHotKeySystem system;
            HotKeyDispatcher dispatcher(system, mainThread);
            dispatcher.registerHotKey(35, controlOptionCommand, [] {});
            std::thread([&] { handleHotKeyEvent(ownEvent(1), dispatcher); }).join();
        },
        "main-thread work was called from another thread");
}

TEST(HotKeyEventThreadTest, AForeignEventOffTheMainThreadIsPassedOnWithoutStopping) {
    ManualMainThread mainThread;
    FakeHotKeySystem system;
    HotKeyDispatcher dispatcher(system, mainThread);
    std::int32_t status = 0;
    const HotKeyEvent foreign{.hotKeyID = HotKeyID{.signature = fourCharCode("Xyzw"), .id = 1}};
    std::thread([&] { status = handleHotKeyEvent(foreign, dispatcher); }).join();
    EXPECT_EQ(status, HotKeyStatus::eventNotHandled);
}

// --- Centre -------------------------------------------------------------------------

class HotKeyCenterTest : public HotKeyDispatcherTest {
protected:
    std::shared_ptr<HotKeyCenter<Action>> center = HotKeyCenter<Action>::create(dispatcher);
    std::vector<Action> pressed;

    void SetUp() override {
        center->onPress = [this](const Action& action) { pressed.push_back(action); };
    }

    std::set<std::uint32_t> numbersOf(const HotKeyCenter<Action>& of) const {
        std::set<std::uint32_t> numbers;
        for (const auto& entry : of.ids()) numbers.insert(entry.second);
        return numbers;
    }
};

TEST_F(HotKeyCenterTest, StartsEmpty) {
    EXPECT_FALSE(center->isRegistered());
    EXPECT_TRUE(center->ids().empty());
    EXPECT_TRUE(center->failed().empty());
}

TEST_F(HotKeyCenterTest, RegistersEachShortcutUnderItsIdentifier) {
    center->register_({{Action::playPause, controlOptionCommandP}, {Action::next, controlOptionCommandRight}});
    EXPECT_TRUE(center->isRegistered());
    ASSERT_EQ(center->ids().size(), 2u);
    EXPECT_EQ(numbersOf(*center), (std::set<std::uint32_t>{1, 2}));
    EXPECT_TRUE(center->failed().empty());

    // Each identifier's number was registered with that identifier's keys.
    for (const auto& registration : system.registrations) {
        const Action action = registration.keyCode == 35 ? Action::playPause : Action::next;
        EXPECT_EQ(center->ids().at(action), registration.id.id);
        EXPECT_EQ(registration.modifiers, controlOptionCommand);
    }
}

TEST_F(HotKeyCenterTest, AFiredNumberReachesOnPressWithItsIdentifier) {
    center->register_({{Action::playPause, controlOptionCommandP},
                       {Action::next, controlOptionCommandRight},
                       {Action::previous, controlOptionCommandLeft}});
    EXPECT_EQ(handleHotKeyEvent(ownEvent(center->ids().at(Action::next)), dispatcher), 0);
    EXPECT_EQ(handleHotKeyEvent(ownEvent(center->ids().at(Action::previous)), dispatcher), 0);
    EXPECT_EQ(handleHotKeyEvent(ownEvent(center->ids().at(Action::next)), dispatcher), 0);
    EXPECT_EQ(pressed, (std::vector<Action>{Action::next, Action::previous, Action::next}));
}

TEST_F(HotKeyCenterTest, AShiftOnlyShortcutIsSkippedAndNotFailed) {
    center->register_({{Action::mute, shiftM}, {Action::next, controlOptionCommandRight}});
    EXPECT_EQ(center->ids().size(), 1u);
    EXPECT_TRUE(center->ids().contains(Action::next));
    EXPECT_FALSE(center->ids().contains(Action::mute));
    EXPECT_TRUE(center->failed().empty());
    EXPECT_EQ(system.registrations.size(), 1u);
    EXPECT_EQ(dispatcher.nextID(), 2u);  // no number spent on it
}

TEST_F(HotKeyCenterTest, AShortcutWithNoModifierIsSkippedAndNotFailed) {
    center->register_({{Action::mute, plainM}});
    EXPECT_FALSE(center->isRegistered());
    EXPECT_TRUE(center->failed().empty());
    EXPECT_TRUE(system.registrations.empty());
    EXPECT_EQ(system.installAttempts, 0u);
}

TEST_F(HotKeyCenterTest, ARefusedShortcutIsListedInFailed) {
    system.refusedKeyCodes = {KeyCode::leftArrow};
    center->register_({{Action::previous, controlOptionCommandLeft}, {Action::next, controlOptionCommandRight}});
    EXPECT_EQ(center->failed(), (std::unordered_set<Action>{Action::previous}));
    EXPECT_FALSE(center->ids().contains(Action::previous));
    EXPECT_TRUE(center->ids().contains(Action::next));
    EXPECT_TRUE(center->isRegistered());
}

TEST_F(HotKeyCenterTest, RegisteringAgainReplacesEverythingWithNewNumbers) {
    const HotKeyCenter<Action>::Shortcuts shortcuts{{Action::playPause, controlOptionCommandP},
                                                    {Action::next, controlOptionCommandRight}};
    center->register_(shortcuts);
    const auto firstNumbers = numbersOf(*center);
    center->register_(shortcuts);
    const auto secondNumbers = numbersOf(*center);

    EXPECT_EQ(firstNumbers, (std::set<std::uint32_t>{1, 2}));
    EXPECT_EQ(secondNumbers, (std::set<std::uint32_t>{3, 4}));
    EXPECT_EQ(system.unregistered.size(), 2u);
    EXPECT_EQ(system.liveCount(), 2u);
    for (std::uint32_t old : firstNumbers) {
        EXPECT_FALSE(dispatcher.contains(old));
        EXPECT_EQ(handleHotKeyEvent(ownEvent(old), dispatcher), 0);
    }
    EXPECT_TRUE(pressed.empty());
}

TEST_F(HotKeyCenterTest, NumbersAreNeverReusedAcrossRegistrationsAndFailures) {
    system.refusedKeyCodes = {KeyCode::leftArrow};
    std::set<std::uint32_t> seen;
    for (int round = 0; round < 5; ++round) {
        center->register_({{Action::playPause, controlOptionCommandP},
                           {Action::next, controlOptionCommandRight},
                           {Action::previous, controlOptionCommandLeft}});
        for (std::uint32_t number : numbersOf(*center)) EXPECT_TRUE(seen.insert(number).second) << number;
    }
    std::set<std::uint32_t> asked;
    for (const auto& registration : system.registrations) EXPECT_TRUE(asked.insert(registration.id.id).second);
    EXPECT_EQ(asked.size(), 15u);
    EXPECT_EQ(dispatcher.nextID(), 16u);
}

TEST_F(HotKeyCenterTest, RegisteringAgainClearsTheEarlierFailures) {
    system.refusedKeyCodes = {KeyCode::leftArrow};
    center->register_({{Action::previous, controlOptionCommandLeft}});
    ASSERT_EQ(center->failed().size(), 1u);
    center->register_({{Action::next, controlOptionCommandRight}});
    EXPECT_TRUE(center->failed().empty());
    EXPECT_EQ(center->ids().size(), 1u);
}

TEST_F(HotKeyCenterTest, UnregisterRemovesEveryRegistration) {
    system.refusedKeyCodes = {KeyCode::leftArrow};
    center->register_({{Action::previous, controlOptionCommandLeft}, {Action::next, controlOptionCommandRight}});
    const auto numbers = numbersOf(*center);
    center->unregister();
    EXPECT_FALSE(center->isRegistered());
    EXPECT_TRUE(center->ids().empty());
    EXPECT_TRUE(center->failed().empty());
    EXPECT_EQ(system.liveCount(), 0u);
    EXPECT_EQ(dispatcher.entryCount(), 0u);
    for (std::uint32_t number : numbers) handleHotKeyEvent(ownEvent(number), dispatcher);
    EXPECT_TRUE(pressed.empty());
}

TEST_F(HotKeyCenterTest, AReleasedCentresHotKeysStayRegisteredButCallNothing) {
    center->register_({{Action::next, controlOptionCommandRight}});
    const std::uint32_t number = center->ids().at(Action::next);
    const std::weak_ptr<HotKeyCenter<Action>> weak = center;
    center.reset();
    EXPECT_TRUE(weak.expired());  // the dispatcher's handler does not keep it alive

    EXPECT_EQ(system.liveCount(), 1u);
    EXPECT_TRUE(system.unregistered.empty());
    EXPECT_TRUE(dispatcher.contains(number));
    EXPECT_EQ(handleHotKeyEvent(ownEvent(number), dispatcher), HotKeyStatus::handled);
    EXPECT_TRUE(pressed.empty());
}

TEST_F(HotKeyCenterTest, APressWithoutOnPressDoesNothing) {
    center->onPress = nullptr;
    center->register_({{Action::next, controlOptionCommandRight}});
    EXPECT_EQ(handleHotKeyEvent(ownEvent(center->ids().at(Action::next)), dispatcher), 0);
}

TEST_F(HotKeyCenterTest, CentresOverOneDispatcherKeepTheirOwnNumbersAndCallbacks) {
    const auto other = HotKeyCenter<Action>::create(dispatcher);
    std::vector<Action> otherPressed;
    other->onPress = [&](const Action& action) { otherPressed.push_back(action); };

    center->register_({{Action::next, controlOptionCommandRight}});
    other->register_({{Action::next, controlOptionCommandLeft}});
    EXPECT_NE(center->ids().at(Action::next), other->ids().at(Action::next));

    handleHotKeyEvent(ownEvent(other->ids().at(Action::next)), dispatcher);
    EXPECT_TRUE(pressed.empty());
    EXPECT_EQ(otherPressed, (std::vector<Action>{Action::next}));

    // Unregistering one leaves the other's hot key in place.
    other->unregister();
    handleHotKeyEvent(ownEvent(center->ids().at(Action::next)), dispatcher);
    EXPECT_EQ(pressed, (std::vector<Action>{Action::next}));
}

TEST_F(HotKeyCenterTest, WorksWithStringIdentifiers) {
    const auto named = HotKeyCenter<std::string>::create(dispatcher);
    std::vector<std::string> names;
    named->onPress = [&](const std::string& name) { names.push_back(name); };
    named->register_({{"toggle", controlOptionCommandP}});
    handleHotKeyEvent(ownEvent(named->ids().at("toggle")), dispatcher);
    EXPECT_EQ(names, (std::vector<std::string>{"toggle"}));
}

}  // namespace
}  // namespace orvik
