// Keyboard focus through the real menu: Tab visits the transport buttons
// and then the footer's in reading order, which runs right to left on
// screen in Arabic and Hebrew; pressing the focused button runs its action;
// a focus on a button that goes away (Music quits) is dropped.
#include "OrvikKit/HostSupport.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <optional>
#include <string>
#include <vector>

#include "AppWorld.h"
#include "TestSupport/RecordingCanvas.h"
#include "Tolvane/MenuView.h"

namespace tolvane {
namespace {

using orvik::FocusMove;
using orvik::LayoutDirection;
using testsupport::AppWorld;
using testsupport::FakeLoginItemService;
using testsupport::Rendering;
using Ids = std::vector<std::string>;

class MenuKeyboardFocusTest : public testing::Test {
protected:
    AppWorld world;
    std::shared_ptr<FakeLoginItemService> loginItem = std::make_shared<FakeLoginItemService>(false);
    int quits = 0;

    Rendering laidOut(const std::shared_ptr<AppState>& state, LayoutDirection direction = LayoutDirection::leftToRight,
                      bool withUpdateReminder = false) {
        const MenuEnvironment environment{
            .loginItem = loginItem, .urlOpener = world.urlOpener, .version = "1.2", .quit = [this] { ++quits; }};
        MenuContent content = menuContent(state, environment);
        if (withUpdateReminder) content.updateReminder = orvik::UpdateReminderCard::from(state->updateReminders());
        return testsupport::render(MenuView{std::move(content), orvik::ViewState{}}.body(), {},
                                   orvik::Appearance::light, direction);
    }

    std::shared_ptr<AppState> playing() {
        world.musicPlays("So What", "Miles Davis", true);
        auto state = world.launch();
        world.settle();
        return state;
    }
};

const Ids readingOrder{"transport.previous", "transport.playPause", "transport.next", "footer.Check for Updates",
                       "footer.Quit"};

TEST_F(MenuKeyboardFocusTest, TabVisitsTheTransportButtonsThenTheFootersInReadingOrder) {
    const auto state = playing();
    const Rendering menu = laidOut(state);
    EXPECT_EQ(orvik::focusOrder(menu.root), readingOrder);
    const double previous = orvik::buttonWithID(menu.root, "transport.previous")->frame.x;
    const double next = orvik::buttonWithID(menu.root, "transport.next")->frame.x;
    EXPECT_LT(previous, next) << "left to right on screen";
}

TEST_F(MenuKeyboardFocusTest, InArabicAndHebrewTheOrderRunsFromTheRightOnScreen) {
    const auto state = playing();
    const Rendering menu = laidOut(state, LayoutDirection::rightToLeft, true);
    const Ids order = orvik::focusOrder(menu.root);
    const auto position = [&order](const std::string& id) {
        return std::find(order.begin(), order.end(), id) - order.begin();
    };
    // The reminder's two buttons side by side: "Check" first, on the right.
    ASSERT_LT(position("update.check"), position("update.notNow"));
    EXPECT_GT(orvik::buttonWithID(menu.root, "update.check")->frame.x,
              orvik::buttonWithID(menu.root, "update.notNow")->frame.x);
    // The transport row keeps its left-to-right order, as media controls
    // do in every language (they stand for the direction of time), and Tab
    // follows it.
    EXPECT_LT(position("transport.previous"), position("transport.next"));
    EXPECT_LT(orvik::buttonWithID(menu.root, "transport.previous")->frame.x,
              orvik::buttonWithID(menu.root, "transport.next")->frame.x);
}

TEST_F(MenuKeyboardFocusTest, LeftToRightTheReminderOffersCheckFirstOnTheLeft) {
    const auto state = playing();
    const Rendering menu = laidOut(state, LayoutDirection::leftToRight, true);
    const Ids order = orvik::focusOrder(menu.root);
    ASSERT_LT(std::find(order.begin(), order.end(), "update.check"), std::find(order.begin(), order.end(), "update.notNow"));
    EXPECT_LT(orvik::buttonWithID(menu.root, "update.check")->frame.x,
              orvik::buttonWithID(menu.root, "update.notNow")->frame.x);
}

TEST_F(MenuKeyboardFocusTest, ShiftTabFromNothingFocusesQuitAndPressingItQuits) {
    const auto state = playing();
    const Rendering menu = laidOut(state);
    const std::optional<std::string> focused = orvik::movedFocus(menu.root, std::nullopt, FocusMove::previous);
    ASSERT_EQ(focused, "footer.Quit");
    std::get<orvik::ButtonNode>(orvik::buttonWithID(menu.root, *focused)->view->node).action();
    EXPECT_EQ(quits, 1);
}

TEST_F(MenuKeyboardFocusTest, AFocusOnAButtonThatStaysIsKeptWhenMusicQuits) {
    const auto state = playing();
    const Rendering before = laidOut(state);
    const std::optional<std::string> focused = orvik::movedFocus(before.root, std::nullopt, FocusMove::next);
    ASSERT_EQ(focused, "transport.previous");
    world.musicQuits();
    world.settle();
    const Rendering after = laidOut(state);
    // The transport buttons stay when Music is closed (the middle one
    // starts it), so the focus stays; a button the menu no longer shows
    // would lose it.
    EXPECT_EQ(orvik::keptFocus(after.root, focused), focused);
    EXPECT_EQ(orvik::keptFocus(after.root, std::optional<std::string>("update.Check")), std::nullopt);
}

}  // namespace
}  // namespace tolvane
