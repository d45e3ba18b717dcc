#include "OrvikKit/AppBrand.h"

namespace orvik {

const AppBrand& AppBrand::kitDefault() {
    static const AppBrand brand{
        .name = "Orvik Works",
        .symbol = "square.grid.2x2",
        .gradient = {Color::gray(), Color::secondary()},
        .accent = Color::accentColor(),
        .symbolScale = 0.42,
    };
    return brand;
}

}  // namespace orvik
