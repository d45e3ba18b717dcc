// The painting port: what a laid-out view tree draws, in the root's point
// coordinates (origin top left, y down). The platform implements it once
// (CoreGraphics and CoreText on macOS, Cairo and Pango for the Linux
// previews, a recording canvas in the tests); `paint` walks a layout and
// makes the calls.
//
// Groups nest: every begin is matched by its end, innermost first. A shadow
// group casts one shadow for everything drawn inside it; an opacity group
// composites its contents at that opacity as one layer; a clip group clips
// its contents to the shape. Shadow and opacity groups are given the frame
// of what they hold, so that a platform layer can be bounded by it (a
// shadow reaches beyond it by its offset and blur).
//
// Main thread only.
#pragma once

#include <array>
#include <optional>
#include <cstddef>
#include <string>
#include <string_view>

#include "OrvikKit/Layout.h"
#include "OrvikKit/ViewColor.h"
#include "OrvikKit/ViewTree.h"

namespace orvik {

// A shape placed in a frame.
struct PlacedShape {
    Shape shape{};
    Rect frame{};

    friend constexpr bool operator==(const PlacedShape&, const PlacedShape&) = default;
};

// A resolved fill: one colour, or a linear gradient of up to four colours
// spread evenly from `start` to `end` (in root coordinates).
struct Paint {
    static constexpr std::size_t maxStops = 4;

    bool isGradient = false;
    std::array<Rgba, maxStops> colors{};
    std::size_t colorCount = 1;
    Point start{};
    Point end{};

    static Paint solid(Rgba color) {
        Paint paint;
        paint.colors[0] = color;
        return paint;
    }
    Rgba color() const noexcept { return colors[0]; }

    friend constexpr bool operator==(const Paint&, const Paint&) = default;
};

struct ResolvedShadow {
    Rgba color{};
    double radius = 0;
    double x = 0;
    double y = 0;

    friend constexpr bool operator==(const ResolvedShadow&, const ResolvedShadow&) = default;
};

// A text to draw in a frame: one line cut with an ellipsis at the end when
// `lineLimit` is 1, otherwise wrapped at the frame's width. `direction` is
// the paragraph's base direction, given to the text engine (which reorders
// mixed runs by the bidirectional algorithm): its lines align to that
// direction's leading edge of the frame and its ellipsis ends the text in
// reading order (on the left when it runs from right to left).
struct TextRun {
    std::string_view text{};
    Font font{};
    std::optional<int> lineLimit{};
    LayoutDirection direction = LayoutDirection::leftToRight;
};

class Canvas {
public:
    virtual ~Canvas() = default;

    virtual void fill(const PlacedShape& shape, const Paint& paint) = 0;
    // A border of `width` drawn inside the shape's outline.
    virtual void strokeInside(const PlacedShape& shape, double width, Rgba color) = 0;
    virtual void drawText(const TextRun& run, Rect frame, Rgba color) = 0;
    // The symbol centred in `frame` (its measured box), filled with `paint`;
    // flipped horizontally about the frame's centre when `mirrored`.
    virtual void drawSymbol(std::string_view name, const Font& font, Rect frame, const Paint& paint,
                            bool mirrored) = 0;
    // The image scaled into `frame` (which may overflow the view; clipping
    // comes from an enclosing clip group).
    virtual void drawImage(const ViewImage& image, Rect frame) = 0;

    virtual void beginClip(const PlacedShape& shape) = 0;
    virtual void endClip() = 0;
    virtual void beginOpacity(double opacity, Rect bounds) = 0;
    virtual void endOpacity() = 0;
    virtual void beginShadow(const ResolvedShadow& shadow, Rect bounds) = 0;
    virtual void endShadow() = 0;

    // The value of `color` under `appearance`. The platform's published
    // values by default; a platform canvas may ask the system instead.
    virtual Rgba resolve(const Color& color, Appearance appearance) { return standardColor(color, appearance); }
};

// Paints a laid-out tree under `appearance`. The foreground style starts as
// primary. Native controls are not painted: the host places them. A text of
// ours (a localisation key) runs in its node's layout direction, a text
// shown as it stands (a track's name) in the direction of its first strong
// character; symbols that point forward or backward are mirrored in a
// right-to-left layout (LayoutDirection.h); images never are.
//
// The button whose id is `focused` (keyboard focus) is ringed over its
// contents: a band of `focusRingWidth` points outside its own shape (the
// first shape inside it that fills its frame, else a rounded rectangle), in
// the keyboard focus indicator colour.
void paint(const LayoutNode& root, Canvas& canvas, Appearance appearance,
           std::optional<std::string_view> focused = std::nullopt);

inline constexpr double focusRingWidth = 3;

}  // namespace orvik
