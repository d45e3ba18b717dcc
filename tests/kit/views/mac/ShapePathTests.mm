// The CoreGraphics canvas draws the kit's portable outlines: the CGPath it
// builds for every kind of shape holds the same elements, point for point,
// as ShapePath's outline, which the Linux previews draw. macOS only.
#include <CoreGraphics/CoreGraphics.h>

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "OrvikKit/ShapePath.h"
#include "OrvikKitMac/CoreGraphicsCanvas.h"

namespace orvik::mac {
namespace {

// The elements of a CGPath in the portable form.
std::vector<PathElement> elementsOf(CGPathRef path) {
    std::vector<PathElement> elements;
    CGPathApply(path, &elements, [](void* info, const CGPathElement* element) {
        auto& into = *static_cast<std::vector<PathElement>*>(info);
        const auto point = [element](int index) {
            return Point{element->points[index].x, element->points[index].y};
        };
        switch (element->type) {
        case kCGPathElementMoveToPoint: into.push_back({PathElement::Kind::moveTo, {point(0), Point{}, Point{}}}); break;
        case kCGPathElementAddLineToPoint:
            into.push_back({PathElement::Kind::lineTo, {point(0), Point{}, Point{}}});
            break;
        case kCGPathElementAddCurveToPoint:
            into.push_back({PathElement::Kind::curveTo, {point(0), point(1), point(2)}});
            break;
        case kCGPathElementCloseSubpath: into.push_back({PathElement::Kind::close, {}}); break;
        case kCGPathElementAddQuadCurveToPoint:
            // The outline has no quadratic curves: record one as a mismatch.
            into.push_back({PathElement::Kind::moveTo, {Point{-1, -1}, Point{}, Point{}}});
            break;
        }
    });
    return elements;
}

struct Case {
    std::string name;
    PlacedShape shape;
};

TEST(CoreGraphicsShapePathTest, EveryShapeKindIsTheKitsOutlinePointForPoint) {
    const std::vector<Case> cases{
        {"rectangle", PlacedShape{Shape::rectangle(), Rect{3.5, 7, 120, 40}}},
        {"rounded rectangle", PlacedShape{Shape::roundedRectangle(12), Rect{0, 0, 330, 96}}},
        {"rounded rectangle whose radius is clamped", PlacedShape{Shape::roundedRectangle(30), Rect{10, 10, 40, 24}}},
        {"22-point capsule (the Check and Not Now buttons)", PlacedShape{Shape::capsule(), Rect{20, 5, 64, 22}}},
        {"upright capsule", PlacedShape{Shape::capsule(), Rect{0, 0, 8, 30}}},
        {"circle in a wide frame", PlacedShape{Shape::circle(), Rect{4, 4, 40, 28}}},
    };
    for (const Case& each : cases) {
        SCOPED_TRACE(each.name);
        const std::vector<PathElement> expected = outline(each.shape);
        const std::vector<PathElement> actual = elementsOf(shapePath(each.shape).get());
        ASSERT_EQ(actual.size(), expected.size());
        for (std::size_t index = 0; index < expected.size(); ++index) {
            SCOPED_TRACE("element " + std::to_string(index));
            EXPECT_EQ(actual[index].kind, expected[index].kind);
            const std::size_t points = expected[index].kind == PathElement::Kind::curveTo ? 3
                               : expected[index].kind == PathElement::Kind::close ? 0
                                                                                   : 1;
            for (std::size_t point = 0; point < points; ++point) {
                EXPECT_DOUBLE_EQ(actual[index].points[point].x, expected[index].points[point].x);
                EXPECT_DOUBLE_EQ(actual[index].points[point].y, expected[index].points[point].y);
            }
        }
    }
}

}  // namespace
}  // namespace orvik::mac
