// Layout on a device pixel grid: measured sizes rounded up to whole pixels,
// every frame edge on a pixel boundary of the scale, the root a whole number
// of points. On the fixed metrics of FixedTextMeasurer, whose 13-point
// texts are 6.5 points a character and 16.25 points a line, so that
// fractions pile up as they do with real fonts.
#include "OrvikKit/Layout.h"
#include "OrvikKit/ViewTree.h"

#include <gtest/gtest.h>

#include <cmath>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "TestSupport/FrameExpectations.h"
#include "TestSupport/RecordingCanvas.h"
#include "TestSupport/SampleViews.h"

namespace orvik {
namespace {

using testsupport::box;
using testsupport::expectFrame;

// The views, in order, as a stack's children.
template <class... Views>
std::vector<View> views(Views... each) {
    std::vector<View> children;
    (children.push_back(std::move(each)), ...);
    return children;
}

// The layout points into the view tree: the caller keeps `view` alive.
LayoutNode laidOut(const View& view, std::optional<double> scale, ProposedSize proposal = {}) {
    testsupport::FixedTextMeasurer measurer;
    return layout(view, proposal, LayoutContext{.measurer = measurer, .localize = {}, .pixelScale = scale});
}

bool onGrid(double position, double scale) {
    const double pixels = position * scale;
    return std::abs(pixels - std::round(pixels)) < 1e-9;
}

// Every node's four edges, with the path of node indices that leads to it.
void expectEveryEdgeOnTheGrid(const LayoutNode& node, double scale, const std::string& path = "root") {
    EXPECT_TRUE(onGrid(node.frame.x, scale)) << path << " left " << node.frame.x << " at " << scale;
    EXPECT_TRUE(onGrid(node.frame.y, scale)) << path << " top " << node.frame.y << " at " << scale;
    EXPECT_TRUE(onGrid(node.frame.maxX(), scale)) << path << " right " << node.frame.maxX() << " at " << scale;
    EXPECT_TRUE(onGrid(node.frame.maxY(), scale)) << path << " bottom " << node.frame.maxY() << " at " << scale;
    for (std::size_t index = 0; index < node.children.size(); ++index) {
        expectEveryEdgeOnTheGrid(node.children[index], scale, path + "/" + std::to_string(index));
    }
}

const Font body{13};

// A card as the menu draws them: texts of fractional height above a
// divider and a row whose fill children share 100 points three ways, the
// whole centred in a 331-point frame on a rounded background.
View card() {
    std::vector<View> row;
    row.push_back(shape(Shape::rectangle(), Fill::solid(Color::black())));
    row.push_back(shape(Shape::rectangle(), Fill::solid(Color::black())));
    row.push_back(shape(Shape::rectangle(), Fill::solid(Color::black())));
    return vStack(HorizontalAlignment::center, 3.3,
                  views(verbatim("Now playing", body), verbatim("An artist", Font{11}), divider(),
                        hStack(VerticalAlignment::center, 0, std::move(row)).frame(100, 7), box(33, 5)))
        .padding(EdgeInsets{7.25, 9, 7.25, 9})
        .background(shape(Shape::roundedRectangle(10), Fill::solid(Color::white())))
        .frame(331, std::nullopt);
}

TEST(PixelGridTest, WithoutAScaleTheFramesKeepTheirFractions) {
    const View view = verbatim("abc", body);
    expectFrame(laidOut(view, std::nullopt).frame, {0, 0, 19.5, 16.25});
}

TEST(PixelGridTest, EveryFrameEdgeLandsOnAWholePixelAtOneAndAtTwoPixelsAPoint) {
    const View view = card();
    for (const double scale : {1.0, 2.0}) {
        const LayoutNode root = laidOut(view, scale);
        expectEveryEdgeOnTheGrid(root, scale);
    }
}

TEST(PixelGridTest, TheSameCardOffTheGridHasEdgesBetweenPixels) {
    // The check above can fail: without a scale the card's edges fall
    // between pixels.
    const View view = card();
    const LayoutNode root = laidOut(view, std::nullopt);
    EXPECT_FALSE(onGrid(root.frame.maxY(), 2));
}

TEST(PixelGridTest, TheRootIsAWholeNumberOfPointsAndWhatWasFlushWithItsEdgesStaysFlush) {
    const View view = card();
    const double unaligned = laidOut(view, std::nullopt).frame.height;
    ASSERT_NE(unaligned, std::round(unaligned)) << "the card is a fraction of a point high off the grid";
    for (const double scale : {1.0, 2.0}) {
        const LayoutNode root = laidOut(view, scale);
        EXPECT_EQ(root.frame.width, std::round(root.frame.width)) << scale;
        EXPECT_EQ(root.frame.height, std::round(root.frame.height)) << scale;
        // The background shape is as high as the root: no uncovered sliver
        // at the bottom of a snapshot.
        const LayoutNode& background = root.children.front().children.back();
        ASSERT_TRUE(std::holds_alternative<ShapeNode>(background.view->node));
        EXPECT_EQ(background.frame.maxY(), root.frame.height) << scale;
    }
}

TEST(PixelGridTest, ATextIsRoundedUpToWholePixelsSoItKeepsAllOfItsLine) {
    // 19.5 × 16.25 points, above a box that makes the root 100 points wide.
    const View view = vStack(HorizontalAlignment::leading, 0, views(verbatim("abc", body), box(100, 10)));
    expectFrame(laidOut(view, 1).children[0].frame, {0, 0, 20, 17});
    expectFrame(laidOut(view, 2).children[0].frame, {0, 0, 19.5, 16.5});
}

TEST(PixelGridTest, NeighboursThatSharedAnEdgeStillShareIt) {
    const View view =
        vStack(HorizontalAlignment::leading, 0, views(verbatim("one", body), verbatim("two", Font{11}), box(10, 3.3)));
    const LayoutNode root = laidOut(view, 1);
    ASSERT_EQ(root.children.size(), 3u);
    EXPECT_EQ(root.children[0].frame.maxY(), root.children[1].frame.y);
    EXPECT_EQ(root.children[1].frame.maxY(), root.children[2].frame.y);
}

TEST(PixelGridTest, AOnePointDividerCoversWholeRowsOfPixels) {
    const View view =
        vStack(HorizontalAlignment::leading, 0, views(verbatim("above", body), divider(), verbatim("below", body)))
            .frame(120, std::nullopt);
    for (const double scale : {1.0, 2.0}) {
        const LayoutNode root = laidOut(view, scale);
        std::vector<const LayoutNode*> dividers;
        collect<DividerNode>(root, dividers);
        ASSERT_EQ(dividers.size(), 1u);
        EXPECT_EQ(dividers[0]->frame.height, 1) << scale;
        EXPECT_TRUE(onGrid(dividers[0]->frame.y, scale)) << scale;
    }
}

TEST(PixelGridTest, ACutTextStaysInsideItsFrame) {
    // Rounding a cut text up to whole pixels never widens it past what it
    // was proposed, so after snapping it still ends inside its frame.
    const View view = hStack(VerticalAlignment::top, 0,
                             views(verbatim("a long title that is cut", body, std::nullopt, 1)
                                       .frame(50.3, std::nullopt, Alignment{HorizontalAlignment::leading,
                                                                            VerticalAlignment::top}),
                                   box(10.7, 10)));
    for (const double scale : {1.0, 2.0}) {
        const LayoutNode root = laidOut(view, scale);
        const LayoutNode& frame = root.children.front();
        const LayoutNode& title = frame.children.front();
        EXPECT_TRUE(title.truncated);
        EXPECT_LE(title.frame.maxX(), frame.frame.maxX()) << scale;
        EXPECT_TRUE(cutTexts(root).size() == 1 && cutTexts(root).front() == &title) << "cut, not pushed out";
    }
}

}  // namespace
}  // namespace orvik
