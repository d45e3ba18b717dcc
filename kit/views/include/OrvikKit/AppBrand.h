// The brand record that colours every kit view: the app's display name, the
// system symbol of its glyph, the glyph's gradient (top to bottom), the
// accent (switches, prominent buttons, icon tiles, the glyph's shadow) and
// the glyph symbol's size as a fraction of the glyph.
//
// The brand travels down the view tree in the environment (View::appBrand
// sets it for a subtree; brandReader reads it); where no brand is set, the
// kit default applies. Pure value; safe on any thread.
#pragma once

#include <string>
#include <vector>

#include "OrvikKit/ViewColor.h"

namespace orvik {

struct AppBrand {
    std::string name{};
    std::string symbol{};
    std::vector<Color> gradient{};
    Color accent{};
    double symbolScale = 0;

    // The environment's default: "Orvik Works", "square.grid.2x2", gray to
    // secondary, the system accent colour, 0.42.
    static const AppBrand& kitDefault();

    friend bool operator==(const AppBrand&, const AppBrand&) = default;
};

}  // namespace orvik
