// Shape outlines: continuous corners for rounded rectangles, circular arcs
// for capsules and circles.
#include "OrvikKit/ShapePath.h"

#include <gtest/gtest.h>

namespace orvik {
namespace {

using Kind = PathElement::Kind;

Point end(const PathElement& element) { return element.kind == Kind::curveTo ? element.points[2] : element.points[0]; }

void expectInside(const std::vector<PathElement>& path, Rect frame) {
    for (const PathElement& element : path) {
        const std::size_t count = element.kind == Kind::curveTo ? 3 : element.kind == Kind::close ? 0 : 1;
        for (std::size_t index = 0; index < count; ++index) {
            EXPECT_GE(element.points[index].x, frame.x - 1e-9);
            EXPECT_LE(element.points[index].x, frame.maxX() + 1e-9);
            EXPECT_GE(element.points[index].y, frame.y - 1e-9);
            EXPECT_LE(element.points[index].y, frame.maxY() + 1e-9);
        }
    }
}

TEST(ShapePathTest, AContinuousCornerReachesAboutOneAndAHalfRadiiAlongEachEdgeAndMeetsItTangentially) {
    const Rect frame{10, 20, 100, 60};
    const auto path = outline(PlacedShape{Shape::roundedRectangle(12), frame});
    ASSERT_GE(path.size(), 3u);
    EXPECT_EQ(path.front().kind, Kind::moveTo);
    EXPECT_EQ(path.back().kind, Kind::close);
    const double reach = 12 * continuousCornerExtent;
    EXPECT_EQ(path[0].points[0], (Point{10 + reach, 20}));
    EXPECT_EQ(path[1].points[0], (Point{110 - reach, 20}));
    // The first curve of the top-right corner leaves the top edge along it.
    ASSERT_EQ(path[2].kind, Kind::curveTo);
    EXPECT_DOUBLE_EQ(path[2].points[0].y, 20);
    EXPECT_DOUBLE_EQ(path[2].points[1].y, 20);
    // The corner's last curve arrives on the right edge, 1.53 radii down.
    const Point cornerEnd = end(path[6]);
    EXPECT_DOUBLE_EQ(cornerEnd.x, 110);
    EXPECT_NEAR(cornerEnd.y, 20 + reach, 1e-9);
    EXPECT_DOUBLE_EQ(path[6].points[1].x, 110);
    // Back where it started.
    EXPECT_NEAR(end(path[path.size() - 2]).x, 10 + reach, 1e-9);
    EXPECT_NEAR(end(path[path.size() - 2]).y, 20, 1e-9);
    expectInside(path, frame);
}

TEST(ShapePathTest, TheCornerIsSymmetricAboutItsDiagonal) {
    const auto path = outline(PlacedShape{Shape::roundedRectangle(10), Rect{0, 0, 100, 100}});
    // Top-right corner: elements 2 to 6. Its middle curve ends where the
    // mirror image of its start lies.
    const Point middleStart = end(path[3]);  // after the first line of the corner
    const Point middleEnd = end(path[4]);
    EXPECT_NEAR(100 - middleStart.x, middleEnd.y, 1e-9);
    EXPECT_NEAR(middleStart.y, 100 - middleEnd.x, 1e-9);
}

TEST(ShapePathTest, ARadiusTooLargeForTheShortSideShrinksToFit) {
    const Rect frame{0, 0, 100, 20};
    const auto path = outline(PlacedShape{Shape::roundedRectangle(12), frame});
    EXPECT_NEAR(path[0].points[0].x, 10, 1e-9);  // half the short side
    expectInside(path, frame);
}

TEST(ShapePathTest, ACapsuleHasHalfCirclesAtItsEnds) {
    const Rect frame{0, 0, 32, 18};
    const auto path = outline(PlacedShape{Shape::capsule(), frame});
    EXPECT_EQ(path[0].points[0], (Point{9, 0}));
    EXPECT_EQ(path[1].points[0], (Point{23, 0}));
    EXPECT_EQ(end(path[2]), (Point{32, 9}));
    expectInside(path, frame);
}

TEST(ShapePathTest, ACircleIsCentredInAFrameThatIsNotSquare) {
    const auto path = outline(PlacedShape{Shape::circle(), Rect{0, 0, 40, 20}});
    EXPECT_EQ(path[0].points[0], (Point{20, 0}));
    EXPECT_EQ(end(path[2]), (Point{30, 10}));
    expectInside(path, Rect{10, 0, 20, 20});
}

TEST(ShapePathTest, ARectangleHasStraightCorners) {
    const auto path = outline(PlacedShape{Shape::rectangle(), Rect{1, 2, 3, 4}});
    EXPECT_EQ(path[0].points[0], (Point{1, 2}));
    EXPECT_EQ(end(path[2]), (Point{4, 2}));
    EXPECT_EQ(end(path[4]), (Point{4, 6}));
}

}  // namespace
}  // namespace orvik
