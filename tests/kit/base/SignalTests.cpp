#include "OrvikKit/Signal.h"

#include <gtest/gtest.h>

#include <optional>
#include <string>
#include <vector>

namespace orvik {
namespace {

TEST(ChangeSignal, EverySubscriberIsToldOfEverySend) {
    ChangeSignal signal;
    int first = 0;
    int second = 0;
    Subscription one = signal.subscribe([&] { ++first; });
    Subscription two = signal.subscribe([&] { ++second; });
    signal.send();
    signal.send();
    EXPECT_EQ(first, 2);
    EXPECT_EQ(second, 2);
}

TEST(ChangeSignal, ReleasedSubscriptionHearsNothingMore) {
    ChangeSignal signal;
    int calls = 0;
    {
        Subscription subscription = signal.subscribe([&] { ++calls; });
        signal.send();
    }
    signal.send();
    EXPECT_EQ(calls, 1);
    EXPECT_EQ(signal.subscriberCount(), 0u);
}

TEST(ChangeSignal, CancelledSubscriptionHearsNothingMore) {
    ChangeSignal signal;
    int calls = 0;
    Subscription subscription = signal.subscribe([&] { ++calls; });
    subscription.cancel();
    EXPECT_FALSE(subscription.isActive());
    signal.send();
    EXPECT_EQ(calls, 0);
}

TEST(ChangeSignal, HandlerMayEndItsOwnSubscriptionWhileBeingCalled) {
    ChangeSignal signal;
    int calls = 0;
    Subscription subscription;
    subscription = signal.subscribe([&] {
        ++calls;
        subscription.cancel();
    });
    signal.send();
    signal.send();
    EXPECT_EQ(calls, 1);
}

TEST(ChangeSignal, SubscriberEndedByAnEarlierHandlerIsNotCalled) {
    ChangeSignal signal;
    int secondCalls = 0;
    Subscription second;
    Subscription first = signal.subscribe([&] { second.cancel(); });
    second = signal.subscribe([&] { ++secondCalls; });
    signal.send();
    EXPECT_EQ(secondCalls, 0);
}

TEST(ChangeSignal, SubscriberAddedDuringASendWaitsForTheNextSend) {
    ChangeSignal signal;
    int laterCalls = 0;
    Subscription later;
    Subscription first = signal.subscribe([&] {
        if (!later.isActive()) later = signal.subscribe([&] { ++laterCalls; });
    });
    signal.send();
    EXPECT_EQ(laterCalls, 0);
    signal.send();
    EXPECT_EQ(laterCalls, 1);
}

TEST(ChangeSignal, SubscribersAreCalledInTheOrderTheySubscribed) {
    ChangeSignal signal;
    std::vector<int> order;
    Subscription one = signal.subscribe([&] { order.push_back(1); });
    Subscription two = signal.subscribe([&] { order.push_back(2); });
    Subscription three = signal.subscribe([&] { order.push_back(3); });
    signal.send();
    EXPECT_EQ(order, (std::vector<int>{1, 2, 3}));
}

TEST(ChangeSignal, SubscriptionOutlivingItsSignalEndsHarmlessly) {
    Subscription subscription;
    {
        ChangeSignal signal;
        subscription = signal.subscribe([] {});
    }
    subscription.cancel();
    SUCCEED();
}

TEST(ChangeSignal, MovedSubscriptionStaysActiveUntilTheNewOwnerEndsIt) {
    ChangeSignal signal;
    int calls = 0;
    Subscription moved;
    {
        Subscription original = signal.subscribe([&] { ++calls; });
        moved = std::move(original);
    }
    signal.send();
    EXPECT_EQ(calls, 1);
}

TEST(Published, SubscriberGetsTheCurrentValueAtOnceThenEveryAssignment) {
    Published<bool> flag(false);
    std::vector<bool> seen;
    Subscription subscription = flag.subscribe([&](const bool& value) { seen.push_back(value); });
    flag.set(true);
    flag.set(true);
    flag.set(false);
    EXPECT_EQ(seen, (std::vector<bool>{false, true, true, false}));
    EXPECT_FALSE(flag.get());
}

TEST(Published, SubscribersHearTheNewValueBeforeItIsStored) {
    Published<std::string> text("old");
    std::optional<std::string> storedWhenTold;
    Subscription subscription = text.subscribe([&](const std::string&) { storedWhenTold = text.get(); });
    text.set("new");
    EXPECT_EQ(storedWhenTold, "old");
    EXPECT_EQ(text.get(), "new");
}

}  // namespace
}  // namespace orvik
