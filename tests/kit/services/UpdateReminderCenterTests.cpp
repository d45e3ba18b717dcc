#include "OrvikKit/UpdateReminderCenter.h"

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

#include "TestSupport/FakeSystemServices.h"
#include "TestSupport/ManualMainThread.h"
#include "TestSupport/OffTheMainThread.h"

namespace orvik {
namespace {

using testsupport::FakeURLOpener;
using testsupport::ManualMainThread;

// 2026-01-01 00:00 UTC.
constexpr Date start = dateFromSecondsSince1970(1767225600.0);
constexpr Seconds oneHour{3600.0};
constexpr Seconds oneDay{86400.0};
constexpr Seconds period{2592000.0};

class UpdateReminderCenterTest : public testing::Test {
protected:
    std::shared_ptr<ManualMainThread> mainThread = std::make_shared<ManualMainThread>();
    std::shared_ptr<InMemoryPreferenceStore> store = std::make_shared<InMemoryPreferenceStore>();
    std::shared_ptr<FakeURLOpener> opener = std::make_shared<FakeURLOpener>();
    // The wall clock: `start` when the test begins, then moving with the
    // main thread's virtual clock.
    int clockReadings = 0;

    Date wallNow() const { return start + mainThread->now(); }

    std::shared_ptr<UpdateReminderCenter> makeCenter(std::string version = "1.0") {
        return UpdateReminderCenter::create(
            "tolvane", std::move(version), store,
            [this] {
                ++clockReadings;
                return wallNow();
            },
            opener, mainThread);
    }

    void storePeriod(std::string version, Date since) {
        store->write(UpdateReminder::versionPreference, std::optional<std::string>(std::move(version)));
        store->write(UpdateReminder::sincePreference, std::optional<double>(secondsSince1970(since)));
    }
    std::optional<std::string> storedVersion() const { return store->read(UpdateReminder::versionPreference); }
    std::optional<Date> storedSince() const {
        const auto seconds = store->read(UpdateReminder::sincePreference);
        return seconds ? std::optional<Date>(dateFromSecondsSince1970(*seconds)) : std::nullopt;
    }
};

// Records every value a flag publishes, the current one first.
struct FlagRecorder {
    std::vector<bool> values;
    Subscription subscription;

    explicit FlagRecorder(Published<bool>& flag)
        : subscription(flag.subscribe([this](const bool& value) { values.push_back(value); })) {}
};

TEST_F(UpdateReminderCenterTest, FirstStartWritesBothKeysAndIsNotDue) {
    const auto center = makeCenter("1.0");
    EXPECT_EQ(storedVersion(), "1.0");
    EXPECT_EQ(storedSince(), start);
    EXPECT_FALSE(center->updateReminderDue.get());
    EXPECT_TRUE(center->hasReminder());
    EXPECT_EQ(center->app(), "tolvane");
    EXPECT_EQ(center->version(), "1.0");
}

TEST_F(UpdateReminderCenterTest, FlagIsComputedAtStartForAPeriodThatRanOutWhileTheAppWasClosed) {
    storePeriod("1.0", start - period - oneDay);
    const auto center = makeCenter("1.0");
    EXPECT_TRUE(center->updateReminderDue.get());
    EXPECT_EQ(mainThread->pendingTaskCount(), 0u);
}

TEST_F(UpdateReminderCenterTest, PeriodEndingExactlyAtStartIsDueAtStart) {
    storePeriod("1.0", start - period);
    EXPECT_TRUE(makeCenter("1.0")->updateReminderDue.get());
}

TEST_F(UpdateReminderCenterTest, PeriodOneSecondShortOfItsEndIsNotDueAtStart) {
    storePeriod("1.0", start - period + Seconds(1.0));
    EXPECT_FALSE(makeCenter("1.0")->updateReminderDue.get());
}

TEST_F(UpdateReminderCenterTest, RefresherRunsHourlyFirstOneIntervalAfterCreation) {
    const auto center = makeCenter();
    ASSERT_EQ(mainThread->timerRequests().size(), 1u);
    EXPECT_EQ(mainThread->timerRequests()[0].delay, Duration(3600.0));
    EXPECT_EQ(mainThread->timerRequests()[0].leeway, Duration(360.0));

    const int readingsAtStart = clockReadings;
    mainThread->advance(oneHour - Seconds(1.0));
    EXPECT_EQ(clockReadings, readingsAtStart);
    mainThread->advance(Seconds(1.0));
    EXPECT_EQ(clockReadings, readingsAtStart + 1);
    mainThread->advance(oneHour * 5.0);
    EXPECT_EQ(clockReadings, readingsAtStart + 6);
}

TEST_F(UpdateReminderCenterTest, FlagFallsDueAtTheFirstRefreshAfterThePeriodRunsOut) {
    // The period began half an hour before this start, so it runs out half
    // an hour before the 720th hourly refresh.
    storePeriod("1.0", start - oneHour / 2.0);
    const auto center = makeCenter("1.0");
    FlagRecorder recorder(center->updateReminderDue);

    mainThread->advance(period - oneHour / 2.0);  // the period has just run out
    EXPECT_FALSE(center->updateReminderDue.get());
    mainThread->advance(oneHour / 2.0 - Seconds(1.0));
    EXPECT_FALSE(center->updateReminderDue.get());
    mainThread->advance(Seconds(1.0));  // the refresh at 720 hours
    EXPECT_TRUE(center->updateReminderDue.get());
    EXPECT_EQ(recorder.values, (std::vector<bool>{false, true}));
}

TEST_F(UpdateReminderCenterTest, FirstStartFallsDueExactlyThirtyDaysLater) {
    const auto center = makeCenter("1.0");
    mainThread->advance(period - Seconds(1.0));
    EXPECT_FALSE(center->updateReminderDue.get());
    mainThread->advance(Seconds(1.0));  // the 720th refresh, at exactly 2592000 seconds
    EXPECT_TRUE(center->updateReminderDue.get());
}

TEST_F(UpdateReminderCenterTest, RefreshPublishesOnlyChanges) {
    const auto center = makeCenter("1.0");
    FlagRecorder recorder(center->updateReminderDue);
    mainThread->advance(oneDay * 10.0);
    center->refresh();
    EXPECT_EQ(recorder.values, (std::vector<bool>{false}));

    mainThread->advance(oneDay * 21.0);
    center->refresh();
    center->refresh();
    EXPECT_EQ(recorder.values, (std::vector<bool>{false, true}));
}

TEST_F(UpdateReminderCenterTest, RefreshTurnsTheFlagOffWhenThePeriodWasRestartedElsewhere) {
    storePeriod("1.0", start - period);
    const auto center = makeCenter("1.0");
    ASSERT_TRUE(center->updateReminderDue.get());
    storePeriod("1.0", start);  // as another copy of the app would after a dismissal
    center->refresh();
    EXPECT_FALSE(center->updateReminderDue.get());
}

TEST_F(UpdateReminderCenterTest, NewVersionOverADuePeriodStartsAFreshOneAndIsNotDue) {
    storePeriod("1.0", start - period - oneDay);
    const auto center = makeCenter("1.1");
    EXPECT_FALSE(center->updateReminderDue.get());
    EXPECT_EQ(storedVersion(), "1.1");
    EXPECT_EQ(storedSince(), start);
}

TEST_F(UpdateReminderCenterTest, StoredStartLaterThanNowRestartsThePeriodAtNow) {
    storePeriod("1.0", start + oneDay);
    const auto center = makeCenter("1.0");
    EXPECT_EQ(storedSince(), start);
    EXPECT_FALSE(center->updateReminderDue.get());
}

TEST_F(UpdateReminderCenterTest, SameVersionWithoutStartDateRestartsThePeriodAtNow) {
    store->write(UpdateReminder::versionPreference, std::optional<std::string>("1.0"));
    const auto center = makeCenter("1.0");
    EXPECT_EQ(storedSince(), start);
    EXPECT_EQ(storedVersion(), "1.0");
}

TEST_F(UpdateReminderCenterTest, DismissingWhenNotDueStillRestartsThePeriod) {
    const auto center = makeCenter("1.0");
    mainThread->advance(oneDay * 10.0);
    center->dismissUpdateReminder();
    EXPECT_EQ(storedSince(), start + oneDay * 10.0);
    EXPECT_FALSE(center->updateReminderDue.get());
    EXPECT_TRUE(opener->opened().empty());

    // Thirty days after the start it is not due: the period now ends thirty
    // days after the dismissal.
    mainThread->advance(oneDay * 21.0);
    EXPECT_FALSE(center->updateReminderDue.get());
    mainThread->advance(oneDay * 9.0 + oneHour);
    EXPECT_TRUE(center->updateReminderDue.get());
}

TEST_F(UpdateReminderCenterTest, AnUpdatesPageThatIsNotAURLStopsTheProcess) {
    const auto center = makeCenter("1.0");
    opener->unparsable = {UpdateReminder::updatesPageAddress("tolvane", "1.0")};
    EXPECT_DEATH(center->checkForUpdates(), "updates-page address does not parse");
}

TEST_F(UpdateReminderCenterTest, DismissingWhenDueTurnsTheFlagOffAndRestartsThePeriod) {
    storePeriod("1.0", start - period - oneDay);
    const auto center = makeCenter("1.0");
    FlagRecorder recorder(center->updateReminderDue);
    center->dismissUpdateReminder();
    EXPECT_EQ(recorder.values, (std::vector<bool>{true, false}));
    EXPECT_EQ(storedSince(), start);
    mainThread->advance(oneDay * 29.0);
    EXPECT_FALSE(center->updateReminderDue.get());
}

TEST_F(UpdateReminderCenterTest, CheckingForUpdatesOpensTheUpdatesPageForTheAppAndVersion) {
    const auto center = makeCenter("1.2");
    center->checkForUpdates();
    EXPECT_EQ(opener->opened(), (std::vector<std::string>{"https://orvik.app/updates/?app=tolvane&version=1.2"}));
}

TEST_F(UpdateReminderCenterTest, UpdatesPageCarriesTheDevVersionAsItStands) {
    const auto center = makeCenter("dev");
    center->checkForUpdates();
    EXPECT_EQ(opener->opened(), (std::vector<std::string>{"https://orvik.app/updates/?app=tolvane&version=dev"}));
}

TEST_F(UpdateReminderCenterTest, CheckingForUpdatesWhenNotDueStillRestartsThePeriod) {
    const auto center = makeCenter("1.0");
    mainThread->advance(oneDay * 3.0);
    center->checkForUpdates();
    EXPECT_EQ(storedSince(), start + oneDay * 3.0);
    EXPECT_FALSE(center->updateReminderDue.get());
}

TEST_F(UpdateReminderCenterTest, CheckingForUpdatesWhenDueTurnsTheFlagOffAndRestartsThePeriod) {
    storePeriod("1.0", start - period);
    const auto center = makeCenter("1.0");
    FlagRecorder recorder(center->updateReminderDue);
    mainThread->advance(oneHour / 2.0);
    center->checkForUpdates();
    EXPECT_EQ(recorder.values, (std::vector<bool>{true, false}));
    EXPECT_EQ(storedSince(), start + oneHour / 2.0);
    EXPECT_EQ(opener->opened().size(), 1u);
}

TEST_F(UpdateReminderCenterTest, APageThatFailsToOpenStillRestartsThePeriod) {
    storePeriod("1.0", start - period);
    opener->opensByDefault = false;
    const auto center = makeCenter("1.0");
    mainThread->advance(oneHour);
    center->checkForUpdates();
    EXPECT_EQ(opener->opened().size(), 1u);
    EXPECT_EQ(storedSince(), start + oneHour);
    EXPECT_FALSE(center->updateReminderDue.get());
}

TEST_F(UpdateReminderCenterTest, ActionsAssignFalseEvenWhenTheFlagIsFalseAlready) {
    const auto center = makeCenter("1.0");
    FlagRecorder recorder(center->updateReminderDue);
    center->dismissUpdateReminder();
    center->checkForUpdates();
    EXPECT_EQ(recorder.values, (std::vector<bool>{false, false, false}));
}

TEST_F(UpdateReminderCenterTest, ReleasingTheCentreEndsTheRefreshing) {
    auto center = makeCenter("1.0");
    const int readingsAtStart = clockReadings;
    EXPECT_EQ(mainThread->pendingTimerCount(), 1u);
    center.reset();
    EXPECT_EQ(mainThread->pendingTimerCount(), 0u);
    mainThread->advance(period + oneDay);
    EXPECT_EQ(clockReadings, readingsAtStart);
}

TEST_F(UpdateReminderCenterTest, RefresherDoesNotKeepTheCentreAlive) {
    auto center = makeCenter("1.0");
    const std::weak_ptr<UpdateReminderCenter> weak = center;
    mainThread->advance(oneHour * 3.0);
    center.reset();
    EXPECT_TRUE(weak.expired());
}

TEST_F(UpdateReminderCenterTest, PreviewKeepsItsTrueFlagUntilAnActionSetsItFalse) {
    const auto center = UpdateReminderCenter::preview("tolvane", true);
    EXPECT_FALSE(center->hasReminder());
    EXPECT_EQ(mainThread->pendingTimerCount(), 0u);
    mainThread->advance(period * 2.0);
    EXPECT_TRUE(center->updateReminderDue.get());

    center->dismissUpdateReminder();
    EXPECT_FALSE(center->updateReminderDue.get());
}

TEST_F(UpdateReminderCenterTest, PreviewCheckOnlySetsTheFlag) {
    const auto center = UpdateReminderCenter::preview("tolvane", true);
    FlagRecorder recorder(center->updateReminderDue);
    center->checkForUpdates();
    EXPECT_EQ(recorder.values, (std::vector<bool>{true, false}));
}

TEST_F(UpdateReminderCenterTest, PreviewIsNotDueUnlessAsked) {
    const auto center = UpdateReminderCenter::preview("tolvane");
    EXPECT_FALSE(center->updateReminderDue.get());
    EXPECT_EQ(center->app(), "tolvane");
    EXPECT_TRUE(center->version().empty());
}

TEST_F(UpdateReminderCenterTest, RefreshingAPreviewComputesFalseAsItHasNoReminder) {
    const auto center = UpdateReminderCenter::preview("tolvane", true);
    center->refresh();
    EXPECT_FALSE(center->updateReminderDue.get());
}

// --- Main thread -----------------------------------------------------------------------

using testsupport::mainThreadFault;
using testsupport::offTheMainThread;

TEST_F(UpdateReminderCenterTest, EachOperationOffTheMainThreadStopsTheProcess) {
    const auto center = makeCenter();
    EXPECT_DEATH(offTheMainThread([&] { center->refresh(); }), mainThreadFault);
    EXPECT_DEATH(offTheMainThread([&] { center->checkForUpdates(); }), mainThreadFault);
    EXPECT_DEATH(offTheMainThread([&] { center->dismissUpdateReminder(); }), mainThreadFault);
}

TEST_F(UpdateReminderCenterTest, APreviewGivenTheMainThreadAssertsItToo) {
    const auto center = UpdateReminderCenter::preview("tolvane", true, mainThread);
    EXPECT_DEATH(offTheMainThread([&] { center->checkForUpdates(); }), mainThreadFault);
    center->dismissUpdateReminder();  // on the main thread: fine
    EXPECT_FALSE(center->updateReminderDue.get());
}

TEST(UpdateReminderCenterClockTest, SystemNowIsTheSystemClock) {
    const auto before = std::chrono::system_clock::now();
    const Date now = UpdateReminderCenter::systemNow();
    const auto after = std::chrono::system_clock::now();
    EXPECT_GE(now, Date(before));
    EXPECT_LE(now, Date(after));
}

}  // namespace
}  // namespace orvik
