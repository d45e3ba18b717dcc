#include "OrvikKitCore/UpdateReminder.h"

#include <gtest/gtest.h>

#include <limits>

namespace orvik {
namespace {

// 2026-01-01 00:00 UTC, a fixed start for every test.
constexpr Date start = dateFromSecondsSince1970(1767225600.0);
constexpr Seconds oneSecond{1.0};

class UpdateReminderTest : public testing::Test {
protected:
    std::shared_ptr<InMemoryPreferenceStore> store = std::make_shared<InMemoryPreferenceStore>();

    std::optional<PropertyListValue> stored(std::string_view key) const { return store->object(key); }
};

TEST_F(UpdateReminderTest, IntervalIsThirtyDaysOfSeconds) {
    EXPECT_EQ(UpdateReminder::interval.count(), 2592000);
    EXPECT_EQ(UpdateReminder::interval, std::chrono::hours(24 * 30));
}

TEST_F(UpdateReminderTest, FirstStartWritesVersionAndStart) {
    const UpdateReminder reminder(store, "1.0", start);
    EXPECT_EQ(stored("updateReminderVersion"), PropertyListValue("1.0"));
    EXPECT_EQ(stored("updateReminderSince"), PropertyListValue(1767225600.0));
    EXPECT_EQ(reminder.since(), start);
}

TEST_F(UpdateReminderTest, FirstStartIsNotDueUntilExactlyThirtyDaysHavePassed) {
    const UpdateReminder reminder(store, "1.0", start);
    EXPECT_FALSE(reminder.isDue(start));
    EXPECT_FALSE(reminder.isDue(start + Seconds(2591999.0)));
    EXPECT_FALSE(reminder.isDue(start + UpdateReminder::interval - Seconds(0.001)));
    EXPECT_TRUE(reminder.isDue(start + Seconds(2592000.0)));
    EXPECT_TRUE(reminder.isDue(start + UpdateReminder::interval + oneSecond));
}

TEST_F(UpdateReminderTest, SameVersionKeepsItsPeriodAcrossRestartsAndStaysDue) {
    { const UpdateReminder first(store, "1.0", start); }
    const Date later = start + UpdateReminder::interval + Seconds(86400.0);
    const UpdateReminder again(store, "1.0", later);
    EXPECT_EQ(again.since(), start);
    EXPECT_TRUE(again.isDue(later));
}

TEST_F(UpdateReminderTest, NewVersionOverADuePeriodStartsAFreshOne) {
    { const UpdateReminder old(store, "1.0", start); }
    const Date later = start + UpdateReminder::interval + Seconds(86400.0);
    const UpdateReminder reminder(store, "1.1", later);
    EXPECT_EQ(stored("updateReminderVersion"), PropertyListValue("1.1"));
    EXPECT_EQ(reminder.since(), later);
    EXPECT_FALSE(reminder.isDue(later));
}

TEST_F(UpdateReminderTest, StartInTheFutureRestartsThePeriodAtNow) {
    store->set(PropertyListValue("1.0"), "updateReminderVersion");
    store->set(PropertyListValue(secondsSince1970(start + Seconds(3600.0))), "updateReminderSince");
    const UpdateReminder reminder(store, "1.0", start);
    EXPECT_EQ(reminder.since(), start);
}

TEST_F(UpdateReminderTest, StartEqualToNowIsKept) {
    store->set(PropertyListValue("1.0"), "updateReminderVersion");
    store->set(PropertyListValue(secondsSince1970(start)), "updateReminderSince");
    const UpdateReminder reminder(store, "1.0", start);
    EXPECT_EQ(reminder.since(), start);
}

TEST_F(UpdateReminderTest, SameVersionWithoutStartRestartsAtNow) {
    store->set(PropertyListValue("1.0"), "updateReminderVersion");
    const UpdateReminder reminder(store, "1.0", start);
    EXPECT_EQ(reminder.since(), start);
    EXPECT_EQ(stored("updateReminderVersion"), PropertyListValue("1.0"));
}

TEST_F(UpdateReminderTest, WronglyTypedKeysReadAsAbsentAndStartANewPeriod) {
    store->set(PropertyListValue(std::int64_t{10}), "updateReminderVersion");
    store->set(PropertyListValue("yesterday"), "updateReminderSince");
    const UpdateReminder reminder(store, "10", start);
    EXPECT_EQ(stored("updateReminderVersion"), PropertyListValue("10"));
    EXPECT_EQ(reminder.since(), start);
}

TEST_F(UpdateReminderTest, IntegerStartIsReadAsSeconds) {
    store->set(PropertyListValue("1.0"), "updateReminderVersion");
    store->set(PropertyListValue(std::int64_t{1767225600}), "updateReminderSince");
    const UpdateReminder reminder(store, "1.0", start + oneSecond);
    EXPECT_EQ(reminder.since(), start);
}

TEST_F(UpdateReminderTest, NonFiniteStartCountsAsNoStart) {
    for (double bad : {std::numeric_limits<double>::quiet_NaN(), -std::numeric_limits<double>::infinity()}) {
        store->set(PropertyListValue("1.0"), "updateReminderVersion");
        store->set(PropertyListValue(bad), "updateReminderSince");
        const UpdateReminder reminder(store, "1.0", start);
        EXPECT_EQ(reminder.since(), start);
        EXPECT_FALSE(reminder.isDue(start + oneSecond));
    }
}

TEST_F(UpdateReminderTest, RestartMovesTheStartAndLeavesTheVersion) {
    UpdateReminder reminder(store, "1.0", start);
    const Date dueAt = start + UpdateReminder::interval;
    ASSERT_TRUE(reminder.isDue(dueAt));
    reminder.restart(dueAt);
    EXPECT_EQ(reminder.since(), dueAt);
    EXPECT_FALSE(reminder.isDue(dueAt));
    EXPECT_TRUE(reminder.isDue(dueAt + UpdateReminder::interval));
    EXPECT_EQ(stored("updateReminderVersion"), PropertyListValue("1.0"));
}

TEST_F(UpdateReminderTest, RestartingWhenNotDueStillStartsANewPeriod) {
    UpdateReminder reminder(store, "1.0", start);
    const Date tenDaysLater = start + Seconds(10 * 86400.0);
    reminder.restart(tenDaysLater);
    EXPECT_EQ(reminder.since(), tenDaysLater);
    EXPECT_FALSE(reminder.isDue(start + UpdateReminder::interval));
    EXPECT_TRUE(reminder.isDue(tenDaysLater + UpdateReminder::interval));
}

TEST_F(UpdateReminderTest, NeverDueWithoutAStart) {
    const UpdateReminder reminder(store, "1.0", start);
    store->set(std::nullopt, "updateReminderSince");
    EXPECT_EQ(reminder.since(), std::nullopt);
    EXPECT_FALSE(reminder.isDue(start + Seconds(1e9)));
}

TEST(UpdatesPageAddress, CarriesAppAndVersionInThePathAndQuery) {
    const std::string address = UpdateReminder::updatesPageAddress("tolvane", "1.2");
    EXPECT_EQ(address, std::string(UpdateReminder::updatesSite) + "/updates/?app=tolvane&version=1.2");
    EXPECT_TRUE(address.ends_with("/updates/?app=tolvane&version=1.2"));
}

TEST(UpdatesPageAddress, ValuesAreAppendedWithoutEscaping) {
    EXPECT_TRUE(UpdateReminder::updatesPageAddress("my app", "2.0 beta&x").ends_with("/updates/?app=my app&version=2.0 beta&x"));
}

TEST(UpdatesPageAddress, SiteIsASecureWebAddressWithoutTrailingSlash) {
    EXPECT_TRUE(UpdateReminder::updatesSite.starts_with("https://"));
    EXPECT_FALSE(UpdateReminder::updatesSite.ends_with("/"));
}

}  // namespace
}  // namespace orvik
