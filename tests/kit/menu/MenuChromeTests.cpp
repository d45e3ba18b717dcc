#include "OrvikKit/MenuChrome.h"

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

#include "MenuFooterFixture.h"
#include "TestSupport/FakeSystemServices.h"
#include "TestSupport/ManualMainThread.h"
#include "TestSupport/SnapshotFlag.h"

namespace orvik {
namespace {

using testsupport::FakeLoginItemService;
using testsupport::FakeURLOpener;
using testsupport::ManualMainThread;

// --- Localised texts ---------------------------------------------------------------

TEST(LocalizedTextTest, KitTextsAreInTheKitsTable) {
    const LocalizedText text = kitText("Quit");
    EXPECT_EQ(text.key, "Quit");
    EXPECT_EQ(text.table, "OrvikKit");
    EXPECT_TRUE(text.arguments.empty());
}

TEST(LocalizedTextTest, AppTextsAreInTheMainTable) {
    const LocalizedText text = appText("Keys sent: %@", {"12"});
    EXPECT_EQ(text.table, std::nullopt);
    EXPECT_EQ(text.arguments, (std::vector<std::string>{"12"}));
}

TEST(LocalizedTextTest, UntranslatedTextPutsTheArgumentsIntoTheKey) {
    EXPECT_EQ(kitText("Version %@", {"1.2"}).untranslated(), "Version 1.2");
    EXPECT_EQ(appText("%@ of %@", {"3", "7"}).untranslated(), "3 of 7");
    EXPECT_EQ(appText("100%% sure").untranslated(), "100% sure");
    EXPECT_EQ(appText("left %@ and %@", {"one"}).untranslated(), "left one and %@");
    EXPECT_EQ(appText("ends with %").untranslated(), "ends with %");
    EXPECT_EQ(appText("Version %@", {"%@"}).untranslated(), "Version %@");
}

TEST(LocalizedTextTest, ATranslationIsFilledInByTheSameRule) {
    EXPECT_EQ(kitText("Version %@", {"1.2"}).filledIn("Versión %@"), "Versión 1.2");
    EXPECT_EQ(appText("Keys sent: %lld", {"12"}).filledIn("%lld Tasten gesendet (100%%)"),
              "12 Tasten gesendet (100%)");
    EXPECT_EQ(appText("Quit").filledIn("Beenden"), "Beenden");
}

TEST(LocalizedTextTest, NumberedPlaceholdersTakeTheirOwnArgument) {
    EXPECT_EQ(appText("%@ of %@", {"3", "7"}).filledIn("%2$@中%1$@"), "7中3");
    EXPECT_EQ(appText("%@ of %@", {"3", "7"}).filledIn("%1$@/%1$@"), "3/3");
    EXPECT_EQ(appText("%@", {"x"}).filledIn("%3$@ %#@n@"), "%3$@ %#@n@");
    EXPECT_EQ(appText("%@ and 50%", {"x"}).untranslated(), "x and 50%");
    EXPECT_EQ(appText("%k %@", {"x"}).untranslated(), "%k %@");  // nothing is read after a malformed placeholder
}

TEST(LocalizedTextTest, HandsItsArgumentsToFormattingAsTheKeysPlaceholdersReadThem) {
    using Kind = LocalizedText::FormatArgument::Kind;
    const auto arguments = appText("%@ sent %lld, %ld or %d", {"a", "-12", "7"}).formatArguments();
    EXPECT_FALSE(arguments.has_value());  // four placeholders, three arguments
    const auto two = appText("%2$lld by %1$@", {"Tolvane", "9000000000"}).formatArguments();
    ASSERT_TRUE(two.has_value());
    ASSERT_EQ(two->size(), 2u);
    EXPECT_EQ((*two)[0], (LocalizedText::FormatArgument{.kind = Kind::object, .number = 0, .text = "Tolvane"}));
    EXPECT_EQ((*two)[1], (LocalizedText::FormatArgument{.kind = Kind::longLong, .number = 9000000000, .text = {}}));
    const auto small = appText("%d and %ld", {"-5", "6"}).formatArguments();
    ASSERT_TRUE(small.has_value());
    EXPECT_EQ((*small)[0].kind, Kind::int32);
    EXPECT_EQ((*small)[1].kind, Kind::longInteger);
    EXPECT_FALSE(appText("%d", {"3000000000"}).formatArguments().has_value());  // beyond an int
    EXPECT_FALSE(appText("%lld", {"twelve"}).formatArguments().has_value());
    EXPECT_FALSE(appText("%lld", {""}).formatArguments().has_value());
    EXPECT_FALSE(appText("%f", {"1.5"}).formatArguments().has_value());
    EXPECT_FALSE(appText("%@ %@ %@", {"a", "b", "c"}).formatArguments().has_value());  // more than two
    EXPECT_FALSE(appText("%2$@", {"a", "b"}).formatArguments().has_value());           // argument 1 unread
    EXPECT_EQ(appText("Quit").formatArguments(), std::vector<LocalizedText::FormatArgument>{});
}

// --- Footer -------------------------------------------------------------------------

class MenuFooterTest : public testing_footer::MenuFooterFixture {
protected:
    static void expectQuitRow(const FooterRow& row) {
        EXPECT_EQ(row.title, kitText("Quit"));
        EXPECT_EQ(row.detail, kitText("\u2318Q"));
        EXPECT_EQ(row.shortcut, 'q');
    }
};

TEST_F(MenuFooterTest, WithNeitherCaptionNorUpdateActionShowsTheVersionLineAndQuit) {
    const auto lines = footer(std::nullopt, false).lines();
    EXPECT_EQ(lines.caption, kitText("Version %@", {"1.2"}));
    EXPECT_EQ(lines.caption->untranslated(), "Version 1.2");
    ASSERT_EQ(lines.rows.size(), 1u);
    expectQuitRow(lines.rows[0]);
}

TEST_F(MenuFooterTest, WithAnUpdateActionAndNoCaptionShowsTheVersionOnlyInTheUpdateRow) {
    const auto lines = footer(std::nullopt, true).lines();
    EXPECT_EQ(lines.caption, std::nullopt);
    ASSERT_EQ(lines.rows.size(), 2u);
    EXPECT_EQ(lines.rows[0].title, kitText("Check for Updates"));
    EXPECT_EQ(lines.rows[0].detail, kitText("Version %@", {"1.2"}));
    EXPECT_EQ(lines.rows[0].shortcut, std::nullopt);
    expectQuitRow(lines.rows[1]);
}

TEST_F(MenuFooterTest, WithBothTheCaptionComesFirst) {
    const auto lines = footer(appText("Keys sent: %@", {"1"}), true).lines();
    EXPECT_EQ(lines.caption, appText("Keys sent: %@", {"1"}));
    ASSERT_EQ(lines.rows.size(), 2u);
    EXPECT_EQ(lines.rows[0].title, kitText("Check for Updates"));
    expectQuitRow(lines.rows[1]);
}

TEST_F(MenuFooterTest, ACaptionWithoutUpdateActionReplacesTheVersionLine) {
    const auto lines = footer(appText("Keys sent: %@", {"4"}), false).lines();
    EXPECT_EQ(lines.caption, appText("Keys sent: %@", {"4"}));
    ASSERT_EQ(lines.rows.size(), 1u);
    expectQuitRow(lines.rows[0]);
}

TEST_F(MenuFooterTest, RowsRunTheirActions) {
    const auto lines = footer(std::nullopt, true).lines();
    lines.rows[0].action();
    EXPECT_EQ(checks, 1);
    EXPECT_EQ(quits, 0);
    lines.rows[1].action();
    EXPECT_EQ(quits, 1);
    EXPECT_EQ(checks, 1);
}

TEST_F(MenuFooterTest, TheDevVersionShowsAsItIs) {
    MenuFooter devFooter = footer(std::nullopt, true);
    devFooter.version = "dev";
    EXPECT_EQ(devFooter.lines().rows[0].detail.untranslated(), "Version dev");
}

// --- Cards ----------------------------------------------------------------------------

TEST(PrivacyCardTest, IsPrivateByDesignWithTheGivenItems) {
    const PrivacyCard card{.items = {{.symbol = "network.slash", .text = appText("No internet connection")},
                                     {.symbol = "keyboard", .text = appText("Only sees the media keys")}}};
    EXPECT_EQ(card.title, kitText("Private by design"));
    EXPECT_EQ(card.symbol, "lock.shield.fill");
    ASSERT_EQ(card.items.size(), 2u);
    EXPECT_EQ(card.items[0].symbol, "network.slash");
    EXPECT_EQ(card.items[1].text, appText("Only sees the media keys"));
}

TEST(WarningCardTest, DefaultButtonOpensSystemSettings) {
    int pressed = 0;
    const WarningCard card{.symbol = "hand.raised.fill",
                           .title = appText("Allow Accessibility access"),
                           .message = appText("macOS requires this permission."),
                           .action = [&] { ++pressed; }};
    EXPECT_EQ(card.button, kitText("Open System Settings"));
    card.action();
    EXPECT_EQ(pressed, 1);
}

TEST(WarningCardTest, AGivenButtonLabelIsKept) {
    const WarningCard card{.symbol = "exclamationmark.triangle.fill",
                           .title = appText("Allow controlling Music"),
                           .message = appText("Under Automation, turn on Music."),
                           .button = appText("Show Me"),
                           .action = [] {}};
    EXPECT_EQ(card.button, appText("Show Me"));
}

class UpdateReminderCardTest : public testing::Test {
protected:
    std::shared_ptr<ManualMainThread> mainThread = std::make_shared<ManualMainThread>();
    std::shared_ptr<InMemoryPreferenceStore> store = std::make_shared<InMemoryPreferenceStore>();
    std::shared_ptr<FakeURLOpener> opener = std::make_shared<FakeURLOpener>();
    Date now = dateFromSecondsSince1970(1767225600.0);

    std::shared_ptr<UpdateReminderCenter> dueCenter() {
        store->write(UpdateReminder::versionPreference, std::optional<std::string>("1.0"));
        store->write(UpdateReminder::sincePreference, std::optional<double>(secondsSince1970(now) - 2592000.0));
        auto center = UpdateReminderCenter::create(
            "tolvane", "1.0", store, [this] { return now; }, opener, mainThread);
        EXPECT_TRUE(center->updateReminderDue.get());
        return center;
    }
};

TEST_F(UpdateReminderCardTest, HasTheKitsTextsAndTwoButtons) {
    const auto card = UpdateReminderCard::from(UpdateReminderCenter::preview("tolvane", true));
    EXPECT_EQ(card.symbol, "arrow.down.circle.fill");
    EXPECT_EQ(card.title, kitText("A new version may be out"));
    EXPECT_EQ(card.message, kitText("This app never goes online, so it can't check by itself. Checking on the "
                                    "website takes one click."));
    EXPECT_EQ(card.check.title, kitText("Check"));
    EXPECT_TRUE(card.check.prominent);
    EXPECT_EQ(card.notNow.title, kitText("Not Now"));
    EXPECT_FALSE(card.notNow.prominent);
}

TEST_F(UpdateReminderCardTest, NotNowMakesTheReminderNotDueAndRestartsThePeriod) {
    const auto center = dueCenter();
    const auto card = UpdateReminderCard::from(center);
    now += Seconds(60.0);
    card.notNow.action();
    EXPECT_FALSE(center->updateReminderDue.get());
    EXPECT_EQ(store->read(UpdateReminder::sincePreference), secondsSince1970(now));
    EXPECT_TRUE(opener->opened().empty());
}

TEST_F(UpdateReminderCardTest, CheckOpensTheUpdatesPageAndMakesTheReminderNotDue) {
    const auto center = dueCenter();
    const auto card = UpdateReminderCard::from(center);
    card.check.action();
    EXPECT_FALSE(center->updateReminderDue.get());
    EXPECT_EQ(opener->opened(), (std::vector<std::string>{"https://orvik.app/updates/?app=tolvane&version=1.0"}));
}

// --- Open at login ------------------------------------------------------------------

TEST(OpenAtLoginRowTest, IsThePowerRowOpenAtLogin) {
    EXPECT_EQ(OpenAtLoginRow::symbol, "power");
    EXPECT_EQ(OpenAtLoginRow::title(), kitText("Open at login"));
}

TEST(OpenAtLoginRowTest, ShowsTheStateReadWhenItIsMade) {
    const auto loginItem = std::make_shared<FakeLoginItemService>(true);
    const OpenAtLoginRow row(loginItem);
    EXPECT_TRUE(row.isOn());
    EXPECT_EQ(loginItem->isEnabledCalls, 1u);

    loginItem->enabled = false;
    EXPECT_TRUE(row.isOn());  // read once, when the row is made
    EXPECT_FALSE(OpenAtLoginRow(loginItem).isOn());
}

TEST(OpenAtLoginRowTest, AnAcceptedChangeShowsTheNewState) {
    const auto loginItem = std::make_shared<FakeLoginItemService>(false);
    OpenAtLoginRow row(loginItem);
    row.setOn(true);
    EXPECT_TRUE(row.isOn());
    EXPECT_TRUE(loginItem->enabled);
    row.setOn(false);
    EXPECT_FALSE(row.isOn());
    EXPECT_EQ(loginItem->requests, (std::vector<bool>{true, false}));
}

TEST(OpenAtLoginRowTest, ARefusedChangeSpringsBack) {
    const auto loginItem = std::make_shared<FakeLoginItemService>(false);
    loginItem->refusesChanges = true;  // registration needs the user's approval
    OpenAtLoginRow row(loginItem);
    row.setOn(true);
    EXPECT_EQ(loginItem->requests, (std::vector<bool>{true}));
    EXPECT_FALSE(row.isOn());
}

TEST(OpenAtLoginRowTest, ARefusedRemovalSpringsBackOn) {
    const auto loginItem = std::make_shared<FakeLoginItemService>(true);
    loginItem->refusesChanges = true;
    OpenAtLoginRow row(loginItem);
    row.setOn(false);
    EXPECT_TRUE(row.isOn());
}

TEST(OpenAtLoginRowTest, WhileASnapshotRendersTheRowIsOffIgnoresWritesAndAsksNothing) {
    const testsupport::ScopedSnapshotFlag snapshot(true);
    const auto loginItem = std::make_shared<FakeLoginItemService>(true);
    OpenAtLoginRow row(loginItem);
    EXPECT_FALSE(row.isOn());
    row.setOn(true);
    EXPECT_FALSE(row.isOn());
    EXPECT_EQ(loginItem->isEnabledCalls, 0u);
    EXPECT_TRUE(loginItem->requests.empty());
}

TEST(OpenAtLoginRowTest, WithoutTheSnapshotFlagTheRowReadsTheServiceOnceWhenMade) {
    const auto loginItem = std::make_shared<FakeLoginItemService>(true);
    OpenAtLoginRow row(loginItem);
    EXPECT_TRUE(row.isOn());
    EXPECT_TRUE(row.isOn());
    EXPECT_EQ(loginItem->isEnabledCalls, 1u);
}

}  // namespace
}  // namespace orvik
