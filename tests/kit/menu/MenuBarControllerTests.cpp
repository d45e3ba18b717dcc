#include "OrvikKit/MenuBarController.h"

#include <gtest/gtest.h>

#include <memory>
#include <set>
#include <string>
#include <vector>

#include "TestSupport/FakeStatusItem.h"
#include "TestSupport/ManualMainThread.h"
#include "TestSupport/OffTheMainThread.h"

namespace orvik {
namespace {

using testsupport::FakeStatusItem;
using testsupport::ManualMainThread;

// A stand-in for the app's state: it sends its change signal before it
// stores a new value, as observable objects do.
struct ObservedState {
    ChangeSignal changes;
    std::string symbol = "playpause.fill";

    void setSymbol(std::string newSymbol) {
        changes.send();
        symbol = std::move(newSymbol);
    }
};

StatusItemImage image(std::string symbol, bool badged = false) {
    return StatusItemImage{
        .symbolName = std::move(symbol), .accessibilityDescription = "Tolvane", .isTemplate = true, .badged = badged};
}

class MenuBarControllerTest : public testing::Test {
protected:
    std::shared_ptr<ManualMainThread> mainThread = std::make_shared<ManualMainThread>();
    std::shared_ptr<FakeStatusItem> statusItem = std::make_shared<FakeStatusItem>();
    ObservedState state;
    int symbolReads = 0;

    std::shared_ptr<MenuBarController> makeController() {
        return MenuBarController::create(statusItem, mainThread, "Tolvane", state.changes, [this] {
            ++symbolReads;
            return state.symbol;
        });
    }
};

// --- Badge geometry ---------------------------------------------------------------

TEST(BadgeGeometryTest, DotSitsInTheTopRightCornerWithARingAroundIt) {
    const BadgeGeometry geometry = badgeGeometry({.width = 18, .height = 16});
    EXPECT_EQ(geometry.dot, (ImageRect{.x = 13, .y = 11, .width = 5, .height = 5}));
    EXPECT_EQ(geometry.ring, (ImageRect{.x = 11.5, .y = 9.5, .width = 8, .height = 8}));
}

TEST(BadgeGeometryTest, FollowsTheImageSize) {
    const BadgeGeometry geometry = badgeGeometry({.width = 22.5, .height = 20});
    EXPECT_EQ(geometry.dot, (ImageRect{.x = 17.5, .y = 15, .width = 5, .height = 5}));
    EXPECT_EQ(geometry.ring, (ImageRect{.x = 16, .y = 13.5, .width = 8, .height = 8}));
}

TEST(BadgeGeometryTest, IsAvailableAtCompileTime) {
    constexpr BadgeGeometry geometry = badgeGeometry({.width = 5, .height = 5});
    static_assert(geometry.dot == ImageRect{.x = 0, .y = 0, .width = 5, .height = 5});
    static_assert(geometry.ring == ImageRect{.x = -1.5, .y = -1.5, .width = 8, .height = 8});
    EXPECT_EQ(geometry.ring.grownBy(-1.5), geometry.dot);
}

// --- Main thread ------------------------------------------------------------------

TEST_F(MenuBarControllerTest, EveryPublicOperationOffTheMainThreadStopsTheProcess) {
    const auto controller = makeController();
    Published<bool> due(false);
    using testsupport::mainThreadFault;
    using testsupport::offTheMainThread;
    EXPECT_DEATH(offTheMainThread([&] { controller->toggle(); }), mainThreadFault);
    EXPECT_DEATH(offTheMainThread([&] { controller->open(); }), mainThreadFault);
    EXPECT_DEATH(offTheMainThread([&] { controller->close(); }), mainThreadFault);
    EXPECT_DEATH(offTheMainThread([&] { controller->updateIcon(); }), mainThreadFault);
    EXPECT_DEATH(offTheMainThread([&] { controller->showUpdateBadge(due); }), mainThreadFault);
}

// --- Icon ---------------------------------------------------------------------------

TEST_F(MenuBarControllerTest, ConstructionDrawsTheSymbolAsATemplateWithTheTitle) {
    const auto controller = makeController();
    EXPECT_EQ(statusItem->imagesSet, (std::vector<StatusItemImage>{image("playpause.fill")}));
    EXPECT_EQ(controller->title(), "Tolvane");
    EXPECT_FALSE(controller->showsBadge());
    EXPECT_EQ(MenuBarController::autosaveName, "Item-0");
}

TEST_F(MenuBarControllerTest, AChangeSentBeforeTheValueIsStoredStillYieldsTheNewSymbol) {
    const auto controller = makeController();
    state.setSymbol("play.fill");
    // Nothing is redrawn while the signal is being sent...
    EXPECT_EQ(statusItem->imagesSet.size(), 1u);
    // ...but in the task it posted, which reads the stored value.
    mainThread->runUntilIdle();
    EXPECT_EQ(statusItem->image, image("play.fill"));
    EXPECT_EQ(statusItem->imagesSet.size(), 2u);
}

TEST_F(MenuBarControllerTest, EveryChangeIsRedrawnInItsOwnTask) {
    const auto controller = makeController();
    state.setSymbol("play.fill");
    state.setSymbol("pause.fill");
    EXPECT_EQ(mainThread->pendingTaskCount(), 2u);
    mainThread->runUntilIdle();
    EXPECT_EQ(statusItem->image, image("pause.fill"));
    EXPECT_EQ(symbolReads, 3);
}

TEST_F(MenuBarControllerTest, AnUnknownSymbolLeavesThePreviousImage) {
    statusItem->knownSymbols = std::set<std::string>{"playpause.fill", "play.fill"};
    const auto controller = makeController();
    state.setSymbol("no.such.symbol");
    mainThread->runUntilIdle();
    EXPECT_EQ(statusItem->image, image("playpause.fill"));
    EXPECT_EQ(symbolReads, 2);

    state.setSymbol("play.fill");
    mainThread->runUntilIdle();
    EXPECT_EQ(statusItem->image, image("play.fill"));
}

TEST_F(MenuBarControllerTest, WithoutAButtonNothingIsDrawn) {
    statusItem->buttonExists = false;
    const auto controller = makeController();
    state.setSymbol("play.fill");
    mainThread->runUntilIdle();
    EXPECT_FALSE(statusItem->image.has_value());
    // The status item is asked to wire its button, and has none to wire.
    EXPECT_EQ(statusItem->calls, (std::vector<std::string>{"configureButton"}));
    EXPECT_FALSE(statusItem->buttonAccessibilityLabel.has_value());
}

TEST_F(MenuBarControllerTest, AReleasedControllerStopsRedrawing) {
    auto controller = makeController();
    state.setSymbol("play.fill");  // a redraw is already queued
    const std::weak_ptr<MenuBarController> weak = controller;
    controller.reset();
    EXPECT_TRUE(weak.expired());
    mainThread->runUntilIdle();
    state.setSymbol("pause.fill");
    mainThread->runUntilIdle();
    EXPECT_EQ(statusItem->imagesSet.size(), 1u);
    EXPECT_EQ(state.changes.subscriberCount(), 0u);
}

// --- Badge --------------------------------------------------------------------------

TEST_F(MenuBarControllerTest, FollowingADueFlagBadgesTheImageInALaterTask) {
    const auto controller = makeController();
    Published<bool> due(true);
    controller->showUpdateBadge(due);
    EXPECT_FALSE(controller->showsBadge());
    mainThread->runUntilIdle();
    EXPECT_TRUE(controller->showsBadge());
    EXPECT_EQ(statusItem->image, image("playpause.fill", true));

    due.set(false);
    mainThread->runUntilIdle();
    EXPECT_FALSE(controller->showsBadge());
    EXPECT_EQ(statusItem->image, image("playpause.fill", false));
}

TEST_F(MenuBarControllerTest, TheBadgedImageKeepsTheDescriptionAndIsATemplate) {
    const auto controller = makeController();
    Published<bool> due(true);
    controller->showUpdateBadge(due);
    mainThread->runUntilIdle();
    ASSERT_TRUE(statusItem->image.has_value());
    EXPECT_TRUE(statusItem->image->badged);
    EXPECT_TRUE(statusItem->image->isTemplate);
    EXPECT_EQ(statusItem->image->accessibilityDescription, "Tolvane");
    EXPECT_EQ(statusItem->image->symbolName, "playpause.fill");
}

TEST_F(MenuBarControllerTest, SymbolChangesKeepTheBadge) {
    const auto controller = makeController();
    Published<bool> due(true);
    controller->showUpdateBadge(due);
    state.setSymbol("pause.fill");
    mainThread->runUntilIdle();
    EXPECT_EQ(statusItem->image, image("pause.fill", true));
}

TEST_F(MenuBarControllerTest, RepeatedEqualDueValuesDoNotRedraw) {
    const auto controller = makeController();
    Published<bool> due(false);
    controller->showUpdateBadge(due);
    mainThread->runUntilIdle();
    const std::size_t drawn = statusItem->imagesSet.size();

    due.set(false);
    due.set(false);
    EXPECT_EQ(mainThread->pendingTaskCount(), 0u);
    mainThread->runUntilIdle();
    EXPECT_EQ(statusItem->imagesSet.size(), drawn);

    due.set(true);
    due.set(true);
    due.set(false);
    due.set(false);
    EXPECT_EQ(mainThread->pendingTaskCount(), 2u);
    mainThread->runUntilIdle();
    EXPECT_EQ(statusItem->imagesSet.size(), drawn + 2);
    EXPECT_FALSE(controller->showsBadge());
}

TEST_F(MenuBarControllerTest, FollowsAnUpdateReminderCentre) {
    const auto controller = makeController();
    const auto center = UpdateReminderCenter::preview("tolvane", true);
    controller->showUpdateBadge(*center);
    mainThread->runUntilIdle();
    EXPECT_TRUE(controller->showsBadge());
    center->dismissUpdateReminder();
    mainThread->runUntilIdle();
    EXPECT_FALSE(controller->showsBadge());
    EXPECT_EQ(statusItem->image, image("playpause.fill", false));
}

TEST_F(MenuBarControllerTest, FollowingAnotherFlagReplacesTheFirst) {
    const auto controller = makeController();
    Published<bool> first(true);
    Published<bool> second(false);
    controller->showUpdateBadge(first);
    controller->showUpdateBadge(second);
    mainThread->runUntilIdle();
    EXPECT_FALSE(controller->showsBadge());
    first.set(false);
    first.set(true);
    EXPECT_EQ(mainThread->pendingTaskCount(), 0u);
    second.set(true);
    mainThread->runUntilIdle();
    EXPECT_TRUE(controller->showsBadge());
}

TEST_F(MenuBarControllerTest, AReleasedControllerIgnoresTheDueFlag) {
    auto controller = makeController();
    Published<bool> due(false);
    controller->showUpdateBadge(due);
    mainThread->runUntilIdle();
    const std::size_t drawn = statusItem->imagesSet.size();
    due.set(true);  // queued before the release
    controller.reset();
    mainThread->runUntilIdle();
    due.set(false);
    mainThread->runUntilIdle();
    EXPECT_EQ(statusItem->imagesSet.size(), drawn);
}

// --- Popover ------------------------------------------------------------------------

TEST_F(MenuBarControllerTest, OpenActivatesShowsAndMakesKey) {
    const auto controller = makeController();
    statusItem->calls.clear();
    controller->open();
    EXPECT_EQ(statusItem->calls, (std::vector<std::string>{"activate", "show", "makeKey"}));
    EXPECT_TRUE(statusItem->popoverShown);
    EXPECT_TRUE(statusItem->popoverIsKey);
}

TEST_F(MenuBarControllerTest, OpenWhenShownDoesNothing) {
    const auto controller = makeController();
    controller->open();
    statusItem->calls.clear();
    controller->open();
    EXPECT_TRUE(statusItem->calls.empty());
}

TEST_F(MenuBarControllerTest, OpenWithoutAButtonDoesNothing) {
    statusItem->buttonExists = false;
    const auto controller = makeController();
    statusItem->calls.clear();
    controller->open();
    controller->toggle();
    EXPECT_TRUE(statusItem->calls.empty());
    EXPECT_FALSE(statusItem->popoverShown);
}

TEST_F(MenuBarControllerTest, ToggleClosesAShownPopoverAndReopensItAsKey) {
    const auto controller = makeController();
    controller->toggle();
    EXPECT_TRUE(statusItem->popoverShown);
    EXPECT_TRUE(statusItem->popoverIsKey);

    statusItem->calls.clear();
    controller->toggle();
    EXPECT_EQ(statusItem->calls, (std::vector<std::string>{"close"}));
    EXPECT_FALSE(statusItem->popoverShown);

    statusItem->calls.clear();
    controller->toggle();
    EXPECT_EQ(statusItem->calls, (std::vector<std::string>{"activate", "show", "makeKey"}));
    EXPECT_TRUE(statusItem->popoverShown);
    EXPECT_TRUE(statusItem->popoverIsKey);
}

TEST_F(MenuBarControllerTest, ToggleAfterThePlatformClosedThePopoverOpensIt) {
    const auto controller = makeController();
    controller->open();
    statusItem->popoverShown = false;  // a click outside closed it
    statusItem->calls.clear();
    controller->toggle();
    EXPECT_EQ(statusItem->calls, (std::vector<std::string>{"activate", "show", "makeKey"}));
}

TEST_F(MenuBarControllerTest, CloseClosesOnlyAShownPopover) {
    const auto controller = makeController();
    statusItem->calls.clear();
    controller->close();
    EXPECT_TRUE(statusItem->calls.empty());
    controller->open();
    statusItem->calls.clear();
    controller->close();
    EXPECT_EQ(statusItem->calls, (std::vector<std::string>{"close"}));
    EXPECT_FALSE(statusItem->popoverShown);
}

// --- Button wiring and the shared controller ------------------------------------------

TEST_F(MenuBarControllerTest, TheButtonIsLabelledWithTheTitleAndWiredBeforeTheFirstDrawing) {
    const auto controller = makeController();
    EXPECT_EQ(statusItem->buttonAccessibilityLabel, "Tolvane");
    ASSERT_GE(statusItem->calls.size(), 2u);
    EXPECT_EQ(statusItem->calls[0], "configureButton");
    EXPECT_EQ(statusItem->calls[1], "setImage playpause.fill");
}

TEST_F(MenuBarControllerTest, ClickingTheButtonToggles) {
    const auto controller = makeController();
    statusItem->calls.clear();
    statusItem->click();
    EXPECT_TRUE(statusItem->popoverShown);
    EXPECT_TRUE(statusItem->popoverIsKey);
    statusItem->click();
    EXPECT_FALSE(statusItem->popoverShown);
    EXPECT_EQ(statusItem->calls, (std::vector<std::string>{"activate", "show", "makeKey", "close"}));
}

TEST_F(MenuBarControllerTest, TheButtonHoldsTheControllerWeakly) {
    auto controller = makeController();
    const std::weak_ptr<MenuBarController> weak = controller;
    controller.reset();
    EXPECT_TRUE(weak.expired());
    statusItem->calls.clear();
    statusItem->click();
    EXPECT_TRUE(statusItem->calls.empty());
}

TEST_F(MenuBarControllerTest, SharedIsTheControllerMostRecentlyConstructed) {
    const auto first = makeController();
    EXPECT_EQ(MenuBarController::shared(), first);
    auto otherItem = std::make_shared<FakeStatusItem>();
    const auto second = MenuBarController::create(otherItem, mainThread, "Other", state.changes,
                                                  [] { return std::string("star"); });
    EXPECT_EQ(MenuBarController::shared(), second);
}

TEST_F(MenuBarControllerTest, SharedDoesNotKeepAReleasedControllerAlive) {
    auto controller = makeController();
    controller.reset();
    EXPECT_EQ(MenuBarController::shared(), nullptr);
}

}  // namespace
}  // namespace orvik
