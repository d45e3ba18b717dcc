// Right-to-left layout: which languages and texts run from the right, which
// symbols turn round, and how a laid-out tree mirrors (stacks, insets,
// alignments, a subtree kept left to right), with what the hosts read off it
// (hit-testing, hover areas, accessibility frames) and what snapshots do
// with the language (SnapshotTests). Metrics are FixedTextMeasurer's.
#include "OrvikKit/LayoutDirection.h"

#include <gtest/gtest.h>

#include <functional>
#include <string>
#include <vector>

#include "OrvikKit/Canvas.h"
#include "OrvikKit/HostSupport.h"
#include "OrvikKit/Layout.h"
#include "OrvikKit/ViewTree.h"
#include "TestSupport/FrameExpectations.h"
#include "TestSupport/SampleViews.h"
#include "TestSupport/RecordingCanvas.h"

namespace orvik {
namespace {

using testsupport::DrawOperation;
using testsupport::expectFrame;
using testsupport::render;
using testsupport::box;
using testsupport::views;
using Kind = DrawOperation::Kind;

constexpr LayoutDirection ltr = LayoutDirection::leftToRight;
constexpr LayoutDirection rtl = LayoutDirection::rightToLeft;

// "Shalom" in Hebrew and "marhaban" in Arabic, for the direction checks.
const std::string hebrewWord = "\u05E9\u05DC\u05D5\u05DD";
const std::string arabicWord = "\u0645\u0631\u062D\u0628\u0627";

TEST(LayoutDirectionTest, ArabicHebrewPersianAndUrduRunFromTheRightOtherLanguagesFromTheLeft) {
    for (const char* language : {"ar", "he", "fa", "ur", "he-IL", "ar_SA", "AR", "iw", "yi", "ps", "ckb", "ug"}) {
        EXPECT_EQ(layoutDirectionForLanguage(language), rtl) << language;
    }
    for (const char* language : {"en", "de", "ja", "zh-Hans", "zh_Hant", "pt-BR", "tr", "ru", "", "arn", "hey"}) {
        EXPECT_EQ(layoutDirectionForLanguage(language), ltr) << language;
    }
}

TEST(LayoutDirectionTest, AScriptSubtagDecidesOverTheLanguage) {
    EXPECT_EQ(layoutDirectionForLanguage("pa-Arab"), rtl);
    EXPECT_EQ(layoutDirectionForLanguage("az-Arab-IR"), rtl);
    EXPECT_EQ(layoutDirectionForLanguage("ug-Cyrl"), ltr);
    EXPECT_EQ(layoutDirectionForLanguage("ku-Latn"), ltr);
    EXPECT_EQ(layoutDirectionForLanguage("yi-Hebr"), rtl);
    EXPECT_EQ(layoutDirectionForLanguage("ar-SA"), rtl) << "a region is not a script";
}

TEST(LayoutDirectionTest, SymbolsPointingForwardOrBackwardTurnRoundButPhysicalDirectionsAndPlaybackDoNot) {
    for (const char* name : {"chevron.forward", "chevron.backward", "arrow.uturn.backward", "arrow.forward.circle",
                             "arrowshape.turn.up.forward.fill"}) {
        EXPECT_TRUE(mirrorsInRightToLeft(name)) << name;
    }
    for (const char* name : {"chevron.right", "arrow.left", "forward.fill", "backward.fill", "backward.end.fill",
                             "goforward.10", "play.fill", "playpause.fill", "music.note", "keyboard", "forward",
                             "chevron.up.chevron.down", ""}) {
        EXPECT_FALSE(mirrorsInRightToLeft(name)) << name;
    }
}

TEST(LayoutDirectionTest, ATextRunsInTheDirectionOfItsFirstStrongCharacter) {
    EXPECT_EQ(firstStrongDirection("So What", rtl), ltr);
    EXPECT_EQ(firstStrongDirection(hebrewWord, ltr), rtl);
    EXPECT_EQ(firstStrongDirection(arabicWord, ltr), rtl);
    EXPECT_EQ(firstStrongDirection("1999 " + hebrewWord, ltr), rtl) << "digits are weak";
    EXPECT_EQ(firstStrongDirection("(Live) " + hebrewWord, rtl), ltr);
    EXPECT_EQ(firstStrongDirection("\u0663 " + arabicWord, ltr), rtl) << "an Arabic-Indic digit is weak";
    EXPECT_EQ(firstStrongDirection("\u041C\u0438\u0440", rtl), ltr) << "Cyrillic";
    EXPECT_EQ(firstStrongDirection("\u97F3\u697D", rtl), ltr) << "Han";
    EXPECT_EQ(firstStrongDirection("\u2318Q", rtl), ltr);
    EXPECT_EQ(firstStrongDirection("\u2318 \u2026 12", rtl), rtl) << "neutral only: the fallback";
    EXPECT_EQ(firstStrongDirection("", ltr), ltr);
    EXPECT_EQ(firstStrongDirection("\xFF\xC3" + hebrewWord, ltr), rtl) << "malformed bytes are skipped";
}

TEST(MirroredLayoutTest, AHorizontalStackRunsFromTheRight) {
    const auto rendering = render(hStack(VerticalAlignment::center, 5, views(box(50, 10), box(30, 20))), {}, {}, rtl);
    expectFrame(rendering.root.frame, {0, 0, 85, 20});
    const auto fills = rendering.canvas.ofKind(Kind::fill);
    ASSERT_EQ(fills.size(), 2u);
    expectFrame(fills[0].frame, {35, 5, 50, 10});
    expectFrame(fills[1].frame, {0, 0, 30, 20});
}

TEST(MirroredLayoutTest, ASpacerPushesTheTrailingChildToTheLeft) {
    std::vector<View> children;
    children.push_back(box(20, 10));
    children.push_back(spacer());
    children.push_back(box(30, 10));
    const auto rendering = render(hStack(VerticalAlignment::center, 0, std::move(children)), {200, std::nullopt}, {}, rtl);
    const auto fills = rendering.canvas.ofKind(Kind::fill);
    expectFrame(fills[0].frame, {180, 0, 20, 10});
    expectFrame(fills[1].frame, {0, 0, 30, 10});
}

TEST(MirroredLayoutTest, ALeadingInsetLandsOnTheRight) {
    const View indented = box(100, 10).padding(EdgeInsets{2, 40, 3, 5});
    const auto leftToRight = render(View(indented));
    const auto rightToLeft = render(View(indented), {}, {}, rtl);
    expectFrame(leftToRight.canvas.ofKind(Kind::fill)[0].frame, {40, 2, 100, 10});
    expectFrame(rightToLeft.canvas.ofKind(Kind::fill)[0].frame, {5, 2, 100, 10});
    expectFrame(rightToLeft.root.frame, {0, 0, 145, 15});
}

TEST(MirroredLayoutTest, LeadingAndTrailingAlignmentsSwapSides) {
    const auto column =
        render(vStack(HorizontalAlignment::leading, 0, views(box(50, 10), box(30, 10))), {}, {}, rtl);
    expectFrame(column.canvas.ofKind(Kind::fill)[1].frame, {20, 10, 30, 10});

    const auto framed = render(box(10, 10).frame(100, 20, Alignment::trailing()), {}, {}, rtl);
    expectFrame(framed.canvas.ofKind(Kind::fill)[0].frame, {0, 5, 10, 10});

    const auto overlaid =
        render(box(100, 20).overlay(box(10, 10, Color::white()), Alignment::leading()), {}, {}, rtl);
    expectFrame(overlaid.canvas.ofKind(Kind::fill)[1].frame, {90, 5, 10, 10});
}

// Every node of `mirrored` is the node of `plain` reflected about the root's
// vertical centre line.
void expectMirrored(const LayoutNode& plain, const LayoutNode& mirrored, double rootWidth) {
    EXPECT_NEAR(mirrored.frame.x, rootWidth - plain.frame.maxX(), 1e-9);
    EXPECT_NEAR(mirrored.frame.y, plain.frame.y, 1e-9);
    EXPECT_NEAR(mirrored.frame.width, plain.frame.width, 1e-9);
    EXPECT_NEAR(mirrored.frame.height, plain.frame.height, 1e-9);
    ASSERT_EQ(plain.children.size(), mirrored.children.size());
    for (std::size_t index = 0; index < plain.children.size(); ++index) {
        expectMirrored(plain.children[index], mirrored.children[index], rootWidth);
    }
}

View nestedRows() {
    std::vector<View> row;
    row.push_back(symbol("star", Font{20}));
    row.push_back(verbatim("abcd", Font{10}, std::nullopt, 1).padding(EdgeInsets{0, 7, 0, 3}));
    row.push_back(spacer(4));
    row.push_back(box(30, 10).frame(40, 30, Alignment::topLeading()));
    std::vector<View> rows;
    rows.push_back(hStack(VerticalAlignment::top, 6, std::move(row)));
    rows.push_back(divider().padding(EdgeInsets{0, 40, 0, 0}));
    rows.push_back(text(kitText("Quit"), Font{12}).frame(View::FlexibleFrame{.maxWidth = infinity,
                                                                              .alignment = Alignment::leading()}));
    return vStack(HorizontalAlignment::leading, 3, std::move(rows)).padding(EdgeInsets{1, 9, 2, 4});
}

TEST(MirroredLayoutTest, EveryFrameOfANestedTreeIsTheLeftToRightFrameReflected) {
    const auto leftToRight = render(nestedRows(), {250, std::nullopt});
    const auto rightToLeft = render(nestedRows(), {250, std::nullopt}, {}, rtl);
    expectMirrored(leftToRight.root, rightToLeft.root, 250);
}

TEST(MirroredLayoutTest, ASubtreeKeptLeftToRightRunsFromTheLeftWhereverItIsPlaced) {
    std::vector<View> group;
    group.push_back(box(10, 10));
    group.push_back(box(20, 10));
    std::vector<View> row;
    row.push_back(box(50, 10));
    row.push_back(hStack(VerticalAlignment::center, 2, std::move(group)).layoutDirection(ltr));
    const auto rendering = render(hStack(VerticalAlignment::center, 8, std::move(row)), {}, {}, rtl);
    const auto fills = rendering.canvas.ofKind(Kind::fill);
    ASSERT_EQ(fills.size(), 3u);
    expectFrame(fills[0].frame, {40, 0, 50, 10});
    // The group's first child stays on its left.
    expectFrame(fills[1].frame, {0, 0, 10, 10});
    expectFrame(fills[2].frame, {12, 0, 20, 10});
}

TEST(MirroredLayoutTest, EveryNodeKnowsTheDirectionOfItsEnvironment) {
    std::vector<View> row;
    row.push_back(box(10, 10));
    row.push_back(box(10, 10).layoutDirection(ltr));
    const auto rendering = render(hStack(VerticalAlignment::center, 0, std::move(row)), {}, {}, rtl);
    EXPECT_EQ(rendering.root.direction, rtl);
    const auto& kept = rendering.root.children[1];
    EXPECT_EQ(kept.direction, rtl) << "the node that sets the direction sits in its parent's";
    EXPECT_EQ(kept.children[0].direction, ltr);
    EXPECT_EQ(render(box(10, 10)).root.direction, ltr) << "the context's default";
}

TEST(MirroredLayoutTest, ADirectionalSymbolIsMirroredInARightToLeftLayoutAndNoOtherIs) {
    const auto symbols = [](LayoutDirection direction) {
        std::vector<View> row;
        row.push_back(symbol("chevron.forward", Font{10}));
        row.push_back(symbol("music.note", Font{10}));
        row.push_back(symbol("chevron.forward", Font{10}).layoutDirection(ltr));
        return render(hStack(VerticalAlignment::center, 0, std::move(row)), {}, {}, direction)
            .canvas.ofKind(Kind::symbol);
    };
    const auto mirrored = symbols(rtl);
    ASSERT_EQ(mirrored.size(), 3u);
    EXPECT_TRUE(mirrored[0].mirrored);
    EXPECT_FALSE(mirrored[1].mirrored);
    EXPECT_FALSE(mirrored[2].mirrored) << "kept left to right";
    for (const auto& operation : symbols(ltr)) EXPECT_FALSE(operation.mirrored) << operation.text;
}

TEST(MirroredLayoutTest, ImagesMoveWithTheLayoutButAreNotFlipped) {
    const auto picture = std::make_shared<testsupport::FakeViewImage>(40, 20);
    std::vector<View> row;
    row.push_back(image(picture).frame(40, 20));
    row.push_back(box(10, 10));
    const auto rendering = render(hStack(VerticalAlignment::center, 0, std::move(row)), {}, {}, rtl);
    const auto images = rendering.canvas.ofKind(Kind::image);
    ASSERT_EQ(images.size(), 1u);
    expectFrame(images[0].frame, {10, 0, 40, 20});
}

TEST(MirroredLayoutTest, OurTextsRunInTheLayoutsDirectionAndOthersInTheirOwn) {
    const auto texts = [](LayoutDirection direction) {
        std::vector<View> column;
        column.push_back(text(kitText("Quit"), Font{12}));
        column.push_back(verbatim("So What", Font{12}));
        column.push_back(verbatim(hebrewWord, Font{12}));
        column.push_back(verbatim("\u2318", Font{12}));
        return render(vStack(HorizontalAlignment::leading, 0, std::move(column)), {}, {}, direction)
            .canvas.ofKind(Kind::text);
    };
    const auto rightToLeft = texts(rtl);
    ASSERT_EQ(rightToLeft.size(), 4u);
    EXPECT_EQ(rightToLeft[0].direction, rtl);
    EXPECT_EQ(rightToLeft[1].direction, ltr) << "an English track name keeps its own direction";
    EXPECT_EQ(rightToLeft[2].direction, rtl);
    EXPECT_EQ(rightToLeft[3].direction, rtl) << "no strong character: the layout's";
    const auto leftToRight = texts(ltr);
    EXPECT_EQ(leftToRight[0].direction, ltr);
    EXPECT_EQ(leftToRight[1].direction, ltr);
    EXPECT_EQ(leftToRight[2].direction, rtl) << "a Hebrew track name runs from the right in any menu";
    EXPECT_EQ(leftToRight[3].direction, ltr);
}

class MirroredHostSupportTest : public testing::Test {
protected:
    LayoutNode laidOut(const View& view, LayoutDirection direction) {
        return layout(view, ProposedSize::unspecified(),
                      LayoutContext{.measurer = measurer, .localize = localize, .direction = direction});
    }
    View row() const {
        std::vector<View> children;
        children.push_back(trackingHover(button("first", [] {}, verbatim("one", Font{10}).frame(100, 20)), "first"));
        children.push_back(trackingHover(button("second", [] {}, verbatim("two", Font{10}).frame(60, 20)), "second"));
        return hStack(VerticalAlignment::center, 0, std::move(children));
    }
    std::function<std::string(const LocalizedText&)> localize = [](const LocalizedText& text) {
        return text.untranslated();
    };
    testsupport::FixedTextMeasurer measurer;
};

TEST_F(MirroredHostSupportTest, HoverAreasAndButtonsAreFoundWhereTheMirroredLayoutDrewThem) {
    const View view = row();
    const LayoutNode root = laidOut(view, rtl);
    EXPECT_EQ(hoveredIDs(root, Point{150, 5}), (std::set<std::string, std::less<>>{"first"}));
    EXPECT_EQ(hoveredIDs(root, Point{5, 5}), (std::set<std::string, std::less<>>{"second"}));
    const LayoutNode* hit = hitTest<ButtonNode>(root, Point{150, 5});
    ASSERT_NE(hit, nullptr);
    EXPECT_EQ(std::get<ButtonNode>(hit->view->node).id, "first");
    hit = hitTest<ButtonNode>(root, Point{59, 5});
    ASSERT_NE(hit, nullptr);
    EXPECT_EQ(std::get<ButtonNode>(hit->view->node).id, "second");
}

TEST_F(MirroredHostSupportTest, AccessibilityElementsKeepTheirReadingOrderAndTakeTheMirroredFrames) {
    const View view = row();
    const LayoutNode root = laidOut(view, rtl);
    const auto nodes = accessibilityNodes(root, localize);
    ASSERT_EQ(nodes.size(), 2u);
    EXPECT_EQ(nodes[0].label, "one");
    expectFrame(nodes[0].node->frame, {60, 0, 100, 20});
    EXPECT_EQ(nodes[1].label, "two");
    expectFrame(nodes[1].node->frame, {0, 0, 60, 20});
}

}  // namespace
}  // namespace orvik
