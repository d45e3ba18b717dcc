// What the platform hosts read off a laid-out tree: hover areas under the
// pointer, the button a command-key shortcut presses, and the accessibility
// elements with their roles and labels (artwork left out).
#include "OrvikKit/HostSupport.h"

#include <gtest/gtest.h>

#include "TestSupport/RecordingCanvas.h"

namespace orvik {
namespace {

using Role = AccessibilityNode::Role;

class HostSupportTest : public testing::Test {
protected:
    LayoutNode laidOut(const View& view) {
        return layout(view, ProposedSize::unspecified(),
                      LayoutContext{.measurer = measurer,
                                    .localize = [](const LocalizedText& text) { return text.untranslated(); }});
    }
    std::function<std::string(const LocalizedText&)> localize = [](const LocalizedText& text) {
        return text.untranslated();
    };
    testsupport::FixedTextMeasurer measurer;
};

TEST_F(HostSupportTest, HoverAreasUnderThePointerAreReportedAndNoneOutside) {
    const View view = vStack(HorizontalAlignment::leading, 0,
                             {trackingHover(verbatim("one", Font{10}).frame(100, 20), "first"),
                              trackingHover(verbatim("two", Font{10}).frame(100, 20), "second")});
    const LayoutNode root = laidOut(view);
    EXPECT_EQ(hoveredIDs(root, Point{5, 5}), (std::set<std::string, std::less<>>{"first"}));
    EXPECT_EQ(hoveredIDs(root, Point{5, 25}), (std::set<std::string, std::less<>>{"second"}));
    EXPECT_TRUE(hoveredIDs(root, Point{500, 5}).empty());
}

TEST_F(HostSupportTest, AShortcutFindsItsButtonAndAnUnknownOneNothing) {
    int quits = 0;
    const View view = hStack(VerticalAlignment::center, 4,
                             {button("other", [] {}, verbatim("Other", Font{10})),
                              button("quit", [&quits] { ++quits; }, verbatim("Quit", Font{10}), 'q')});
    const LayoutNode root = laidOut(view);
    const LayoutNode* found = buttonForShortcut(root, 'q');
    ASSERT_NE(found, nullptr);
    std::get<ButtonNode>(found->view->node).action();
    EXPECT_EQ(quits, 1);
    EXPECT_EQ(buttonForShortcut(root, 'x'), nullptr);
}

TEST_F(HostSupportTest, ButtonsTextsAndControlsAreLabelledAndArtworkIsLeftOut) {
    const View view = vStack(
        HorizontalAlignment::leading, 4,
        {image(nullptr).frame(44, 44),
         verbatim("Title", Font{13}),
         button("play", [] {}, symbol("play.fill", Font{12})).help(LocalizedText{.key = "Play or pause", .table = std::nullopt, .arguments = {}}),
         button("quit", [] {}, verbatim("Quit", Font{10})),
         hStack(VerticalAlignment::center, 8,
                {verbatim("Open at login", Font{12}), spacer(), nativeSwitch(Binding<bool>{}, ControlSize::mini,
                                                                             Color::pink())}),
         hStack(VerticalAlignment::center, 8,
                {verbatim("When closed", Font{12}), nativePicker({LocalizedText{.key = "A", .table = std::nullopt, .arguments = {}}}, 0, [](std::size_t) {})})});
    const std::vector<AccessibilityNode> nodes = accessibilityNodes(laidOut(view), localize);
    ASSERT_EQ(nodes.size(), 7u);
    EXPECT_EQ(nodes[0].role, Role::staticText);
    EXPECT_EQ(nodes[0].label, "Title");
    EXPECT_EQ(nodes[1].role, Role::button);
    EXPECT_EQ(nodes[1].label, "Play or pause");
    EXPECT_EQ(nodes[2].role, Role::button);
    EXPECT_EQ(nodes[2].label, "Quit");
    EXPECT_EQ(nodes[3].label, "Open at login");
    EXPECT_EQ(nodes[4].role, Role::switchControl);
    EXPECT_EQ(nodes[4].label, "Open at login");
    EXPECT_EQ(nodes[5].label, "When closed");
    EXPECT_EQ(nodes[6].role, Role::popUpMenu);
    EXPECT_EQ(nodes[6].label, "When closed");
}

}  // namespace
}  // namespace orvik
