// Plain views the layout and painting tests build their trees from: a
// filled box of a fixed size, and a list of two children.
#pragma once

#include <utility>
#include <vector>

#include "OrvikKit/ViewTree.h"

namespace testsupport {

inline orvik::View box(double width, double height, orvik::Color color = orvik::Color::black()) {
    return orvik::shape(orvik::Shape::rectangle(), orvik::Fill::solid(color)).frame(width, height);
}

inline std::vector<orvik::View> views(orvik::View first, orvik::View second) {
    std::vector<orvik::View> list;
    list.push_back(std::move(first));
    list.push_back(std::move(second));
    return list;
}

}  // namespace testsupport
