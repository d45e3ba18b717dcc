// The menu in a right-to-left language (Arabic, Hebrew): every frame is the
// left-to-right frame reflected, the header switch and the picker sit on the
// left, the divider's indent on the right; the playback buttons keep their
// left-to-right order and symbols as a group that moves to the left; texts
// of ours run from the right while an English track name keeps its own
// direction; hit-testing and the accessibility elements follow the frames.
// Metrics are FixedTextMeasurer's.
#include <gtest/gtest.h>

#include <optional>
#include <string>
#include <vector>

#include "AppWorld.h"
#include "OrvikKit/HostSupport.h"
#include "TestSupport/FakeArtwork.h"
#include "TestSupport/FrameExpectations.h"
#include "TestSupport/RecordingCanvas.h"
#include "TestSupport/SnapshotFlag.h"
#include "Tolvane/MenuSnapshot.h"
#include "Tolvane/MenuView.h"

namespace tolvane {
namespace {

using orvik::LayoutDirection;
using orvik::LayoutNode;
using testsupport::AppWorld;
using testsupport::DrawOperation;
using testsupport::expectFrame;
using testsupport::FakeLoginItemService;
using testsupport::ScopedSnapshotFlag;
using Kind = DrawOperation::Kind;

constexpr double menuWidth = 330;

class RightToLeftMenuTest : public testing::Test {
protected:
    AppWorld world;
    std::shared_ptr<FakeLoginItemService> loginItem = std::make_shared<FakeLoginItemService>(false);

    MenuEnvironment environment() {
        return MenuEnvironment{.loginItem = loginItem, .urlOpener = world.urlOpener, .version = "1.2", .quit = [] {}};
    }
    testsupport::Rendering draw(const std::shared_ptr<AppState>& state, LayoutDirection direction) {
        return testsupport::render(MenuView{menuContent(state, environment()), {}}.body(), {},
                                   orvik::Appearance::light, direction);
    }
    std::shared_ptr<AppState> sample() {
        return MenuSnapshot::sampleState(world.services(), testsupport::drawableArtwork("sample", 88, 88));
    }
    static const LayoutNode* button(const testsupport::Rendering& rendering, std::string_view id) {
        for (const LayoutNode* node : rendering.nodesOf<orvik::ButtonNode>()) {
            if (std::get<orvik::ButtonNode>(node->view->node).id == id) return node;
        }
        return nullptr;
    }
};

// Compares two layouts of the same tree node by node: reflected about the
// menu's centre line, except inside a part kept left to right, which moves
// as a whole. Counts the nodes compared in such parts.
struct MirrorCheck {
    int keptNodes = 0;

    void compare(const LayoutNode& plain, const LayoutNode& mirrored, std::optional<double> shift) {
        if (shift) {
            ++keptNodes;
            EXPECT_NEAR(mirrored.frame.x, plain.frame.x + *shift, 1e-9);
        } else {
            EXPECT_NEAR(mirrored.frame.x, menuWidth - plain.frame.maxX(), 1e-9);
        }
        EXPECT_NEAR(mirrored.frame.y, plain.frame.y, 1e-9);
        EXPECT_NEAR(mirrored.frame.width, plain.frame.width, 1e-9);
        EXPECT_NEAR(mirrored.frame.height, plain.frame.height, 1e-9);
        std::optional<double> childShift = shift;
        if (!shift && std::holds_alternative<orvik::LayoutDirectionNode>(mirrored.view->node)) {
            childShift = mirrored.frame.x - plain.frame.x;
        }
        ASSERT_EQ(plain.children.size(), mirrored.children.size());
        for (std::size_t index = 0; index < plain.children.size(); ++index) {
            compare(plain.children[index], mirrored.children[index], childShift);
        }
    }
};

TEST_F(RightToLeftMenuTest, EveryFrameIsReflectedExceptInsideThePlaybackButtonsWhichMoveAsAGroup) {
    for (const bool snapshot : {false, true}) {
        const ScopedSnapshotFlag flag(snapshot);
        const auto state = sample();
        const auto leftToRight = draw(state, LayoutDirection::leftToRight);
        const auto rightToLeft = draw(state, LayoutDirection::rightToLeft);
        EXPECT_DOUBLE_EQ(rightToLeft.root.frame.width, menuWidth);
        MirrorCheck check;
        check.compare(leftToRight.root, rightToLeft.root, std::nullopt);
        EXPECT_GE(check.keptNodes, 3 * 5) << "the three buttons and what is inside them";
    }
}

TEST_F(RightToLeftMenuTest, TheHeaderSwitchSitsOnTheLeftAndTheAppGlyphOnTheRight) {
    const ScopedSnapshotFlag live(false);
    const auto rendering = draw(sample(), LayoutDirection::rightToLeft);
    const auto switches = rendering.framesOf<orvik::SwitchNode>();
    ASSERT_EQ(switches.size(), 2u);
    EXPECT_DOUBLE_EQ(switches[0].x, 14) << "the header's, at the menu's left padding";
    expectFrame(rendering.canvas.ofKind(Kind::fill)[0].frame, {menuWidth - 14 - 40, 14, 40, 40});
    EXPECT_DOUBLE_EQ(rendering.canvas.find(Kind::text, "Tolvane")->frame.maxX(), menuWidth - 14 - 40 - 12);
}

TEST_F(RightToLeftMenuTest, TheDrawnHeaderSwitchIsOnWithItsKnobOnTheLeft) {
    const ScopedSnapshotFlag snapshot(true);
    const auto rendering = draw(sample(), LayoutDirection::rightToLeft);
    std::optional<DrawOperation> capsule;
    std::optional<DrawOperation> knob;
    for (const auto& fill : rendering.canvas.ofKind(Kind::fill)) {
        if (!capsule && fill.shape == orvik::Shape::capsule()) capsule = fill;
        if (!knob && fill.shape == orvik::Shape::circle() && fill.frame.width > 7) knob = fill;
    }
    ASSERT_TRUE(capsule.has_value());
    ASSERT_TRUE(knob.has_value());
    EXPECT_DOUBLE_EQ(capsule->frame.x, 14);
    EXPECT_DOUBLE_EQ(knob->frame.x, 14 + 1.5) << "on, the knob sits at the trailing end: the left";
}

TEST_F(RightToLeftMenuTest, ThePickerSitsOnTheLeftOfItsRowAndTheDividerIndentIsOnTheRight) {
    const ScopedSnapshotFlag live(false);
    const auto rendering = draw(sample(), LayoutDirection::rightToLeft);
    const auto pickers = rendering.framesOf<orvik::PickerNode>();
    ASSERT_EQ(pickers.size(), 1u);
    EXPECT_DOUBLE_EQ(pickers[0].x, 14 + 10) << "the card's edge and the row's inset";
    const auto title = rendering.canvas.find(Kind::text, "When Music is closed");
    ASSERT_TRUE(title.has_value());
    EXPECT_DOUBLE_EQ(title->frame.maxX(), menuWidth - 14 - 10 - 20 - 10) << "after the icon, from the right";

    std::optional<DrawOperation> divider;
    for (const auto& fill : rendering.canvas.ofKind(Kind::fill)) {
        if (fill.paint.color() == testsupport::resolved(orvik::Color::separator())) divider = fill;
    }
    ASSERT_TRUE(divider.has_value());
    EXPECT_DOUBLE_EQ(divider->frame.x, 14);
    EXPECT_DOUBLE_EQ(divider->frame.maxX(), menuWidth - 14 - 40);
}

TEST_F(RightToLeftMenuTest, ThePlaybackButtonsKeepPreviousPlayNextFromLeftToRightAtTheCardsLeft) {
    const auto rendering = draw(sample(), LayoutDirection::rightToLeft);
    const LayoutNode* previous = button(rendering, "transport.previous");
    const LayoutNode* playPause = button(rendering, "transport.playPause");
    const LayoutNode* next = button(rendering, "transport.next");
    ASSERT_NE(previous, nullptr);
    ASSERT_NE(playPause, nullptr);
    ASSERT_NE(next, nullptr);
    EXPECT_DOUBLE_EQ(previous->frame.x, 14 + 11) << "the card's edge and padding";
    EXPECT_DOUBLE_EQ(playPause->frame.x, previous->frame.maxX() + 2);
    EXPECT_DOUBLE_EQ(next->frame.x, playPause->frame.maxX() + 2);
    for (const char* name : {"backward.fill", "pause.fill", "forward.fill"}) {
        const auto symbol = rendering.canvas.find(Kind::symbol, name);
        ASSERT_TRUE(symbol.has_value()) << name;
        EXPECT_FALSE(symbol->mirrored) << name;
    }
    // The artwork leads the row: on the right, drawn as it is.
    const auto artwork = rendering.canvas.ofKind(Kind::image);
    ASSERT_EQ(artwork.size(), 1u);
    EXPECT_DOUBLE_EQ(artwork[0].frame.maxX(), menuWidth - 14 - 11);
}

TEST_F(RightToLeftMenuTest, OurTextsRunFromTheRightAndAnEnglishTrackNameFromTheLeft) {
    const auto rendering = draw(sample(), LayoutDirection::rightToLeft);
    const auto title = rendering.canvas.find(Kind::text, "When Music is closed");
    ASSERT_TRUE(title.has_value());
    EXPECT_EQ(title->direction, LayoutDirection::rightToLeft);
    const auto name = rendering.canvas.find(Kind::text, MenuSnapshot::sampleTitle);
    ASSERT_TRUE(name.has_value());
    EXPECT_EQ(name->direction, LayoutDirection::leftToRight);
    for (const auto& text : draw(sample(), LayoutDirection::leftToRight).canvas.ofKind(Kind::text)) {
        EXPECT_EQ(text.direction, LayoutDirection::leftToRight) << text.text;
    }
}

TEST_F(RightToLeftMenuTest, ButtonsAreHitWhereTheyAreDrawnAndTheAccessibilityElementsTakeTheMirroredFrames) {
    const ScopedSnapshotFlag live(false);
    const auto state = sample();
    const auto leftToRight = draw(state, LayoutDirection::leftToRight);
    const auto rightToLeft = draw(state, LayoutDirection::rightToLeft);
    const auto localize = [](const orvik::LocalizedText& text) { return text.untranslated(); };
    const auto plain = orvik::accessibilityNodes(leftToRight.root, localize);
    const auto mirrored = orvik::accessibilityNodes(rightToLeft.root, localize);
    ASSERT_EQ(plain.size(), mirrored.size());
    ASSERT_FALSE(mirrored.empty());
    for (std::size_t index = 0; index < plain.size(); ++index) {
        EXPECT_EQ(mirrored[index].label, plain[index].label) << "the reading order is kept";
        EXPECT_EQ(mirrored[index].role, plain[index].role);
    }
    // The footer's Quit row and the header switch, on the other side.
    const LayoutNode* quit = button(rightToLeft, "footer.Quit");
    ASSERT_NE(quit, nullptr);
    expectFrame(quit->frame, {menuWidth - button(leftToRight, "footer.Quit")->frame.maxX(),
                              button(leftToRight, "footer.Quit")->frame.y, quit->frame.width, quit->frame.height});
    const orvik::Point nearLeftEdge{quit->frame.x + 3, quit->frame.y + 3};
    const LayoutNode* hit = orvik::hitTest<orvik::ButtonNode>(rightToLeft.root, nearLeftEdge);
    ASSERT_NE(hit, nullptr);
    EXPECT_EQ(std::get<orvik::ButtonNode>(hit->view->node).id, "footer.Quit");
    EXPECT_TRUE(orvik::hoveredIDs(rightToLeft.root, nearLeftEdge).contains("footer.Quit"));

    const LayoutNode* previous = button(rightToLeft, "transport.previous");
    ASSERT_NE(previous, nullptr);
    const orvik::Point onPrevious{previous->frame.x + 13, previous->frame.y + 13};
    EXPECT_EQ(std::get<orvik::ButtonNode>(orvik::hitTest<orvik::ButtonNode>(rightToLeft.root, onPrevious)->view->node).id,
              "transport.previous");

    for (const auto& element : mirrored) {
        if (element.role == orvik::AccessibilityNode::Role::switchControl) {
            EXPECT_DOUBLE_EQ(element.node->frame.x, 14) << "the header switch is read where it is drawn";
            break;
        }
    }
}

}  // namespace
}  // namespace tolvane
