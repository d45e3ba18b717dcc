// What the popover's host updates in place between two layouts of the real
// menu: tooltips, accessibility elements and the pop-up menu stay as they
// are through hover and press; a new track relabels; Music quitting takes
// the transport buttons away; another direction moves frames; the pop-up
// menu changes only when its titles or selection do. On FixedTextMeasurer's
// metrics and the English tables.
#include "OrvikKit/HostUpdates.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <vector>

#include "AppWorld.h"
#include "TestSupport/BundleStrings.h"
#include "TestSupport/RecordingCanvas.h"
#include "Tolvane/MenuView.h"

namespace tolvane {
namespace {

using orvik::AccessibilityChanges;
using orvik::AccessibilityElement;
using orvik::HostToolTips;
using orvik::LayoutDirection;
using orvik::PopUpChange;
using testsupport::AppWorld;
using testsupport::FakeLoginItemService;
using testsupport::Rendering;

using Keys = std::vector<std::string>;

bool contains(const Keys& keys, const std::string& key) {
    return std::find(keys.begin(), keys.end(), key) != keys.end();
}

// The key of the element labelled `label`; empty when none is.
std::string keyOf(const std::vector<AccessibilityElement>& elements, const std::string& label) {
    for (const AccessibilityElement& element : elements) {
        if (element.label == label) return element.key;
    }
    return {};
}

class MenuHostUpdatesTest : public testing::Test {
protected:
    AppWorld world;
    std::shared_ptr<FakeLoginItemService> loginItem = std::make_shared<FakeLoginItemService>(false);

    Rendering laidOut(const std::shared_ptr<AppState>& state, orvik::ViewState viewState = {},
                      LayoutDirection direction = LayoutDirection::leftToRight) {
        const MenuEnvironment environment{.loginItem = loginItem, .urlOpener = world.urlOpener, .version = "1.2"};
        return testsupport::render(MenuView{menuContent(state, environment), std::move(viewState)}.body(), {},
                                   orvik::Appearance::light, direction);
    }

    static std::string localize(const orvik::LocalizedText& text) {
        return testsupport::bundleLocalizer("en").localized(text);
    }

    static std::vector<AccessibilityElement> elements(const Rendering& rendering) {
        return orvik::accessibilityElements(rendering.root, localize);
    }
    static HostToolTips toolTips(const Rendering& rendering) { return orvik::hostToolTips(rendering.root, localize); }

    std::shared_ptr<AppState> playing() {
        world.musicPlays("So What", "Miles Davis", true);
        auto state = world.launch();
        world.settle();
        return state;
    }
};

TEST_F(MenuHostUpdatesTest, TheTransportButtonsAreKeyedByTheirIdsAndTheHeaderSwitchCarriesItsOwnTooltip) {
    const auto state = playing();
    const Rendering menu = laidOut(state);
    const std::vector<AccessibilityElement> all = elements(menu);
    Keys keys;
    for (const AccessibilityElement& element : all) keys.push_back(element.key);
    EXPECT_TRUE(contains(keys, "button:transport.previous"));
    EXPECT_TRUE(contains(keys, "button:transport.playPause"));
    EXPECT_TRUE(contains(keys, "button:transport.next"));
    EXPECT_TRUE(contains(keys, "switch#0"));
    EXPECT_TRUE(contains(keys, "popUpMenu#0"));
    EXPECT_EQ(keyOf(all, "So What"), "text#1") << "the track's title, shown as it stands, after the app's name";
    EXPECT_EQ(keyOf(all, "Miles Davis"), "text#2");
    // Every key once.
    Keys sorted = keys;
    std::sort(sorted.begin(), sorted.end());
    EXPECT_EQ(std::adjacent_find(sorted.begin(), sorted.end()), sorted.end());

    const HostToolTips tips = toolTips(menu);
    ASSERT_EQ(tips.switches.size(), 2u) << "the header's switch and open at login";
    EXPECT_FALSE(tips.switches[0].empty()) << "the header switch's tooltip is the switch's own";
    EXPECT_EQ(tips.regions.size(), 3u) << "one rectangle per transport button, none over the switch";
}

TEST_F(MenuHostUpdatesTest, AHoverChangeLeavesTooltipsElementsAndThePopUpAsTheyAre) {
    const auto state = playing();
    const Rendering before = laidOut(state);
    orvik::ViewState hovering;
    hovering.hovered = {"transport.next"};
    const Rendering after = laidOut(state, hovering);
    EXPECT_EQ(toolTips(before), toolTips(after));
    EXPECT_TRUE(orvik::accessibilityChanges(elements(before), elements(after)).none());
    EXPECT_EQ(orvik::popUpChange(orvik::popUpMenus(before.root).at(0), orvik::popUpMenus(after.root).at(0)),
              PopUpChange::none);
}

TEST_F(MenuHostUpdatesTest, PressingATransportButtonChangesNothingTheHostKeeps) {
    const auto state = playing();
    const Rendering before = laidOut(state);
    orvik::ViewState pressing;
    pressing.hovered = {"transport.playPause"};
    pressing.pressed = "transport.playPause";
    const Rendering after = laidOut(state, pressing);
    EXPECT_EQ(toolTips(before), toolTips(after));
    EXPECT_TRUE(orvik::accessibilityChanges(elements(before), elements(after)).none());
}

TEST_F(MenuHostUpdatesTest, ANewTrackRelabelsTheTitleInPlace) {
    const auto state = playing();
    const Rendering before = laidOut(state);
    const std::string title = keyOf(elements(before), "So What");
    ASSERT_FALSE(title.empty());
    world.musicPlays("Blue in Green", "Miles Davis", true);
    world.postPlayerInfo("Playing", "Blue in Green", "Miles Davis");
    world.settle();
    const Rendering after = laidOut(state);
    const AccessibilityChanges changes = orvik::accessibilityChanges(elements(before), elements(after));
    EXPECT_FALSE(changes.setChanged()) << "the same elements: no layout-changed notification";
    EXPECT_EQ(changes.relabelled, Keys{title});
    EXPECT_EQ(keyOf(elements(after), "Blue in Green"), title);
}

TEST_F(MenuHostUpdatesTest, APauseRelabelsThePlayPauseButtonAndItsTooltip) {
    const auto state = playing();
    const Rendering before = laidOut(state);
    world.musicPlays("So What", "Miles Davis", false);
    world.postPlayerInfo("Paused", "So What", "Miles Davis");
    world.settle();
    const Rendering after = laidOut(state);
    const AccessibilityChanges changes = orvik::accessibilityChanges(elements(before), elements(after));
    EXPECT_FALSE(changes.setChanged());
    EXPECT_TRUE(contains(changes.relabelled, "button:transport.playPause"));
    EXPECT_NE(toolTips(before), toolTips(after)) << "the tooltip says Play now: the rectangles are made again";
}

TEST_F(MenuHostUpdatesTest, MusicQuittingReplacesTheTrackWithTheClosedTextsAndKeepsTheButtons) {
    const auto state = playing();
    const Rendering before = laidOut(state);
    const std::string title = keyOf(elements(before), "So What");
    const std::string artist = keyOf(elements(before), "Miles Davis");
    world.musicQuits();
    world.settle();
    const Rendering after = laidOut(state);
    const AccessibilityChanges changes = orvik::accessibilityChanges(elements(before), elements(after));
    EXPECT_TRUE(changes.setChanged()) << "assistive technology is told the layout changed";
    EXPECT_EQ(changes.disappeared, (Keys{title, artist}));
    EXPECT_EQ(changes.appeared, (Keys{"text:Music is closed", "text:Press ⏯ to start"}));
    // The transport buttons stay the same elements; the middle one now plays.
    EXPECT_FALSE(contains(changes.disappeared, "button:transport.previous"));
    EXPECT_TRUE(contains(changes.relabelled, "button:transport.playPause"));
}

TEST_F(MenuHostUpdatesTest, RightToLeftMovesTheElementsWithoutMakingThemAnew) {
    const auto state = playing();
    const Rendering before = laidOut(state);
    const Rendering after = laidOut(state, {}, LayoutDirection::rightToLeft);
    const AccessibilityChanges changes = orvik::accessibilityChanges(elements(before), elements(after));
    EXPECT_TRUE(changes.appeared.empty());
    EXPECT_TRUE(changes.disappeared.empty());
    EXPECT_TRUE(contains(changes.moved, "button:transport.previous"));
    EXPECT_TRUE(contains(changes.moved, "switch#0"));
    EXPECT_NE(toolTips(before).regions, toolTips(after).regions);
}

TEST_F(MenuHostUpdatesTest, ThePopUpChangesItsSelectionOnlyWhenTheSettingChanges) {
    const auto state = playing();
    const Rendering before = laidOut(state);
    const auto menus = orvik::popUpMenus(before.root);
    ASSERT_EQ(menus.size(), 1u);
    ASSERT_GT(menus[0].titles.size(), 1u);
    const std::size_t other = menus[0].selectedIndex == 0 ? 1 : 0;
    std::vector<const orvik::LayoutNode*> pickers;
    orvik::collect<orvik::PickerNode>(before.root, pickers);
    std::get<orvik::PickerNode>(pickers[0]->view->node).select(other);
    world.settle();
    const Rendering after = laidOut(state);
    EXPECT_EQ(orvik::popUpChange(menus[0], orvik::popUpMenus(after.root).at(0)), PopUpChange::selection);
}

}  // namespace
}  // namespace tolvane
