// The view tree's layout (proposal and response), painting order and colour
// resolution, on the fixed metrics of FixedTextMeasurer (a character is half
// the font size wide, a line 1.25 × the size high; a symbol is a square of
// its font size).
#include "OrvikKit/Canvas.h"
#include "OrvikKit/Layout.h"
#include "OrvikKit/ViewTree.h"

#include <gtest/gtest.h>

#include <string>

#include "TestSupport/FrameExpectations.h"
#include "TestSupport/SampleViews.h"
#include "TestSupport/RecordingCanvas.h"
#include "TestSupport/SnapshotFlag.h"

namespace orvik {
namespace {

using testsupport::DrawOperation;
using testsupport::FakeViewImage;
using testsupport::render;
using testsupport::box;
using testsupport::views;
using testsupport::resolved;
using Kind = DrawOperation::Kind;
using testsupport::expectFrame;

TEST(StackLayoutTest, AVerticalStackPlacesItsChildrenBelowEachOtherWithItsSpacing) {
    const auto leading = render(vStack(HorizontalAlignment::leading, 5, views(box(50, 10), box(30, 20))));
    expectFrame(leading.root.frame, {0, 0, 50, 35});
    const auto fills = leading.canvas.ofKind(Kind::fill);
    ASSERT_EQ(fills.size(), 2u);
    expectFrame(fills[0].frame, {0, 0, 50, 10});
    expectFrame(fills[1].frame, {0, 15, 30, 20});

    const auto centred = render(vStack(HorizontalAlignment::center, 5, views(box(50, 10), box(30, 20))));
    expectFrame(centred.canvas.ofKind(Kind::fill)[1].frame, {10, 15, 30, 20});
}

TEST(StackLayoutTest, AHorizontalStackServesRigidChildrenFirstAndItsSpacerTakesWhatIsLeft) {
    std::vector<View> children;
    children.push_back(symbol("star", Font{20}));
    children.push_back(verbatim("abcd", Font{10}, std::nullopt, 1));
    children.push_back(spacer());
    children.push_back(box(30, 10));
    const auto rendering = render(hStack(VerticalAlignment::center, 10, std::move(children)), {200, std::nullopt});

    expectFrame(rendering.root.frame, {0, 0, 200, 20});
    expectFrame(rendering.canvas.ofKind(Kind::symbol)[0].frame, {0, 0, 20, 20});
    expectFrame(rendering.canvas.ofKind(Kind::text)[0].frame, {30, 3.75, 20, 12.5});
    expectFrame(rendering.framesOf<SpacerNode>()[0], {60, 0, 100, 20});
    expectFrame(rendering.canvas.ofKind(Kind::fill)[0].frame, {170, 5, 30, 10});
}

TEST(StackLayoutTest, ASpacerKeepsItsMinimumLengthWhenTheTextNeedsEverything) {
    std::vector<View> children;
    children.push_back(verbatim(std::string(100, 'x'), Font{10}, std::nullopt, 1));
    children.push_back(spacer(4));
    children.push_back(box(30, 10));
    const auto rendering = render(hStack(VerticalAlignment::center, 10, std::move(children)), {200, std::nullopt});
    expectFrame(rendering.root.frame, {0, 0, 200, 12.5});
    // 200 - 2 × 10 spacing - 4 spacer - 30 box
    EXPECT_DOUBLE_EQ(rendering.canvas.ofKind(Kind::text)[0].frame.width, 146);
    expectFrame(rendering.framesOf<SpacerNode>()[0], {156, 0, 4, 12.5});
}

TEST(StackLayoutTest, AShortTextKeepsItsLengthBesideALongOneInTheSameStack) {
    std::vector<View> children;
    children.push_back(verbatim(std::string(60, 'l'), Font{10}, std::nullopt, 1));  // 300 wide
    children.push_back(verbatim("short", Font{10}, std::nullopt, 1));               // 25 wide
    const auto rendering = render(hStack(VerticalAlignment::center, 0, std::move(children)), {100, std::nullopt});
    const auto texts = rendering.canvas.ofKind(Kind::text);
    EXPECT_DOUBLE_EQ(texts[0].frame.width, 75);
    EXPECT_DOUBLE_EQ(texts[1].frame.width, 25);
}

TEST(TextLayoutTest, AOneLineTextIsCutWithAnEllipsisAtTheProposedWidth) {
    const auto rendering = render(verbatim(std::string(40, 'a'), Font{10}, std::nullopt, 1), {100, std::nullopt});
    expectFrame(rendering.root.frame, {0, 0, 100, 12.5});
    EXPECT_TRUE(rendering.root.truncated);
    const auto texts = rendering.canvas.ofKind(Kind::text);
    ASSERT_EQ(texts.size(), 1u);
    EXPECT_EQ(texts[0].lineLimit, 1);
}

TEST(TextLayoutTest, AWrappingTextBreaksBetweenWordsAndGrowsInHeight) {
    const auto rendering = render(verbatim("aaaa bbbb cccc dddd", Font{10}), {50, std::nullopt});
    expectFrame(rendering.root.frame, {0, 0, 45, 25});
    EXPECT_FALSE(rendering.root.truncated);
    EXPECT_TRUE(rendering.root.wrapped);
    EXPECT_EQ(rendering.canvas.ofKind(Kind::text)[0].lineLimit, std::nullopt);
}

TEST(TextLayoutTest, ATextWithoutAProposedWidthTakesItsNaturalWidth) {
    const auto rendering = render(verbatim("abc", Font{12}));
    expectFrame(rendering.root.frame, {0, 0, 18, 15});
}

TEST(CutTextsTest, NameAOneLineTextCutWithAnEllipsisAndNoTextThatFits) {
    std::vector<View> lines;
    lines.push_back(verbatim("fits", Font{10}, std::nullopt, 1));
    lines.push_back(verbatim(std::string(40, 'a'), Font{10}, std::nullopt, 1));
    lines.push_back(verbatim("aaaa bbbb cccc dddd", Font{10}));
    const auto rendering = render(vStack(HorizontalAlignment::leading, 0, std::move(lines)), {100, std::nullopt});
    const std::vector<const LayoutNode*> cut = cutTexts(rendering.root);
    ASSERT_EQ(cut.size(), 1u);
    EXPECT_EQ(cut[0]->text, std::string(40, 'a'));
}

TEST(CutTextsTest, NameAWrappedTextTallerThanItsFixedFrame) {
    // Two lines of 12.5 points in a frame 20 points high.
    const auto rendering = render(verbatim("aaaa bbbb cccc dddd", Font{10}).frame(50, 20));
    EXPECT_FALSE(rendering.root.children.front().truncated);
    EXPECT_TRUE(rendering.root.children.front().wrapped);
    const std::vector<const LayoutNode*> cut = cutTexts(rendering.root);
    ASSERT_EQ(cut.size(), 1u);
    EXPECT_EQ(cut[0]->text, "aaaa bbbb cccc dddd");

    EXPECT_TRUE(cutTexts(render(verbatim("aaaa bbbb cccc dddd", Font{10}).frame(50, 25)).root).empty());
}

TEST(CutTextsTest, LeaveATextOnOneLineInAFrameLowerThanItsLineSpacing) {
    // One line of 12.5 points in a frame 10 points high.
    const auto rendering = render(verbatim("aaaa", Font{10}).frame(50, 10));
    EXPECT_FALSE(rendering.root.children.front().wrapped);
    EXPECT_TRUE(cutTexts(rendering.root).empty());
}

TEST(CutTextsTest, NameATextPushedPastTheEdgeOfAFixedFrame) {
    // A rigid box wider than the frame pushes the text beside it out; a
    // narrower one leaves it room.
    const auto pushed = render(hStack(VerticalAlignment::center, 0, views(box(120, 10), verbatim("ab", Font{10})))
                                   .frame(100, 20));
    const std::vector<const LayoutNode*> cut = cutTexts(pushed.root);
    ASSERT_EQ(cut.size(), 1u);
    EXPECT_EQ(cut[0]->text, "ab");

    const auto beside = render(hStack(VerticalAlignment::center, 0, views(box(80, 10), verbatim("ab", Font{10})))
                                   .frame(100, 20));
    EXPECT_TRUE(cutTexts(beside.root).empty());
}

TEST(TextLayoutTest, LocalisedTextsAreLookedUpOrShownUntranslated) {
    const auto rendering = render(text(kitText("Version %@", {"1.2"}), Font{12}));
    EXPECT_EQ(rendering.canvas.ofKind(Kind::text)[0].text, "Version 1.2");

    const View view = text(kitText("Quit"), Font{12});
    testsupport::FixedTextMeasurer measurer;
    const LayoutNode node = layout(view, {}, LayoutContext{.measurer = measurer, .localize = [](const LocalizedText&) {
                                                               return std::string("Beenden");
                                                           }});
    EXPECT_EQ(node.text, "Beenden");
}

TEST(FrameLayoutTest, PaddingShrinksTheProposalAndGrowsTheAnswer) {
    const auto rendering = render(box(10, 10).padding(EdgeInsets{1, 2, 3, 4}));
    expectFrame(rendering.root.frame, {0, 0, 16, 14});
    expectFrame(rendering.canvas.ofKind(Kind::fill)[0].frame, {2, 1, 10, 10});
}

TEST(FrameLayoutTest, AnUnboundedFlexibleFrameFillsWhatIsProposedAndAlignsItsChild) {
    const auto rendering =
        render(box(10, 10).frame(View::FlexibleFrame{.maxWidth = infinity, .alignment = Alignment::topLeading()}),
               {120, 50});
    expectFrame(rendering.root.frame, {0, 0, 120, 10});
    expectFrame(rendering.canvas.ofKind(Kind::fill)[0].frame, {0, 0, 10, 10});
}

TEST(FrameLayoutTest, AMinimumFrameGrowsASmallChildAndCentresIt) {
    const auto rendering = render(verbatim("K", Font{10}).frame(View::FlexibleFrame{.minWidth = 20, .minHeight = 20}));
    expectFrame(rendering.root.frame, {0, 0, 20, 20});
    expectFrame(rendering.canvas.ofKind(Kind::text)[0].frame, {7.5, 3.75, 5, 12.5});
}

TEST(FrameLayoutTest, AFixedFrameSetsItsSidesAndCentresItsChild) {
    const auto rendering = render(symbol("star", Font{10}).frame(26, 26));
    expectFrame(rendering.root.frame, {0, 0, 26, 26});
    expectFrame(rendering.canvas.ofKind(Kind::symbol)[0].frame, {8, 8, 10, 10});
}

TEST(LayerLayoutTest, ABackgroundTakesTheSizeOfWhatItDecoratesAndIsDrawnFirst) {
    const auto rendering = render(box(30, 10, Color::green()).background(shape(Shape::capsule(), Fill::solid(Color::pink()))));
    const auto fills = rendering.canvas.ofKind(Kind::fill);
    ASSERT_EQ(fills.size(), 2u);
    EXPECT_EQ(fills[0].shape, Shape::capsule());
    expectFrame(fills[0].frame, {0, 0, 30, 10});
    EXPECT_EQ(fills[1].paint.color(), resolved(Color::green()));
}

TEST(LayerLayoutTest, AnOverlayIsDrawnLastAndAlignedInTheContent) {
    const auto rendering = render(box(30, 10).overlay(box(4, 4, Color::white()), Alignment::trailing()));
    const auto fills = rendering.canvas.ofKind(Kind::fill);
    ASSERT_EQ(fills.size(), 2u);
    expectFrame(fills[1].frame, {26, 3, 4, 4});
}

TEST(ImageLayoutTest, AnImageFillsItsFrameKeepingItsAspectRatioAndIsClipped) {
    const auto picture = std::make_shared<FakeViewImage>(100, 50);
    const auto rendering = render(image(picture).frame(44, 44).clipShape(Shape::roundedRectangle(7)));
    const auto& operations = rendering.canvas.operations;
    ASSERT_EQ(operations.size(), 3u);
    EXPECT_EQ(operations[0].kind, Kind::beginClip);
    EXPECT_EQ(operations[0].shape, Shape::roundedRectangle(7));
    expectFrame(operations[0].frame, {0, 0, 44, 44});
    EXPECT_EQ(operations[1].kind, Kind::image);
    EXPECT_EQ(operations[1].image, picture.get());
    expectFrame(operations[1].frame, {-22, 0, 88, 44});
    EXPECT_EQ(operations[2].kind, Kind::endClip);
}

TEST(PaintTest, ShadowsOpacityAndClipsAreBalancedGroups) {
    const auto rendering = render(box(10, 10)
                                      .opacity(0.7)
                                      .shadow(ShadowStyle{Color::black().withOpacity(0.2), 1, 0, 0.5})
                                      .clipShape(Shape::circle()));
    EXPECT_TRUE(rendering.canvas.groupsBalance());
    const auto shadows = rendering.canvas.ofKind(Kind::beginShadow);
    ASSERT_EQ(shadows.size(), 1u);
    EXPECT_EQ(shadows[0].shadow, (ResolvedShadow{Rgba{0, 0, 0, 0.2}, 1, 0, 0.5}));
    EXPECT_DOUBLE_EQ(rendering.canvas.ofKind(Kind::beginOpacity)[0].opacity, 0.7);
}

TEST(PaintTest, TextsWithoutAColourTakeTheForegroundStyleWhichStartsAsPrimary) {
    const auto plain = render(verbatim("a", Font{10}));
    EXPECT_EQ(plain.canvas.ofKind(Kind::text)[0].color, resolved(Color::primary()));
    const auto styled = render(verbatim("a", Font{10}).foregroundStyle(Color::secondary()));
    EXPECT_EQ(styled.canvas.ofKind(Kind::text)[0].color, resolved(Color::secondary()));
    const auto own = render(verbatim("a", Font{10}, Color::orange()).foregroundStyle(Color::secondary()));
    EXPECT_EQ(own.canvas.ofKind(Kind::text)[0].color, resolved(Color::orange()));
}

TEST(PaintTest, ALinearGradientRunsTopToBottomAcrossItsFrame) {
    const auto rendering = render(linearGradient({Color::gray(), Color::secondary()}).frame(10, 40));
    const Paint paint = rendering.canvas.ofKind(Kind::fill)[0].paint;
    EXPECT_TRUE(paint.isGradient);
    ASSERT_EQ(paint.colorCount, 2u);
    EXPECT_EQ(paint.colors[0], resolved(Color::gray()));
    EXPECT_EQ(paint.colors[1], resolved(Color::secondary()));
    EXPECT_EQ(paint.start, (Point{5, 0}));
    EXPECT_EQ(paint.end, (Point{5, 40}));
}

TEST(PaintTest, NativeControlsAreLeftToTheHost) {
    const auto rendering = render(nativeSwitch(Binding<bool>{true, {}}, ControlSize::small, Color::pink()));
    EXPECT_TRUE(rendering.canvas.operations.empty());
    expectFrame(rendering.root.frame, {0, 0, 32, 18});
}

TEST(PaintTest, ADividerInAVerticalStackIsAOnePointLineInTheSeparatorColour) {
    std::vector<View> rows;
    rows.push_back(box(100, 10));
    rows.push_back(divider().padding(EdgeInsets{0, 40, 0, 0}));
    const auto rendering = render(vStack(HorizontalAlignment::leading, 0, std::move(rows)), {100, std::nullopt});
    const auto fills = rendering.canvas.ofKind(Kind::fill);
    ASSERT_EQ(fills.size(), 2u);
    expectFrame(fills[1].frame, {40, 10, 60, 1});
    EXPECT_EQ(fills[1].paint.color(), resolved(Color::separator()));
}

TEST(ColorTest, HierarchicalStylesFollowTheAppearance) {
    EXPECT_EQ(standardColor(Color::primary(), Appearance::light), (Rgba{0, 0, 0, 0.85}));
    EXPECT_EQ(standardColor(Color::primary(), Appearance::dark), (Rgba{1, 1, 1, 0.85}));
    EXPECT_EQ(standardColor(Color::secondary(), Appearance::light), (Rgba{0, 0, 0, 0.5}));
    EXPECT_EQ(standardColor(Color::secondary(), Appearance::dark), (Rgba{1, 1, 1, 0.55}));
    EXPECT_EQ(standardColor(Color::tertiary(), Appearance::light), (Rgba{0, 0, 0, 0.26}));
    EXPECT_EQ(standardColor(Color::tertiary(), Appearance::dark), (Rgba{1, 1, 1, 0.25}));
}

TEST(ColorTest, NamedColoursAreTheSystemColoursOfEachAppearance) {
    EXPECT_EQ(standardColor(Color::pink(), Appearance::light), (Rgba{1, 45.0 / 255, 85.0 / 255, 1}));
    EXPECT_EQ(standardColor(Color::pink(), Appearance::dark), (Rgba{1, 55.0 / 255, 95.0 / 255, 1}));
    EXPECT_EQ(standardColor(Color::green(), Appearance::light), (Rgba{52.0 / 255, 199.0 / 255, 89.0 / 255, 1}));
    EXPECT_EQ(standardColor(Color::orange(), Appearance::dark), (Rgba{1, 159.0 / 255, 10.0 / 255, 1}));
    EXPECT_EQ(standardColor(Color::gray(), Appearance::light), (Rgba{142.0 / 255, 142.0 / 255, 147.0 / 255, 1}));
    EXPECT_EQ(standardColor(Color::accentColor(), Appearance::light), (Rgba{0, 122.0 / 255, 1, 1}));
    EXPECT_EQ(standardColor(Color::accentColor(), Appearance::dark), (Rgba{10.0 / 255, 132.0 / 255, 1, 1}));
    EXPECT_EQ(standardColor(Color::white(), Appearance::dark), (Rgba{1, 1, 1, 1}));
}

TEST(ColorTest, OpacityMultipliesTheColoursOwnAlpha) {
    EXPECT_DOUBLE_EQ(standardColor(Color::primary().withOpacity(0.05), Appearance::light).alpha, 0.85 * 0.05);
    EXPECT_DOUBLE_EQ(standardColor(Color::sRGB(1, 0, 0, 0.5).withOpacity(0.5), Appearance::dark).alpha, 0.25);
}

TEST(ColorTest, TheAutomaticGradientStartsLighterAndEndsAtTheColour) {
    const Rgba pink = standardColor(Color::pink(), Appearance::light);
    const GradientEnds ends = automaticGradientEnds(pink);
    EXPECT_EQ(ends.bottom, pink);
    EXPECT_GT(ends.top.green, pink.green);
    EXPECT_DOUBLE_EQ(ends.top.red, 1);
}

TEST(BrandEnvironmentTest, WithoutABrandTheKitDefaultIsRead) {
    std::string seen;
    const auto rendering = render(brandReader([&seen](const AppBrand& brand) {
        seen = brand.name;
        return verbatim(brand.symbol, Font{10});
    }));
    EXPECT_EQ(seen, "Orvik Works");
    EXPECT_EQ(rendering.canvas.ofKind(Kind::text)[0].text, "square.grid.2x2");
}

TEST(BrandEnvironmentTest, TheNearestBrandSetAboveIsRead) {
    AppBrand inner = AppBrand::kitDefault();
    inner.name = "Inner";
    AppBrand outer = AppBrand::kitDefault();
    outer.name = "Outer";
    const auto rendering = render(
        brandReader([](const AppBrand& brand) { return verbatim(brand.name, Font{10}); }).appBrand(inner).appBrand(outer));
    EXPECT_EQ(rendering.canvas.ofKind(Kind::text)[0].text, "Inner");
}

TEST(BrandEnvironmentTest, TheKitDefaultBrandIsOrvikWorks) {
    const AppBrand& brand = AppBrand::kitDefault();
    EXPECT_EQ(brand.name, "Orvik Works");
    EXPECT_EQ(brand.symbol, "square.grid.2x2");
    EXPECT_EQ(brand.gradient, (std::vector<Color>{Color::gray(), Color::secondary()}));
    EXPECT_EQ(brand.accent, Color::accentColor());
    EXPECT_DOUBLE_EQ(brand.symbolScale, 0.42);
}

TEST(HitTestTest, TheInnermostButtonUnderThePointIsFound) {
    int pressed = 0;
    std::vector<View> row;
    row.push_back(button("first", [&pressed] { pressed = 1; }, box(20, 20)));
    row.push_back(button("second", [&pressed] { pressed = 2; }, box(20, 20)));
    const auto rendering = render(hStack(VerticalAlignment::center, 10, std::move(row)));
    const LayoutNode* hit = hitTest<ButtonNode>(rendering.root, Point{35, 5});
    ASSERT_NE(hit, nullptr);
    std::get<ButtonNode>(hit->view->node).action();
    EXPECT_EQ(pressed, 2);
    EXPECT_EQ(hitTest<ButtonNode>(rendering.root, Point{25, 5}), nullptr) << "the spacing is no button";
}

TEST(HoverTest, TrackingHoverMarksTheViewForTheHostOnlyOutsideSnapshots) {
    {
        const testsupport::ScopedSnapshotFlag live(false);
        const View view = trackingHover(box(10, 10), "row");
        ASSERT_TRUE(std::holds_alternative<HoverNode>(view.node));
        EXPECT_EQ(std::get<HoverNode>(view.node).id, "row");
    }
    {
        const testsupport::ScopedSnapshotFlag snapshot(true);
        const View view = trackingHover(box(10, 10), "row");
        EXPECT_TRUE(std::holds_alternative<FrameNode>(view.node)) << "the view comes back unchanged";
    }
}

}  // namespace
}  // namespace orvik

namespace orvik {
namespace {

// Two arrangements of the same boxes: a row 100 wide, a column 40 wide.
View rowOrColumn() {
    std::vector<View> choices;
    choices.push_back(hStack(VerticalAlignment::center, 0, testsupport::views(box(60, 10), box(40, 10))));
    choices.push_back(vStack(HorizontalAlignment::leading, 0, testsupport::views(box(40, 10), box(30, 10))));
    return firstThatFits(std::move(choices));
}

TEST(FirstThatFitsTest, TheFirstArrangementIsTakenWhenItsIdealWidthFits) {
    const auto rendering = render(rowOrColumn(), {100, std::nullopt});
    expectFrame(rendering.root.frame, {0, 0, 100, 10});
    ASSERT_EQ(rendering.root.children.size(), 1u) << "only the chosen one is laid out";
}

TEST(FirstThatFitsTest, TheNextIsTakenWhenTheFirstIsWiderThanProposed) {
    const auto rendering = render(rowOrColumn(), {99, std::nullopt});
    expectFrame(rendering.root.frame, {0, 0, 40, 20});
    EXPECT_EQ(rendering.canvas.ofKind(Kind::fill).size(), 2u) << "the column's two boxes, not the row's";
}

TEST(FirstThatFitsTest, TheLastIsTakenWhenNoneFitsAndTheFirstWithoutAProposal) {
    expectFrame(render(rowOrColumn(), {10, std::nullopt}).root.frame, {0, 0, 40, 20});
    expectFrame(render(rowOrColumn()).root.frame, {0, 0, 100, 10});
}

}  // namespace
}  // namespace orvik
