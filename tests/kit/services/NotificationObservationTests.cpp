#include "OrvikKit/Notifications.h"

#include <gtest/gtest.h>

#include <optional>

#include "TestSupport/FakeNotificationCenter.h"
#include "TestSupport/ManualMainThread.h"
#include "TestSupport/OffTheMainThread.h"

namespace orvik {
namespace {

using testsupport::FakeNotificationCenter;

// Notifications are delivered on the main thread; the virtual-clock fake
// says whether the caller is on it.
testsupport::ManualMainThread mainThread;

TEST(NotificationObservation, HandlerReceivesTheObservedNotification) {
    auto center = std::make_shared<FakeNotificationCenter>();
    std::vector<std::string> received;
    NotificationObservation observation(mainThread, "player", center, [&](const Notification& notification) {
        received.push_back(*notification.userInfo.at("Name").string());
    });
    center->post({"player", {{"Name", "So What"}}});
    center->post({"other", {{"Name", "Ignored"}}});
    EXPECT_EQ(received, std::vector<std::string>{"So What"});
}

TEST(NotificationObservation, ReleasingItThenPostingCallsNoHandler) {
    auto center = std::make_shared<FakeNotificationCenter>();
    int calls = 0;
    {
        NotificationObservation observation(mainThread, "player", center, [&](const Notification&) { ++calls; });
        EXPECT_EQ(center->observerCount("player"), 1u);
    }
    EXPECT_EQ(center->observerCount(), 0u);
    center->post({"player", {}});
    EXPECT_EQ(calls, 0);
}

TEST(NotificationObservation, TwoObservationsOfTheSameNameEachReceiveItOnce) {
    auto center = std::make_shared<FakeNotificationCenter>();
    int first = 0;
    int second = 0;
    NotificationObservation one(mainThread, "player", center, [&](const Notification&) { ++first; });
    NotificationObservation two(mainThread, "player", center, [&](const Notification&) { ++second; });
    center->post({"player", {}});
    EXPECT_EQ(first, 1);
    EXPECT_EQ(second, 1);
}

TEST(NotificationObservation, AsksTheCenterForTheDeliveryItIsGiven) {
    auto center = std::make_shared<FakeNotificationCenter>();
    NotificationObservation standard(mainThread, "player", center, [](const Notification&) {});
    NotificationObservation immediate(mainThread, "player", center, [](const Notification&) {}, Delivery::immediate);
    EXPECT_EQ(center->observerCount("player", Delivery::standard), 1u) << "standard unless asked otherwise";
    EXPECT_EQ(center->observerCount("player", Delivery::immediate), 1u);
}

TEST(NotificationObservation, ObservationKeepsItsCenterAlive) {
    std::weak_ptr<FakeNotificationCenter> weakCenter;
    std::optional<NotificationObservation> observation;
    {
        auto center = std::make_shared<FakeNotificationCenter>();
        weakCenter = center;
        observation.emplace(mainThread, "player", center, [](const Notification&) {});
    }
    EXPECT_FALSE(weakCenter.expired());
    observation.reset();
    EXPECT_TRUE(weakCenter.expired());
}

TEST(NotificationObservation, DeliveryOffTheMainThreadStopsTheProcess) {
    auto center = std::make_shared<FakeNotificationCenter>();
    int calls = 0;
    NotificationObservation observation(mainThread, "player", center, [&](const Notification&) { ++calls; });
    EXPECT_DEATH(testsupport::offTheMainThread([&] { center->post({"player", {}}); }), testsupport::mainThreadFault);
    EXPECT_EQ(calls, 0);
}

}  // namespace
}  // namespace orvik
