// Layout of a view tree, with the proposal/response rule of the declarative
// toolkit the menu's measures assume: a parent proposes a size (either side
// may be left open), the child chooses its own size, the parent places it.
//
// - Stacks divide what is proposed along their axis among their children:
//   rigid children first (symbols, fixed frames, native controls), then
//   those that can shrink (texts), then those that fill (shapes, images,
//   unbounded frames), each offered an equal share of what is left; spacers
//   take what remains at the end, at least their minimum length. Across the
//   axis every child is offered the stack's proposal and aligned.
// - Padding shrinks the proposal and grows the answer; fixed frames set
//   sides; flexible frames clamp; background and overlay layers take the
//   size of what they decorate.
// - A one-line text takes its natural width up to the proposal and is cut
//   with an ellipsis beyond it; any other text wraps at the proposed width
//   and grows in height.
// - Texts, symbols and native controls are measured through the
//   TextMeasurer port, which the platform implements with its own text
//   engine and controls.
// - In a right-to-left environment every node's children are mirrored
//   within it once it is laid out (x' = width − x − childWidth), so stacks
//   run from the right and leading insets, alignments and indents land on
//   the right; frames, hit-testing, hover areas and accessibility frames all
//   follow from the mirrored frames (LayoutDirection.h).
// - Given the device pixels per point of the surface it is drawn on, the
//   layout lands on that surface's pixel grid, the way AppKit aligns views
//   to their backing: measured texts, symbols and controls are rounded up to
//   whole pixels (so a line never loses a sliver of itself), then every
//   frame edge is moved to the nearest pixel boundary, in the root's
//   coordinates, so that neighbours that shared an edge still share it and a
//   1-point border or divider covers whole rows of pixels; and the root is
//   made a whole number of points wide and high (what was flush with its
//   right or bottom edge stays flush), so a bitmap of it has no partly
//   covered row or column.
//
// Main thread only (the measurer is the platform's).
#pragma once

#include <functional>
#include <limits>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "OrvikKit/ViewTree.h"

namespace orvik {

struct Size {
    double width = 0;
    double height = 0;

    friend constexpr bool operator==(const Size&, const Size&) = default;
};

struct Point {
    double x = 0;
    double y = 0;

    friend constexpr bool operator==(const Point&, const Point&) = default;
};

// A rectangle in points, origin at the top left, y growing downwards.
struct Rect {
    double x = 0;
    double y = 0;
    double width = 0;
    double height = 0;

    constexpr double maxX() const noexcept { return x + width; }
    constexpr double maxY() const noexcept { return y + height; }
    constexpr bool contains(Point point) const noexcept {
        return point.x >= x && point.x < maxX() && point.y >= y && point.y < maxY();
    }

    friend constexpr bool operator==(const Rect&, const Rect&) = default;
};

// What a parent offers; an open side lets the child take its ideal length.
struct ProposedSize {
    std::optional<double> width{};
    std::optional<double> height{};

    static constexpr ProposedSize unspecified() { return {}; }
};

inline constexpr double infinity = std::numeric_limits<double>::infinity();

// Measures texts, symbols and native controls with the platform's text
// engine and controls.
class TextMeasurer {
public:
    virtual ~TextMeasurer() = default;

    // The size `text` takes in `font`. `width` none: one line at its natural
    // width. Otherwise laid out in at most `width` points: with a line
    // limit of 1 it stays on one line (cut with an ellipsis when wider), and
    // without one it wraps at word boundaries onto as many lines as it needs.
    // The answer is never wider than `width`.
    virtual Size textSize(std::string_view text, const Font& font, std::optional<double> width,
                          std::optional<int> lineLimit) = 0;
    // The bounding box of a system symbol drawn in `font`.
    virtual Size symbolSize(std::string_view name, const Font& font) = 0;
    // The ideal sizes of the native switch and pop-up menu.
    virtual Size switchSize(ControlSize size) = 0;
    virtual Size popUpSize(const std::vector<std::string>& titles, std::size_t selectedIndex) = 0;
};

// What layout and painting need besides the tree.
struct LayoutContext {
    TextMeasurer& measurer;
    // Looks a localised text up; empty: the untranslated text.
    std::function<std::string(const LocalizedText&)> localize;
    // The root's layout direction: the language's in snapshots, the
    // application's on screen.
    LayoutDirection direction = LayoutDirection::leftToRight;
    // Device pixels per point of the surface the layout is drawn on (the
    // window's backing scale, a snapshot's scale). None: frames stay as
    // computed, in fractions of a point (for measuring, not for drawing).
    std::optional<double> pixelScale{};
};

// One laid-out view: its frame in the root's coordinates and its children.
// `view` points into the laid-out tree (or into `expanded`, the output of a
// brand reader), so the tree must outlive its layout.
struct LayoutNode {
    const View* view = nullptr;
    Rect frame{};
    std::vector<LayoutNode> children{};
    std::shared_ptr<const View> expanded{};
    std::string text{};                  // a text's string as shown
    std::vector<std::string> options{};  // a pop-up's entries as shown
    bool truncated = false;  // a one-line text cut with an ellipsis
    bool wrapped = false;    // a text of several lines, wrapped at the proposed width
    LayoutDirection direction = LayoutDirection::leftToRight;  // the environment's at this node
};

// Lays `view` out for `proposal` with its top left corner at the origin.
// The root brand is the kit default; the root direction is the context's;
// with a pixel scale, the frames sit on that scale's pixel grid.
LayoutNode layout(const View& view, ProposedSize proposal, const LayoutContext& context);

// The texts under `root` that do not show whole, in tree order: a one-line
// text cut with an ellipsis; a text that reaches sideways outside the frame
// of one of its ancestors (pushed past the edge of its card or of the
// window); and a wrapped text taller than an ancestor's frame (more lines
// than a fixed height holds). A text on one line is not cut for being
// taller than a fixed frame: its height is the font's line spacing, which
// a fallback font for another script may make taller than the line itself.
std::vector<const LayoutNode*> cutTexts(const LayoutNode& root);

// The innermost node of `kind` (a node payload type) under `point`, if any;
// for the host's hit-testing of buttons and hover areas.
template <class Kind>
const LayoutNode* hitTest(const LayoutNode& root, Point point) {
    if (!root.frame.contains(point)) return nullptr;
    for (auto child = root.children.rbegin(); child != root.children.rend(); ++child) {
        if (const LayoutNode* found = hitTest<Kind>(*child, point)) return found;
    }
    return std::holds_alternative<Kind>(root.view->node) ? &root : nullptr;
}

// Every node of `kind`, in tree order (for hosts: live controls, buttons,
// hover areas, tooltips).
template <class Kind>
void collect(const LayoutNode& root, std::vector<const LayoutNode*>& into) {
    if (std::holds_alternative<Kind>(root.view->node)) into.push_back(&root);
    for (const LayoutNode& child : root.children) collect<Kind>(child, into);
}

}  // namespace orvik
