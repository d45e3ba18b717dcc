// The host's in-place updates as pure decisions: element changes by key
// (came, went, moved, relabelled, reordered), pop-up menu changes, keys
// made unique, tooltips around native controls given to the controls.
#include "OrvikKit/HostUpdates.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "TestSupport/RecordingCanvas.h"
#include "TestSupport/SampleViews.h"

namespace orvik {
namespace {

using Role = AccessibilityNode::Role;
using Keys = std::vector<std::string>;

AccessibilityElement element(std::string key, std::string label, Rect frame = {0, 0, 10, 10},
                             Role role = Role::button) {
    return AccessibilityElement{std::move(key), role, std::move(label), frame, nullptr};
}

TEST(AccessibilityChangesTest, EqualListsChangeNothing) {
    const std::vector<AccessibilityElement> list{element("a", "A"), element("b", "B")};
    const AccessibilityChanges changes = accessibilityChanges(list, list);
    EXPECT_TRUE(changes.none());
    EXPECT_FALSE(changes.setChanged());
}

TEST(AccessibilityChangesTest, ElementsThatCameAndWentChangeTheSet) {
    const AccessibilityChanges changes =
        accessibilityChanges({element("a", "A"), element("b", "B")}, {element("b", "B"), element("c", "C")});
    EXPECT_EQ(changes.appeared, Keys{"c"});
    EXPECT_EQ(changes.disappeared, Keys{"a"});
    EXPECT_TRUE(changes.setChanged());
}

TEST(AccessibilityChangesTest, AMovedOrRelabelledElementIsKeptInPlace) {
    const AccessibilityChanges changes = accessibilityChanges(
        {element("a", "A", {0, 0, 10, 10}), element("b", "B")}, {element("a", "A", {5, 0, 10, 10}), element("b", "Be")});
    EXPECT_EQ(changes.moved, Keys{"a"});
    EXPECT_EQ(changes.relabelled, Keys{"b"});
    EXPECT_FALSE(changes.setChanged());
    EXPECT_FALSE(changes.none());
}

TEST(AccessibilityChangesTest, TheSameElementsInAnotherOrderChangeTheSet) {
    const AccessibilityChanges changes =
        accessibilityChanges({element("a", "A"), element("b", "B")}, {element("b", "B"), element("a", "A")});
    EXPECT_TRUE(changes.reordered);
    EXPECT_TRUE(changes.setChanged());
}

TEST(AccessibilityChangesTest, AKeyWhoseRoleChangedIsAnotherElement) {
    const AccessibilityChanges changes = accessibilityChanges({element("a", "A", {}, Role::button)},
                                                              {element("a", "A", {}, Role::staticText)});
    EXPECT_EQ(changes.appeared, Keys{"a"});
    EXPECT_EQ(changes.disappeared, Keys{"a"});
}

TEST(PopUpChangeTest, ItemsChangeOnlyWhenTheTitlesDoAndTheSelectionOnlyWhenItDoes) {
    const PopUpMenuState shown{{"Open Music", "Do Nothing"}, 0};
    EXPECT_EQ(popUpChange(shown, shown), PopUpChange::none);
    EXPECT_EQ(popUpChange(shown, PopUpMenuState{{"Open Music", "Do Nothing"}, 1}), PopUpChange::selection);
    EXPECT_EQ(popUpChange(shown, PopUpMenuState{{"Musik öffnen", "Nichts tun"}, 0}), PopUpChange::items);
    EXPECT_EQ(popUpChange(std::nullopt, shown), PopUpChange::items) << "a new pop-up menu is filled";
}

LayoutNode laidOut(const View& view) {
    static testsupport::FixedTextMeasurer measurer;
    return layout(view, {}, LayoutContext{.measurer = measurer, .localize = {}});
}

std::string untranslated(const LocalizedText& text) { return text.untranslated(); }

TEST(HostElementsTest, RepeatedKeysGetTheirOccurrence) {
    std::vector<View> children;
    children.push_back(verbatim("Title", Font{13}));
    children.push_back(verbatim("Artist", Font{11}));
    children.push_back(button("same", [] {}, verbatim("One", Font{11})));
    children.push_back(button("same", [] {}, verbatim("Two", Font{11})));
    const View view = vStack(HorizontalAlignment::leading, 0, std::move(children));
    const LayoutNode root = laidOut(view);
    Keys keys;
    for (const AccessibilityElement& each : accessibilityElements(root, untranslated)) keys.push_back(each.key);
    EXPECT_EQ(keys, (Keys{"text#0", "text#1", "button:same", "button:same#1"}));
}

TEST(HostToolTipsTest, ATooltipAroundANativeSwitchIsTheSwitchsOwnAndNotARectangle) {
    std::vector<View> children;
    children.push_back(nativeSwitch(Binding<bool>{false, [](bool) {}}, ControlSize::small, Color::black())
                           .help(appText("Turn off")));
    children.push_back(button("go", [] {}, verbatim("Go", Font{11})).help(appText("Go now")));
    children.push_back(nativeSwitch(Binding<bool>{false, [](bool) {}}, ControlSize::small, Color::black()));
    const View view = vStack(HorizontalAlignment::leading, 0, std::move(children));
    const LayoutNode root = laidOut(view);
    const HostToolTips tips = hostToolTips(root, untranslated);
    EXPECT_EQ(tips.switches, (Keys{"Turn off", ""}));
    ASSERT_EQ(tips.regions.size(), 1u);
    EXPECT_EQ(tips.regions[0].text, "Go now");
}

}  // namespace
}  // namespace orvik
