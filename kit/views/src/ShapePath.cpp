#include "OrvikKit/ShapePath.h"

#include <algorithm>
#include <cmath>

namespace orvik {

namespace {

// One continuous corner of radius 1, from the end of one edge to the start
// of the next, in coordinates where the corner is the origin, `along` runs
// back along the incoming edge and `inward` into the shape along the
// outgoing one: (distance along the incoming edge, distance along the
// outgoing edge).
struct CornerStep {
    bool isCurve;
    std::array<Point, 3> points;  // unit offsets; a line uses points[0]
};

constexpr CornerStep cornerSteps[] = {
    {true, {Point{1.08849323, 0}, Point{0.86840689, 0}, Point{0.66993427, 0.06549600}}},
    {false, {Point{0.63149399, 0.07491100}, Point{}, Point{}}},
    {true, {Point{0.37282392, 0.16905899}, Point{0.16905899, 0.37282392}, Point{0.07491100, 0.63149399}}},
    {false, {Point{0.06549600, 0.66993427}, Point{}, Point{}}},
    {true, {Point{0, 0.86840689}, Point{0, 1.08849323}, Point{0, continuousCornerExtent}}},
};

// A corner at `corner`, whose incoming edge runs in direction `in` and
// outgoing edge in direction `out` (unit vectors).
void appendCorner(std::vector<PathElement>& path, Point corner, Point in, Point out, double radius) {
    const auto place = [&](Point unit) {
        // `unit.x` back along the incoming edge, `unit.y` along the outgoing.
        return Point{corner.x - in.x * unit.x * radius + out.x * unit.y * radius,
                     corner.y - in.y * unit.x * radius + out.y * unit.y * radius};
    };
    for (const CornerStep& step : cornerSteps) {
        if (step.isCurve) {
            path.push_back({PathElement::Kind::curveTo,
                            {place(step.points[0]), place(step.points[1]), place(step.points[2])}});
        } else {
            path.push_back({PathElement::Kind::lineTo, {place(step.points[0]), Point{}, Point{}}});
        }
    }
}

std::vector<PathElement> continuousRoundedRectangle(Rect frame, double radius) {
    const double limit = std::min(frame.width, frame.height) / 2 / continuousCornerExtent;
    radius = std::clamp(radius, 0.0, limit);
    const double reach = radius * continuousCornerExtent;
    std::vector<PathElement> path;
    path.reserve(2 + 4 * (1 + std::size(cornerSteps)));
    path.push_back({PathElement::Kind::moveTo, {Point{frame.x + reach, frame.y}, Point{}, Point{}}});
    // Clockwise (y down): top edge, top-right corner, right edge, and so on.
    const Point right{1, 0}, down{0, 1}, left{-1, 0}, up{0, -1};
    path.push_back({PathElement::Kind::lineTo, {Point{frame.maxX() - reach, frame.y}, Point{}, Point{}}});
    appendCorner(path, Point{frame.maxX(), frame.y}, right, down, radius);
    path.push_back({PathElement::Kind::lineTo, {Point{frame.maxX(), frame.maxY() - reach}, Point{}, Point{}}});
    appendCorner(path, Point{frame.maxX(), frame.maxY()}, down, left, radius);
    path.push_back({PathElement::Kind::lineTo, {Point{frame.x + reach, frame.maxY()}, Point{}, Point{}}});
    appendCorner(path, Point{frame.x, frame.maxY()}, left, up, radius);
    path.push_back({PathElement::Kind::lineTo, {Point{frame.x, frame.y + reach}, Point{}, Point{}}});
    appendCorner(path, Point{frame.x, frame.y}, up, right, radius);
    path.push_back({PathElement::Kind::close, {}});
    return path;
}

// A circular arc of a quarter turn as one cubic curve.
constexpr double quarterArc = 0.5522847498;

// A rectangle with circular corners of `radius` (a capsule when the radius is
// half the shorter side; a circle when the frame is square too).
std::vector<PathElement> circularRoundedRectangle(Rect frame, double radius) {
    radius = std::clamp(radius, 0.0, std::min(frame.width, frame.height) / 2);
    const double k = radius * quarterArc;
    const double x0 = frame.x, x1 = frame.maxX(), y0 = frame.y, y1 = frame.maxY();
    std::vector<PathElement> path;
    path.reserve(10);
    path.push_back({PathElement::Kind::moveTo, {Point{x0 + radius, y0}, Point{}, Point{}}});
    path.push_back({PathElement::Kind::lineTo, {Point{x1 - radius, y0}, Point{}, Point{}}});
    path.push_back({PathElement::Kind::curveTo,
                    {Point{x1 - radius + k, y0}, Point{x1, y0 + radius - k}, Point{x1, y0 + radius}}});
    path.push_back({PathElement::Kind::lineTo, {Point{x1, y1 - radius}, Point{}, Point{}}});
    path.push_back({PathElement::Kind::curveTo,
                    {Point{x1, y1 - radius + k}, Point{x1 - radius + k, y1}, Point{x1 - radius, y1}}});
    path.push_back({PathElement::Kind::lineTo, {Point{x0 + radius, y1}, Point{}, Point{}}});
    path.push_back({PathElement::Kind::curveTo,
                    {Point{x0 + radius - k, y1}, Point{x0, y1 - radius + k}, Point{x0, y1 - radius}}});
    path.push_back({PathElement::Kind::lineTo, {Point{x0, y0 + radius}, Point{}, Point{}}});
    path.push_back({PathElement::Kind::curveTo,
                    {Point{x0, y0 + radius - k}, Point{x0 + radius - k, y0}, Point{x0 + radius, y0}}});
    path.push_back({PathElement::Kind::close, {}});
    return path;
}

}  // namespace

std::vector<PathElement> outline(const PlacedShape& placed) {
    const Rect& frame = placed.frame;
    switch (placed.shape.kind) {
    case Shape::Kind::rectangle: return circularRoundedRectangle(frame, 0);
    case Shape::Kind::roundedRectangle: return continuousRoundedRectangle(frame, placed.shape.cornerRadius);
    case Shape::Kind::capsule: return circularRoundedRectangle(frame, std::min(frame.width, frame.height) / 2);
    case Shape::Kind::circle: {
        const double side = std::min(frame.width, frame.height);
        const Rect square{frame.x + (frame.width - side) / 2, frame.y + (frame.height - side) / 2, side, side};
        return circularRoundedRectangle(square, side / 2);
    }
    }
    return {};
}

}  // namespace orvik
