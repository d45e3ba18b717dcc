// Keyboard focus over the drawn buttons (Full Keyboard Access): the order
// Tab follows, moving and wrapping, dropping a focus whose button is gone,
// and the ring the paint pass draws around the focused button only.
#include "OrvikKit/Canvas.h"
#include "OrvikKit/HostSupport.h"

#include <gtest/gtest.h>

#include <optional>
#include <string>
#include <vector>

#include "TestSupport/FrameExpectations.h"
#include "TestSupport/RecordingCanvas.h"
#include "TestSupport/SampleViews.h"

namespace orvik {
namespace {

using testsupport::DrawOperation;
using testsupport::expectFrame;
using Ids = std::vector<std::string>;

View pill(const std::string& id) {
    return button(id, [] {}, verbatim(id, Font{13}).padding(4).background(shape(Shape::capsule(), Fill::solid(Color::gray()))));
}

// Three buttons in a row, with a text between the first two.
View row() {
    std::vector<View> children;
    children.push_back(pill("back"));
    children.push_back(verbatim("between", Font{13}));
    children.push_back(pill("play"));
    children.push_back(pill("forward"));
    return hStack(VerticalAlignment::center, 8, std::move(children)).padding(10);
}

LayoutNode laidOut(const View& view, LayoutDirection direction = LayoutDirection::leftToRight) {
    static testsupport::FixedTextMeasurer measurer;
    return layout(view, {}, LayoutContext{.measurer = measurer, .localize = {}, .direction = direction});
}

TEST(KeyboardFocusTest, TabFollowsTheButtonsInReadingOrderLeftToRight) {
    const View view = row();
    const LayoutNode root = laidOut(view);
    EXPECT_EQ(focusOrder(root), (Ids{"back", "play", "forward"}));
    EXPECT_LT(buttonWithID(root, "back")->frame.x, buttonWithID(root, "forward")->frame.x);
}

TEST(KeyboardFocusTest, InARightToLeftLayoutTabRunsFromTheRight) {
    const View view = row();
    const LayoutNode root = laidOut(view, LayoutDirection::rightToLeft);
    EXPECT_EQ(focusOrder(root), (Ids{"back", "play", "forward"}));
    // The first in reading order is the rightmost on screen.
    EXPECT_GT(buttonWithID(root, "back")->frame.x, buttonWithID(root, "play")->frame.x);
    EXPECT_GT(buttonWithID(root, "play")->frame.x, buttonWithID(root, "forward")->frame.x);
}

TEST(KeyboardFocusTest, TabStartsAtTheFirstAndWrapsFromTheLast) {
    const View view = row();
    const LayoutNode root = laidOut(view);
    std::optional<std::string> focused;
    focused = movedFocus(root, focused, FocusMove::next);
    EXPECT_EQ(focused, "back");
    focused = movedFocus(root, focused, FocusMove::next);
    EXPECT_EQ(focused, "play");
    focused = movedFocus(root, focused, FocusMove::next);
    EXPECT_EQ(focused, "forward");
    focused = movedFocus(root, focused, FocusMove::next);
    EXPECT_EQ(focused, "back");
}

TEST(KeyboardFocusTest, ShiftTabStartsAtTheLastAndGoesBackWrapping) {
    const View view = row();
    const LayoutNode root = laidOut(view);
    std::optional<std::string> focused = movedFocus(root, std::nullopt, FocusMove::previous);
    EXPECT_EQ(focused, "forward");
    focused = movedFocus(root, "back", FocusMove::previous);
    EXPECT_EQ(focused, "forward");
    EXPECT_EQ(movedFocus(root, "play", FocusMove::previous), "back");
}

TEST(KeyboardFocusTest, AFocusWhoseButtonIsGoneIsDroppedAndTabStartsAgain) {
    const View view = row();
    const LayoutNode root = laidOut(view);
    EXPECT_EQ(keptFocus(root, "play"), "play");
    EXPECT_EQ(keptFocus(root, "gone"), std::nullopt);
    EXPECT_EQ(keptFocus(root, std::nullopt), std::nullopt);
    EXPECT_EQ(movedFocus(root, "gone", FocusMove::next), "back");
}

TEST(KeyboardFocusTest, ATreeWithoutButtonsTakesNoFocus) {
    const View view = verbatim("just text", Font{13});
    const LayoutNode root = laidOut(view);
    EXPECT_TRUE(focusOrder(root).empty());
    EXPECT_EQ(movedFocus(root, std::nullopt, FocusMove::next), std::nullopt);
}

TEST(KeyCommandTest, EscapeClosesWhetherOrNotFullKeyboardAccessIsOn) {
    EXPECT_EQ(keyCommand("\x1b", false, false), KeyCommand::close);
    EXPECT_EQ(keyCommand("\x1b", true, true), KeyCommand::close);
}

TEST(KeyCommandTest, TabAndShiftTabMoveTheFocusOnlyWithFullKeyboardAccess) {
    EXPECT_EQ(keyCommand("\t", false, true), KeyCommand::focusNext);
    EXPECT_EQ(keyCommand("\t", true, true), KeyCommand::focusPrevious);
    EXPECT_EQ(keyCommand("\x19", true, true), KeyCommand::focusPrevious) << "Shift-Tab as the back-tab character";
    EXPECT_EQ(keyCommand("\t", false, false), KeyCommand::none);
    EXPECT_EQ(keyCommand("\x19", true, false), KeyCommand::none);
}

TEST(KeyCommandTest, SpaceReturnAndEnterPressTheFocusedButtonAndOtherKeysAreNotTheHosts) {
    for (const char* press : {" ", "\r", "\x03"}) {
        EXPECT_EQ(keyCommand(press, false, true), KeyCommand::pressFocused) << static_cast<int>(press[0]);
        EXPECT_EQ(keyCommand(press, false, false), KeyCommand::none) << static_cast<int>(press[0]);
    }
    EXPECT_EQ(keyCommand("q", false, true), KeyCommand::none);
    EXPECT_EQ(keyCommand("", false, true), KeyCommand::none);
}

std::vector<DrawOperation> ringsOf(const testsupport::RecordingCanvas& canvas) {
    std::vector<DrawOperation> rings;
    for (const DrawOperation& operation : canvas.operations) {
        if (operation.kind == DrawOperation::Kind::strokeInside &&
            operation.color == testsupport::resolved(Color::keyboardFocusIndicator())) {
            rings.push_back(operation);
        }
    }
    return rings;
}

TEST(FocusRingTest, OnlyTheFocusedButtonIsRingedOutsideItsOwnShape) {
    const View view = row();
    const LayoutNode root = laidOut(view);
    testsupport::RecordingCanvas unfocused;
    paint(root, unfocused, Appearance::light);
    EXPECT_TRUE(ringsOf(unfocused).empty()) << "no focus, no ring";

    testsupport::RecordingCanvas focused;
    paint(root, focused, Appearance::light, "play");
    const std::vector<DrawOperation> rings = ringsOf(focused);
    ASSERT_EQ(rings.size(), 1u);
    const Rect button = buttonWithID(root, "play")->frame;
    expectFrame(rings[0].frame, {button.x - focusRingWidth, button.y - focusRingWidth,
                                 button.width + 2 * focusRingWidth, button.height + 2 * focusRingWidth});
    EXPECT_EQ(rings[0].shape.kind, Shape::Kind::capsule) << "the ring follows the pill's shape";
    EXPECT_DOUBLE_EQ(rings[0].width, focusRingWidth);
    // Drawn over the button's contents: right after its label.
    std::size_t ring = 0;
    while (ring < focused.operations.size() && focused.operations[ring].kind != DrawOperation::Kind::strokeInside) {
        ++ring;
    }
    ASSERT_GT(ring, 0u);
    EXPECT_EQ(focused.operations[ring - 1].kind, DrawOperation::Kind::text);
    EXPECT_EQ(focused.operations[ring - 1].text, "play");
}

TEST(FocusRingTest, AButtonWithoutABackgroundShapeIsRingedAsARoundedRectangle) {
    const View view = button("plain", [] {}, verbatim("Quit", Font{13}));
    const LayoutNode root = laidOut(view);
    testsupport::RecordingCanvas canvas;
    paint(root, canvas, Appearance::dark, "plain");
    const std::vector<DrawOperation> rings = [&canvas] {
        std::vector<DrawOperation> found;
        for (const DrawOperation& operation : canvas.operations) {
            if (operation.kind == DrawOperation::Kind::strokeInside) found.push_back(operation);
        }
        return found;
    }();
    ASSERT_EQ(rings.size(), 1u);
    EXPECT_EQ(rings[0].shape.kind, Shape::Kind::roundedRectangle);
    EXPECT_EQ(rings[0].color, testsupport::resolved(Color::keyboardFocusIndicator(), Appearance::dark));
}

}  // namespace
}  // namespace orvik
