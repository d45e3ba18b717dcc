// Reaching the app when its status item is not on screen: where the item is
// (from the facts the platform reports), what the help window says on each
// macOS, how it is laid out, and what reopening the app shows.
#include "OrvikKit/MissingIcon.h"

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

#include "OrvikKit/MenuBarApp.h"
#include "OrvikKit/MenuBarController.h"
#include "TestSupport/FakeContentWindow.h"
#include "TestSupport/FakeStatusItem.h"
#include "TestSupport/FakeSystemServices.h"
#include "TestSupport/FrameExpectations.h"
#include "TestSupport/ManualMainThread.h"
#include "TestSupport/RecordingCanvas.h"

namespace orvik {
namespace {

using testsupport::expectFrame;
using testsupport::FakeContentWindow;
using testsupport::FakeStatusItem;
using testsupport::FakeURLOpener;
using testsupport::ManualMainThread;
using testsupport::render;

constexpr SystemVersion sonoma{14, 6, 1};
constexpr SystemVersion tahoe{26, 1, 0};
constexpr const char* menuBarSettingsURL = "x-apple.systempreferences:com.apple.MenuBarSettings";

// --- Where the item is ------------------------------------------------------------------

StatusItemPlacement shown() { return FakeStatusItem::shownPlacement(); }

// A 14-inch MacBook's screen: 1512 × 982 points, a camera housing 200 points
// wide in the middle of a 32-point menu bar.
ScreenFacts notchedScreen() {
    return ScreenFacts{.frame = {.x = 0, .y = 0, .width = 1512, .height = 982},
                       .topLeftArea = {.x = 0, .y = 950, .width = 656, .height = 32},
                       .topRightArea = {.x = 856, .y = 950, .width = 656, .height = 32}};
}

TEST(IconPlacementTest, AnItemInTheMenuBarIsShown) { EXPECT_EQ(iconPlacement(shown()), IconPlacement::shown); }

TEST(IconPlacementTest, EachMissingFactKeepsTheItemOffScreen) {
    StatusItemPlacement facts = shown();
    facts.hasButton = false;
    EXPECT_EQ(iconPlacement(facts), IconPlacement::noButton);

    facts = shown();
    facts.itemIsVisible = false;
    EXPECT_EQ(iconPlacement(facts), IconPlacement::hiddenByApp);

    facts = shown();
    facts.hasWindow = false;
    EXPECT_EQ(iconPlacement(facts), IconPlacement::notInAWindow);

    facts = shown();
    facts.windowIsVisible = false;
    EXPECT_EQ(iconPlacement(facts), IconPlacement::windowOrderedOut);

    facts = shown();
    facts.windowIsOccluded = true;
    EXPECT_EQ(iconPlacement(facts), IconPlacement::windowOccluded);
}

TEST(IconPlacementTest, DefaultFactsDescribeAnItemThatIsNowhere) {
    EXPECT_EQ(iconPlacement(StatusItemPlacement{}), IconPlacement::noButton);
}

TEST(IconPlacementTest, AnItemParkedAtTheBottomOfTheScreenIsOffTheMenuBarThoughItCallsItselfVisible) {
    // Where macOS 26 puts an item the user has not allowed in the menu bar.
    StatusItemPlacement facts = shown();
    facts.windowFrame = {.x = 0, .y = -5, .width = 38, .height = 22};
    ASSERT_TRUE(facts.itemIsVisible);
    EXPECT_EQ(iconPlacement(facts), IconPlacement::offTheMenuBar);
}

TEST(IconPlacementTest, AnItemJustBelowTheMenuBarOrAboveTheScreenIsOffTheMenuBar) {
    StatusItemPlacement facts = shown();
    facts.windowFrame.y = 900 - 24 - 24.5;  // its middle 36.5 below the top, more than its height
    EXPECT_EQ(iconPlacement(facts), IconPlacement::offTheMenuBar);
    facts.windowFrame.y = 900 - 24 + 12.5;  // its middle above the top edge
    EXPECT_EQ(iconPlacement(facts), IconPlacement::offTheMenuBar);
    facts.windowFrame.y = 900 - 24 + 12;  // its middle on the top edge
    EXPECT_EQ(iconPlacement(facts), IconPlacement::shown);
}

TEST(IconPlacementTest, AnItemOnTheMenuBarOfASecondScreenIsShown) {
    StatusItemPlacement facts = shown();
    facts.screens.push_back(ScreenFacts{.frame = {.x = 1440, .y = 200, .width = 1920, .height = 1080},
                                        .topLeftArea = {},
                                        .topRightArea = {}});
    facts.windowFrame = {.x = 3000, .y = 1256, .width = 30, .height = 24};
    EXPECT_EQ(iconPlacement(facts), IconPlacement::shown);
    facts.windowFrame.x = 1410;  // its middle (1425) left of the second screen and far above the first
    EXPECT_EQ(iconPlacement(facts), IconPlacement::offTheMenuBar);
}

TEST(IconPlacementTest, OnANotchedScreenAnItemBetweenTheAreasBesideTheCameraIsBehindIt) {
    StatusItemPlacement facts = shown();
    facts.screens = {notchedScreen()};
    facts.windowFrame = {.x = 780, .y = 950, .width = 30, .height = 32};
    EXPECT_EQ(iconPlacement(facts), IconPlacement::behindCameraHousing);

    facts.windowFrame.x = 1200;  // right of the housing
    EXPECT_EQ(iconPlacement(facts), IconPlacement::shown);
    facts.windowFrame.x = 841;  // its middle (856) on the right area's edge: half of it can be seen
    EXPECT_EQ(iconPlacement(facts), IconPlacement::shown);
    facts.windowFrame.x = 839;
    EXPECT_EQ(iconPlacement(facts), IconPlacement::behindCameraHousing);
}

TEST(IconPlacementTest, AnItemWithNoFrameOrNoScreenIsOffTheMenuBar) {
    StatusItemPlacement facts = shown();
    facts.windowFrame = {};
    EXPECT_EQ(iconPlacement(facts), IconPlacement::offTheMenuBar);
    facts = shown();
    facts.screens.clear();
    EXPECT_EQ(iconPlacement(facts), IconPlacement::offTheMenuBar);
}

// --- The system's version --------------------------------------------------------------

TEST(SystemVersionTest, OnlyMacOS26AndLaterHaveTheMenuBarAllowList) {
    for (std::int64_t major : {13, 14, 15}) {
        EXPECT_FALSE(hasMenuBarAllowList({major, 0, 0})) << major;
    }
    for (std::int64_t major : {26, 27}) {
        EXPECT_TRUE(hasMenuBarAllowList({major, 0, 0})) << major;
    }
}

TEST(SystemVersionTest, The16ThatMacOS26ReportsToAppsBuiltWithAnOlderSDKCountsAs26) {
    EXPECT_EQ((SystemVersion{16, 0, 0}).releaseMajor(), 26);
    EXPECT_TRUE(hasMenuBarAllowList({16, 0, 0}));
    EXPECT_EQ(sonoma.releaseMajor(), 14);
}

// --- What the window says -------------------------------------------------------------

TEST(MissingIconHelpTest, OnMacOS26ItPointsToMenuBarSettingsAndOpensThem) {
    const MissingIconHelp help = missingIconHelp("Tolvane", tahoe);
    EXPECT_EQ(help.title, kitText("%@ is running, but its icon is hidden", {"Tolvane"}));
    ASSERT_EQ(help.paragraphs.size(), 2u);
    EXPECT_EQ(help.paragraphs[0].untranslated(),
              "macOS shows an app's icon in the menu bar only if the app is allowed there. To bring Tolvane back, "
              "turn it on in System Settings \u203A Menu Bar, under \u201CAllow in the Menu Bar\u201D.");
    EXPECT_EQ(help.paragraphs[1].untranslated(),
              "If it's already on, the menu bar may be too full to fit the icon. To make room, hold down Command "
              "(\u2318) and drag icons you don't need out of the menu bar.");
    for (const LocalizedText& paragraph : help.paragraphs) EXPECT_EQ(paragraph.table, LocalizedText::kitTable);

    ASSERT_EQ(help.buttons.size(), 3u);
    EXPECT_EQ(help.buttons[0], (MissingIconButton{.id = "missingIcon.quit",
                                                  .title = kitText("Quit %@", {"Tolvane"}),
                                                  .action = MissingIconAction::quit,
                                                  .prominent = false}));
    EXPECT_EQ(help.buttons[1], (MissingIconButton{.id = "missingIcon.dismiss",
                                                  .title = kitText("OK"),
                                                  .action = MissingIconAction::dismiss,
                                                  .prominent = false}));
    EXPECT_EQ(help.buttons[2], (MissingIconButton{.id = "missingIcon.menuBarSettings",
                                                  .title = kitText("Open Menu Bar Settings"),
                                                  .action = MissingIconAction::openMenuBarSettings,
                                                  .prominent = true}));
}

TEST(MissingIconHelpTest, OnMacOS13To15ItSaysTheMenuBarMayBeTooFullAndHowToMakeRoom) {
    for (std::int64_t major : {13, 14, 15}) {
        const MissingIconHelp help = missingIconHelp("Tolvane", {major, 0, 0});
        EXPECT_EQ(help.title.untranslated(), "Tolvane is running, but its icon is hidden");
        ASSERT_EQ(help.paragraphs.size(), 2u);
        EXPECT_EQ(help.paragraphs[0].untranslated(),
                  "The menu bar may be too full to show it. This happens most often on a MacBook with a camera "
                  "notch, which leaves less room for icons.");
        EXPECT_EQ(help.paragraphs[1].untranslated(),
                  "To make room, hold down Command (\u2318) and drag icons you don't need out of the menu bar, or "
                  "quit apps whose icons you can do without. You can also remove system icons in System Settings "
                  "\u203A Control Center.");
        ASSERT_EQ(help.buttons.size(), 2u);
        EXPECT_EQ(help.buttons[0].action, MissingIconAction::quit);
        EXPECT_EQ(help.buttons[0].title.untranslated(), "Quit Tolvane");
        EXPECT_EQ(help.buttons[1], (MissingIconButton{.id = "missingIcon.dismiss",
                                                      .title = kitText("OK"),
                                                      .action = MissingIconAction::dismiss,
                                                      .prominent = true}));
    }
}

TEST(MissingIconHelpTest, NoButtonOpensMenuBarSettingsBeforeMacOS26) {
    for (const MissingIconButton& button : missingIconHelp("Tolvane", sonoma).buttons) {
        EXPECT_NE(button.action, MissingIconAction::openMenuBarSettings);
    }
}

// --- How the window is laid out --------------------------------------------------------

TEST(MissingIconViewTest, TheGlyphTextsAndButtonsHaveTheirMeasures) {
    std::vector<MissingIconAction> performed;
    const MissingIconView view{.help = missingIconHelp("Tolvane", tahoe),
                               .state = {},
                               .perform = [&performed](MissingIconAction action) { performed.push_back(action); }};
    const auto rendering = render(view.body());
    EXPECT_NEAR(rendering.root.frame.width, 420, 1e-9);

    // The glyph in the top-left corner inside the padding.
    const auto glyph = rendering.canvas.ofKind(testsupport::DrawOperation::Kind::fill)[0];
    expectFrame(glyph.frame, {20, 20, 56, 56});

    // The title and the paragraphs beside it, 16 further on, in a column of
    // 420 - 2 × 20 - 56 - 16 = 308.
    const auto title = rendering.canvas.find(testsupport::DrawOperation::Kind::text,
                                             "Tolvane is running, but its icon is hidden");
    ASSERT_TRUE(title.has_value());
    EXPECT_EQ(title->font, (Font{15, FontWeight::semibold}));
    EXPECT_NEAR(title->frame.x, 92, 1e-9);
    EXPECT_NEAR(title->frame.y, 20, 1e-9);
    EXPECT_LE(title->frame.width, 308);
    const auto texts = rendering.canvas.ofKind(testsupport::DrawOperation::Kind::text);
    for (const auto& text : texts) {
        if (text.font == Font{11, FontWeight::semibold}) continue;  // the buttons' titles
        EXPECT_NEAR(text.frame.x, 92, 1e-9) << text.text;
        EXPECT_LE(text.frame.maxX(), 400 + 1e-9) << text.text << " wraps inside the column";
    }
    const auto paragraph = rendering.canvas.find(testsupport::DrawOperation::Kind::text,
                                                 missingIconHelp("Tolvane", tahoe).paragraphs[0].untranslated());
    ASSERT_TRUE(paragraph.has_value());
    EXPECT_EQ(paragraph->font, Font{12});
    EXPECT_GT(paragraph->frame.height, 15) << "a paragraph wraps onto several lines";

    // The buttons along the bottom: Quit at the leading end; OK, then the
    // prominent Open Menu Bar Settings, at the trailing end, 8 apart.
    const auto buttons = rendering.nodesOf<ButtonNode>();
    ASSERT_EQ(buttons.size(), 3u);
    const double buttonY = rendering.root.frame.height - 20 - 22;
    expectFrame(buttons[0]->frame, {20, buttonY, 12 * 5.5 + 20, 22});
    expectFrame(buttons[2]->frame, {400 - (22 * 5.5 + 20), buttonY, 22 * 5.5 + 20, 22});
    expectFrame(buttons[1]->frame, {buttons[2]->frame.x - 8 - (2 * 5.5 + 20), buttonY, 2 * 5.5 + 20, 22});
    EXPECT_GE(buttonY, 20 + 56 + 20);

    for (const LayoutNode* button : buttons) std::get<ButtonNode>(button->view->node).action();
    EXPECT_EQ(performed, (std::vector<MissingIconAction>{MissingIconAction::quit, MissingIconAction::dismiss,
                                                          MissingIconAction::openMenuBarSettings}));
}

TEST(MissingIconViewTest, ButtonsThatDoNotFitInARowStackAtTheTrailingEdgeProminentFirst) {
    // An app name long enough that "Quit …", OK and Open Menu Bar Settings
    // cannot share the 380-point row.
    const MissingIconView view{.help = missingIconHelp(std::string(40, 'W'), tahoe), .state = {}, .perform = {}};
    const auto rendering = render(view.body());
    EXPECT_NEAR(rendering.root.frame.width, 420, 1e-9);
    const auto buttons = rendering.nodesOf<ButtonNode>();
    ASSERT_EQ(buttons.size(), 3u);
    // Top to bottom: Open Menu Bar Settings, OK, Quit; each ends at the
    // trailing edge inside the padding, and none is cut.
    EXPECT_EQ(std::get<ButtonNode>(buttons[0]->view->node).id, "missingIcon.menuBarSettings");
    EXPECT_EQ(std::get<ButtonNode>(buttons[2]->view->node).id, "missingIcon.quit");
    for (std::size_t index = 0; index < 3; ++index) EXPECT_NEAR(buttons[index]->frame.maxX(), 400, 1e-9) << index;
    EXPECT_LT(buttons[0]->frame.maxY(), buttons[1]->frame.y);
    EXPECT_LT(buttons[1]->frame.maxY(), buttons[2]->frame.y);
    EXPECT_TRUE(cutTexts(rendering.root).empty());
}

TEST(MissingIconViewTest, APressedButtonIsDrawnFaded) {
    MissingIconView view{.help = missingIconHelp("Tolvane", sonoma), .state = {}, .perform = nullptr};
    view.state.pressed = "missingIcon.dismiss";
    const auto rendering = render(view.body());
    std::vector<double> opacities;
    for (const auto& group : rendering.canvas.ofKind(testsupport::DrawOperation::Kind::beginOpacity)) {
        opacities.push_back(group.opacity);
    }
    // Quit at full opacity, OK (pressed) faded.
    EXPECT_EQ(opacities, (std::vector<double>{1.0, 0.7}));
    // A button without a perform function does nothing when clicked.
    for (const LayoutNode* button : rendering.nodesOf<ButtonNode>()) std::get<ButtonNode>(button->view->node).action();
}

TEST(MissingIconViewTest, TheWindowContentDrawsInTheAppsBrandAndStartsEachShowingUnpressed) {
    AppBrand brand = AppBrand::kitDefault();
    brand.name = "Tolvane";
    brand.symbol = "playpause.fill";
    MissingIconWindowContent content(missingIconHelp("Tolvane", tahoe), brand, nullptr);
    content.viewState().pressed = "missingIcon.quit";
    content.willShow();
    EXPECT_FALSE(content.viewState().pressed.has_value());
    const auto rendering = render(content.body());
    ASSERT_TRUE(rendering.canvas.find(testsupport::DrawOperation::Kind::symbol, "playpause.fill").has_value());
    EXPECT_EQ(content.help(), missingIconHelp("Tolvane", tahoe));
}

// --- Reopening the app -----------------------------------------------------------------

class ReopenTest : public testing::Test {
protected:
    std::shared_ptr<ManualMainThread> mainThread = std::make_shared<ManualMainThread>();
    std::shared_ptr<FakeStatusItem> statusItem = std::make_shared<FakeStatusItem>();
    std::shared_ptr<FakeContentWindow> window = std::make_shared<FakeContentWindow>();
    std::shared_ptr<FakeURLOpener> urlOpener = std::make_shared<FakeURLOpener>();
    ChangeSignal changes;
    int quits = 0;
    std::shared_ptr<MenuBarController> controller = MenuBarController::create(
        statusItem, mainThread, "Tolvane", changes, [] { return std::string("playpause.fill"); });

    void giveHelp(SystemVersion version) {
        controller->showMissingIconHelpWith(MissingIconEnvironment{.window = window,
                                                                   .urlOpener = urlOpener,
                                                                   .systemVersion = version,
                                                                   .brand = AppBrand::kitDefault(),
                                                                   .quit = [this] { ++quits; }});
    }

    void hideTheItem() { statusItem->placementFacts.windowFrame = {.x = 0, .y = -5, .width = 38, .height = 22}; }

    // Clicks the help window's button `id`, as its host would.
    void click(const std::string& id) {
        ASSERT_NE(window->content, nullptr);
        const auto rendering = render(window->content->body());
        for (const LayoutNode* node : rendering.nodesOf<ButtonNode>()) {
            const auto& button = std::get<ButtonNode>(node->view->node);
            if (button.id == id) {
                button.action();
                return;
            }
        }
        FAIL() << "no button " << id;
    }
};

TEST_F(ReopenTest, WithTheItemOnScreenReopeningOpensThePopover) {
    giveHelp(tahoe);
    statusItem->calls.clear();
    EXPECT_EQ(controller->reopen(), IconPlacement::shown);
    EXPECT_EQ(statusItem->calls, (std::vector<std::string>{"activate", "show", "makeKey"}));
    EXPECT_TRUE(statusItem->popoverIsKey);
    EXPECT_EQ(window->showCount, 0);
}

TEST_F(ReopenTest, WithTheItemOffScreenReopeningShowsTheHelpWindowInsteadOfThePopover) {
    giveHelp(tahoe);
    hideTheItem();
    statusItem->calls.clear();
    EXPECT_EQ(controller->reopen(), IconPlacement::offTheMenuBar);
    EXPECT_TRUE(statusItem->calls.empty());
    EXPECT_FALSE(statusItem->popoverShown);
    ASSERT_TRUE(window->shown);
    EXPECT_EQ(window->title, "Tolvane");
    const auto* content = dynamic_cast<const MissingIconWindowContent*>(window->content.get());
    ASSERT_NE(content, nullptr);
    EXPECT_EQ(content->help(), missingIconHelp("Tolvane", tahoe));
}

TEST_F(ReopenTest, TheHelpWindowFollowsTheSystemVersion) {
    giveHelp(sonoma);
    hideTheItem();
    controller->reopen();
    const auto* content = dynamic_cast<const MissingIconWindowContent*>(window->content.get());
    ASSERT_NE(content, nullptr);
    EXPECT_EQ(content->help(), missingIconHelp("Tolvane", sonoma));
}

TEST_F(ReopenTest, ReopeningAgainBringsTheHelpWindowBackToTheFront) {
    giveHelp(tahoe);
    hideTheItem();
    controller->reopen();
    controller->reopen();
    EXPECT_EQ(window->showCount, 2);
    EXPECT_TRUE(window->shown);
}

TEST_F(ReopenTest, OnceTheItemIsBackReopeningClosesTheHelpWindowAndOpensThePopover) {
    giveHelp(tahoe);
    hideTheItem();
    controller->reopen();
    statusItem->placementFacts = FakeStatusItem::shownPlacement();
    EXPECT_EQ(controller->reopen(), IconPlacement::shown);
    EXPECT_FALSE(window->shown);
    EXPECT_EQ(window->closeCount, 1);
    EXPECT_TRUE(statusItem->popoverShown);
}

TEST_F(ReopenTest, WithTheItemOnScreenAndNoHelpWindowNothingIsClosed) {
    giveHelp(tahoe);
    controller->reopen();
    EXPECT_EQ(window->closeCount, 0);
}

TEST_F(ReopenTest, TheSettingsButtonOpensMenuBarSettingsAndKeepsTheWindow) {
    giveHelp(tahoe);
    hideTheItem();
    controller->reopen();
    click("missingIcon.menuBarSettings");
    EXPECT_EQ(urlOpener->opened(), (std::vector<std::string>{menuBarSettingsURL}));
    EXPECT_TRUE(window->shown);
    EXPECT_EQ(quits, 0);
}

TEST_F(ReopenTest, OKClosesTheWindowAndQuitQuits) {
    giveHelp(sonoma);
    hideTheItem();
    controller->reopen();
    click("missingIcon.dismiss");
    EXPECT_FALSE(window->shown);
    EXPECT_EQ(quits, 0);
    click("missingIcon.quit");
    EXPECT_EQ(quits, 1);
    EXPECT_TRUE(urlOpener->opened().empty());
}

TEST_F(ReopenTest, ButtonsOfAWindowWhoseControllerIsGoneDoNothing) {
    giveHelp(tahoe);
    hideTheItem();
    controller->reopen();
    controller.reset();
    click("missingIcon.quit");
    click("missingIcon.menuBarSettings");
    EXPECT_EQ(quits, 0);
    EXPECT_TRUE(urlOpener->opened().empty());
}

TEST_F(ReopenTest, WithoutHelpReopeningOpensThePopoverWhereverTheItemIs) {
    hideTheItem();
    statusItem->calls.clear();
    EXPECT_EQ(controller->reopen(), IconPlacement::offTheMenuBar);
    EXPECT_EQ(statusItem->calls, (std::vector<std::string>{"activate", "show", "makeKey"}));
    EXPECT_EQ(window->showCount, 0);
}

TEST_F(ReopenTest, ReopeningReadsThePlacementAfreshEachTime) {
    giveHelp(tahoe);
    controller->reopen();
    controller->reopen();
    EXPECT_EQ(statusItem->placementReads, 2);
}

TEST(MenuBarAppReopenTest, BeforeLaunchHasFinishedReopeningDoesNothing) {
    EXPECT_FALSE(MenuBarApp::reopen(std::nullopt));
}

TEST(MenuBarAppReopenTest, TheDelegateHandsReopeningToTheControllerAndAppKitDoesNothingMore) {
    const auto mainThread = std::make_shared<ManualMainThread>();
    const auto statusItem = std::make_shared<FakeStatusItem>();
    ChangeSignal changes;
    const std::optional<MenuBarApp::Parts> parts = MenuBarApp::Parts{
        .menuBar = MenuBarController::create(statusItem, mainThread, "Tolvane", changes,
                                             [] { return std::string("playpause.fill"); }),
        .updateReminders = UpdateReminderCenter::preview("tolvane", false)};
    EXPECT_FALSE(MenuBarApp::reopen(parts));
    EXPECT_EQ(statusItem->placementReads, 1);
    EXPECT_TRUE(statusItem->popoverShown);
}

}  // namespace
}  // namespace orvik
