// The outline of a placed shape as path elements (moves, lines, cubic
// curves, close), in the canvas's coordinates, for canvases whose platform
// has no such shapes of its own.
//
// Rounded rectangles get continuous corners: each corner is a run of cubic
// curves that starts 1.528665 × the radius from the corner along each edge
// and eases into the curve, instead of a quarter circle that meets the edge
// abruptly. Where a side is too short for that, the radius shrinks to fit.
// Capsules and circles are drawn with circular arcs (as cubic curves).
//
// Pure; safe on any thread.
#pragma once

#include <array>
#include <cstdint>
#include <vector>

#include "OrvikKit/Canvas.h"

namespace orvik {

struct PathElement {
    enum class Kind : std::uint8_t { moveTo, lineTo, curveTo, close };

    Kind kind = Kind::moveTo;
    // moveTo and lineTo: points[0]; curveTo: control points 0 and 1, end 2.
    std::array<Point, 3> points{};

    friend constexpr bool operator==(const PathElement&, const PathElement&) = default;
};

// How far from its corner a continuous corner of radius 1 reaches along
// each edge.
inline constexpr double continuousCornerExtent = 1.52866483;

std::vector<PathElement> outline(const PlacedShape& shape);

}  // namespace orvik
