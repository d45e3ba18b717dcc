// Colours of the kit's views, as the views name them: the platform's standard
// colours, its hierarchical foreground styles (primary, secondary, tertiary),
// the separator colour and plain sRGB colours, each with an opacity. A colour
// becomes a concrete sRGB value only when it is painted, for an appearance
// (light or dark): `standardColor` holds the platform's published values, and
// a canvas may answer from the platform itself instead (Canvas::resolve).
//
// Pure values; safe on any thread.
#pragma once

#include <cstdint>
#include <utility>
#include <vector>

namespace orvik {

enum class Appearance : std::uint8_t { light, dark };

// The platform's standard colours the views are drawn in; `accent` is the
// user's system accent colour, `keyboardFocusIndicator` the translucent
// colour of the ring around the control that has keyboard focus.
enum class NamedColor : std::uint8_t { gray, green, orange, pink, white, black, accent, keyboardFocusIndicator };

// The foreground styles that follow the appearance: primary for text, then
// two weaker levels.
enum class HierarchicalStyle : std::uint8_t { primary, secondary, tertiary };

// A concrete colour: sRGB components and alpha, each 0 to 1.
struct Rgba {
    double red = 0;
    double green = 0;
    double blue = 0;
    double alpha = 1;

    friend constexpr bool operator==(const Rgba&, const Rgba&) = default;
};

struct Color {
    enum class Kind : std::uint8_t { named, hierarchical, separator, sRGB };

    Kind kind = Kind::named;
    NamedColor named = NamedColor::black;
    HierarchicalStyle style = HierarchicalStyle::primary;
    Rgba rgba{};           // for sRGB colours
    double opacity = 1.0;  // multiplies the colour's own alpha

    static constexpr Color standard(NamedColor color) { return Color{.kind = Kind::named, .named = color}; }
    static constexpr Color gray() { return standard(NamedColor::gray); }
    static constexpr Color green() { return standard(NamedColor::green); }
    static constexpr Color orange() { return standard(NamedColor::orange); }
    static constexpr Color pink() { return standard(NamedColor::pink); }
    static constexpr Color white() { return standard(NamedColor::white); }
    static constexpr Color black() { return standard(NamedColor::black); }
    static constexpr Color accentColor() { return standard(NamedColor::accent); }
    static constexpr Color keyboardFocusIndicator() { return standard(NamedColor::keyboardFocusIndicator); }
    static constexpr Color hierarchical(HierarchicalStyle level) {
        return Color{.kind = Kind::hierarchical, .style = level};
    }
    static constexpr Color primary() { return hierarchical(HierarchicalStyle::primary); }
    static constexpr Color secondary() { return hierarchical(HierarchicalStyle::secondary); }
    static constexpr Color tertiary() { return hierarchical(HierarchicalStyle::tertiary); }
    static constexpr Color separator() { return Color{.kind = Kind::separator}; }
    static constexpr Color sRGB(double red, double green, double blue, double alpha = 1.0) {
        return Color{.kind = Kind::sRGB, .rgba = Rgba{red, green, blue, alpha}};
    }

    // The same colour with its opacity multiplied by `factor`.
    constexpr Color withOpacity(double factor) const {
        Color copy = *this;
        copy.opacity *= factor;
        return copy;
    }

    friend constexpr bool operator==(const Color&, const Color&) = default;
};

// A point in a shape's own frame, (0, 0) top leading to (1, 1) bottom trailing.
struct UnitPoint {
    double x = 0.5;
    double y = 0.5;

    static constexpr UnitPoint top() { return {0.5, 0}; }
    static constexpr UnitPoint bottom() { return {0.5, 1}; }

    friend constexpr bool operator==(const UnitPoint&, const UnitPoint&) = default;
};

// How a shape or a symbol is filled: one colour, a linear gradient of
// colours spread evenly from `startPoint` to `endPoint`, or the platform's
// automatic gradient of one colour (a subtle top-to-bottom gradient that
// starts lighter than the colour and ends at it).
struct Fill {
    enum class Kind : std::uint8_t { color, linearGradient, automaticGradient };

    Kind kind = Kind::color;
    Color color{};
    std::vector<Color> stops{};
    UnitPoint startPoint = UnitPoint::top();
    UnitPoint endPoint = UnitPoint::bottom();

    static Fill solid(Color color) { return Fill{.kind = Kind::color, .color = color}; }
    static Fill linearGradient(std::vector<Color> stops, UnitPoint start = UnitPoint::top(),
                               UnitPoint end = UnitPoint::bottom()) {
        return Fill{.kind = Kind::linearGradient, .stops = std::move(stops), .startPoint = start, .endPoint = end};
    }
    static Fill automaticGradient(Color color) { return Fill{.kind = Kind::automaticGradient, .color = color}; }

    friend bool operator==(const Fill&, const Fill&) = default;
};

// The platform's standard value of `color` under `appearance`, its opacity
// applied. Named colours are the system colours (gray, green, orange, pink,
// the default blue accent); primary, secondary and tertiary are the label
// colours; the separator is the separator colour.
Rgba standardColor(const Color& color, Appearance appearance);

// The two ends of the automatic gradient of an already resolved colour: the
// colour lifted a little towards white at the top, the colour itself at the
// bottom.
struct GradientEnds {
    Rgba top;
    Rgba bottom;
};
GradientEnds automaticGradientEnds(Rgba color);

}  // namespace orvik
