#include "OrvikKit/ViewColor.h"

namespace orvik {

namespace {

constexpr Rgba rgb255(double red, double green, double blue) { return Rgba{red / 255, green / 255, blue / 255, 1}; }

// The system colours' published sRGB values, light then dark.
Rgba namedValue(NamedColor color, Appearance appearance) {
    const bool light = appearance == Appearance::light;
    switch (color) {
    case NamedColor::gray: return light ? rgb255(142, 142, 147) : rgb255(152, 152, 157);
    case NamedColor::green: return light ? rgb255(52, 199, 89) : rgb255(48, 209, 88);
    case NamedColor::orange: return light ? rgb255(255, 149, 0) : rgb255(255, 159, 10);
    case NamedColor::pink: return light ? rgb255(255, 45, 85) : rgb255(255, 55, 95);
    case NamedColor::white: return Rgba{1, 1, 1, 1};
    case NamedColor::black: return Rgba{0, 0, 0, 1};
    case NamedColor::accent: return light ? rgb255(0, 122, 255) : rgb255(10, 132, 255);
    case NamedColor::keyboardFocusIndicator: {
        // The default (blue) accent, half covering what is under it.
        Rgba ring = light ? rgb255(0, 122, 255) : rgb255(10, 132, 255);
        ring.alpha = 0.5;
        return ring;
    }
    }
    return Rgba{};  // unreachable
}

// The label colours: black in light appearance, white in dark, at falling
// opacities.
Rgba hierarchicalValue(HierarchicalStyle style, Appearance appearance) {
    const double level = appearance == Appearance::light ? 0.0 : 1.0;
    const bool light = appearance == Appearance::light;
    switch (style) {
    case HierarchicalStyle::primary: return Rgba{level, level, level, 0.85};
    case HierarchicalStyle::secondary: return Rgba{level, level, level, light ? 0.5 : 0.55};
    case HierarchicalStyle::tertiary: return Rgba{level, level, level, light ? 0.26 : 0.25};
    }
    return Rgba{};  // unreachable
}

}  // namespace

Rgba standardColor(const Color& color, Appearance appearance) {
    Rgba value;
    switch (color.kind) {
    case Color::Kind::named: value = namedValue(color.named, appearance); break;
    case Color::Kind::hierarchical: value = hierarchicalValue(color.style, appearance); break;
    case Color::Kind::separator:
        value = appearance == Appearance::light ? Rgba{0, 0, 0, 0.1} : Rgba{1, 1, 1, 0.1};
        break;
    case Color::Kind::sRGB: value = color.rgba; break;
    }
    value.alpha *= color.opacity;
    return value;
}

GradientEnds automaticGradientEnds(Rgba color) {
    constexpr double lift = 0.15;
    const auto lifted = [](double component) { return component + (1 - component) * lift; };
    return GradientEnds{.top = Rgba{lifted(color.red), lifted(color.green), lifted(color.blue), color.alpha},
                        .bottom = color};
}

}  // namespace orvik
