// The kit's view tree: plain values that describe what a popover shows, in
// the manner of a declarative UI toolkit. A tree is built from the content
// model each time the content changes, laid out for a proposed size
// (Layout.h) and painted through a canvas (Canvas.h); a platform host puts
// native controls where the tree has live ones and drives buttons and hover.
//
// Nodes: stacks (axis, spacing, cross alignment), spacers, fixed and
// flexible frames, padding, background and overlay layers, texts, system
// symbols, shapes (rounded rectangles with continuous corners, capsules,
// circles, rectangles; fill and inside border), images (aspect fill),
// clipping, shadows, opacity, foreground style, buttons (action, keyboard
// shortcut, tooltip), hover tracking, native switches and pop-up pickers,
// dividers, the environment's brand (set for a subtree, or read by a
// brand reader) and the layout direction (set for a subtree; the root's
// comes from the host, LayoutContext::direction).
//
// Hover and press are view state kept by the host (ViewState) and read when
// the tree is built; the tree itself holds no state.
//
// Build on the main thread; a built tree is an immutable value.
#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <utility>
#include <variant>
#include <vector>

#include "OrvikKit/AppBrand.h"
#include "OrvikKit/LayoutDirection.h"
#include "OrvikKit/LocalizedText.h"
#include "OrvikKit/ViewColor.h"
#include "OrvikKit/ViewImage.h"

namespace orvik {

struct View;

enum class Axis : std::uint8_t { horizontal, vertical };
enum class HorizontalAlignment : std::uint8_t { leading, center, trailing };
enum class VerticalAlignment : std::uint8_t { top, center, bottom };

struct Alignment {
    HorizontalAlignment horizontal = HorizontalAlignment::center;
    VerticalAlignment vertical = VerticalAlignment::center;

    static constexpr Alignment center() { return {}; }
    static constexpr Alignment leading() { return {HorizontalAlignment::leading, VerticalAlignment::center}; }
    static constexpr Alignment trailing() { return {HorizontalAlignment::trailing, VerticalAlignment::center}; }
    static constexpr Alignment topLeading() { return {HorizontalAlignment::leading, VerticalAlignment::top}; }

    friend constexpr bool operator==(const Alignment&, const Alignment&) = default;
};

enum class FontWeight : std::uint8_t { regular, medium, semibold, bold };

// The system font (default design) at a point size and weight.
struct Font {
    double size = 13;
    FontWeight weight = FontWeight::regular;

    friend constexpr bool operator==(const Font&, const Font&) = default;
};

// Shapes are drawn in their frame; rounded rectangles and capsules with the
// continuous corner style.
struct Shape {
    enum class Kind : std::uint8_t { rectangle, roundedRectangle, capsule, circle };

    Kind kind = Kind::rectangle;
    double cornerRadius = 0;

    static constexpr Shape rectangle() { return {}; }
    static constexpr Shape roundedRectangle(double radius) { return {Kind::roundedRectangle, radius}; }
    static constexpr Shape capsule() { return {Kind::capsule, 0}; }
    static constexpr Shape circle() { return {Kind::circle, 0}; }

    friend constexpr bool operator==(const Shape&, const Shape&) = default;
};

struct EdgeInsets {
    double top = 0;
    double leading = 0;
    double bottom = 0;
    double trailing = 0;

    static constexpr EdgeInsets all(double length) { return {length, length, length, length}; }
    static constexpr EdgeInsets horizontal(double length) { return {0, length, 0, length}; }
    static constexpr EdgeInsets vertical(double length) { return {length, 0, length, 0}; }

    friend constexpr bool operator==(const EdgeInsets&, const EdgeInsets&) = default;
};

struct ShadowStyle {
    Color color{};
    double radius = 0;  // blur radius
    double x = 0;       // offset
    double y = 0;

    friend constexpr bool operator==(const ShadowStyle&, const ShadowStyle&) = default;
};

// The platform's control sizes; the drawn switch tells only mini apart.
enum class ControlSize : std::uint8_t { mini, small, regular, large };

// A value the view shows and a way to change it (the owner's setter).
template <class Value>
struct Binding {
    Value value{};
    std::function<void(Value)> set;
};

// The host's per-view transient state: which hover-tracked views the pointer
// is over and which button is held down, by the identifiers the tree gives
// them. Initially nothing is hovered or pressed.
struct ViewState {
    std::set<std::string, std::less<>> hovered{};
    std::optional<std::string> pressed{};
    // The button with keyboard focus (Full Keyboard Access), by id; the
    // paint pass rings it (Canvas.h).
    std::optional<std::string> focused{};

    bool isHovered(std::string_view id) const { return hovered.find(id) != hovered.end(); }
    bool isPressed(std::string_view id) const { return pressed && *pressed == id; }
    bool isFocused(std::string_view id) const { return focused && *focused == id; }
};

// --- Node payloads ------------------------------------------------------------------

struct StackNode {
    Axis axis = Axis::vertical;
    double spacing = 0;
    // Cross-axis alignment: horizontal for a vertical stack, vertical for a
    // horizontal one.
    Alignment alignment{};
    std::vector<View> children;
};

// Takes the space left over along its stack's axis, at least `minLength`.
struct SpacerNode {
    double minLength = 0;
};

// A fixed frame sets the given sides; a flexible frame clamps the proposal
// between its bounds (an unbounded maximum fills what is proposed). The
// child is placed in the frame by `alignment`.
struct FrameNode {
    bool flexible = false;
    std::optional<double> width{};  // fixed frames
    std::optional<double> height{};
    std::optional<double> minWidth;  // flexible frames (infinity allowed as maximum)
    std::optional<double> maxWidth{};
    std::optional<double> minHeight{};
    std::optional<double> maxHeight{};
    Alignment alignment{};
    std::vector<View> child;  // exactly one
};

struct PaddingNode {
    EdgeInsets insets{};
    std::vector<View> child;  // exactly one
};

// `content` decides the size; `layer` is laid out in that size and drawn
// behind it (background) or over it (overlay).
struct LayerNode {
    bool behind = true;
    Alignment alignment{};
    std::vector<View> content;  // {content, layer}
};

struct TextNode {
    std::variant<LocalizedText, std::string> content{};  // a localisation key, or text shown as it stands
    Font font{};
    std::optional<Color> color{};     // none: the environment's foreground style
    std::optional<int> lineLimit{};   // 1: one line, cut with an ellipsis; none: wraps as needed
};

struct SymbolNode {
    std::string name{};  // an SF Symbols name
    Font font{};
    std::optional<Fill> fill{};  // none: the environment's foreground style
};

struct ShapeNode {
    Shape shape{};
    std::optional<Fill> fill{};
    std::optional<Color> borderColor{};  // a border drawn inside the shape
    double borderWidth = 0;
};

// A resizable image that keeps its aspect ratio and fills its frame; what
// overflows is drawn outside it unless clipped.
struct ImageNode {
    std::shared_ptr<const ViewImage> image{};
};

struct ClipNode {
    Shape shape{};
    std::vector<View> child;
};

struct ShadowNode {
    ShadowStyle shadow{};
    std::vector<View> child;
};

struct OpacityNode {
    double opacity = 1;
    std::vector<View> child;
};

struct ForegroundNode {
    Color color{};
    std::vector<View> child;
};

// A button: its label is the child, its whole frame the click target.
struct ButtonNode {
    std::string id;  // names the button in the view state (press)
    std::function<void()> action;
    std::optional<char> shortcut{};  // pressed with the command key
    std::vector<View> child;
};

struct TooltipNode {
    LocalizedText text{};
    std::vector<View> child;
};

// Tells the host to report the pointer entering and leaving the child as
// the hover flag `id` of its view state.
struct HoverNode {
    std::string id{};
    std::vector<View> child;
};

// A native switch the host places (the canvas draws nothing for it).
struct SwitchNode {
    Binding<bool> isOn;
    ControlSize size = ControlSize::regular;
    Color tint{};  // the brand accent; hosts that cannot tint follow the system accent
};

// A native pop-up menu the host places, at its ideal size.
struct PickerNode {
    std::vector<LocalizedText> titles{};  // one entry per option, in order
    std::size_t selectedIndex = 0;
    std::function<void(std::size_t)> select;
};

// A thin line across the stack's cross axis in the separator colour.
struct DividerNode {};

// Sets the brand for the subtree.
struct BrandNode {
    AppBrand brand{};
    std::vector<View> child;
};

// Sets the layout direction for the subtree: a group whose order means a
// direction of its own (playback controls) keeps left to right in every
// language.
struct LayoutDirectionNode {
    LayoutDirection direction = LayoutDirection::leftToRight;
    std::vector<View> child;
};

// The first of several arrangements of the same content whose ideal width
// fits what is proposed (the last when none does), as an alert stacks its
// buttons when they do not fit in a row. Only the chosen one is laid out
// and drawn.
struct FirstThatFitsNode {
    std::vector<View> choices;
};

// A part of the tree that depends on the environment's brand.
struct BrandReaderNode {
    std::function<View(const AppBrand&)> body;
};

// --- The view value -------------------------------------------------------------------

struct View {
    using Node = std::variant<StackNode, SpacerNode, FrameNode, PaddingNode, LayerNode, TextNode, SymbolNode,
                              ShapeNode, ImageNode, ClipNode, ShadowNode, OpacityNode, ForegroundNode, ButtonNode,
                              TooltipNode, HoverNode, SwitchNode, PickerNode, DividerNode, BrandNode,
                              BrandReaderNode, LayoutDirectionNode, FirstThatFitsNode>;
    Node node{};

    // Modifiers, in the manner of the declarative toolkit: each wraps the
    // view in a new node.
    View padding(EdgeInsets insets) &&;
    View padding(double length) && { return std::move(*this).padding(EdgeInsets::all(length)); }
    View frame(std::optional<double> width, std::optional<double> height, Alignment alignment = {}) &&;
    struct FlexibleFrame {
        std::optional<double> minWidth{};
        std::optional<double> maxWidth{};
        std::optional<double> minHeight{};
        std::optional<double> maxHeight{};
        Alignment alignment{};
    };
    View frame(const FlexibleFrame& bounds) &&;
    View background(View layer, Alignment alignment = {}) &&;
    View overlay(View layer, Alignment alignment = {}) &&;
    View clipShape(Shape shape) &&;
    View shadow(ShadowStyle shadow) &&;
    View opacity(double opacity) &&;
    View foregroundStyle(Color color) &&;
    View help(LocalizedText text) &&;
    View appBrand(AppBrand brand) &&;
    View layoutDirection(LayoutDirection direction) &&;
};

// --- Builders ------------------------------------------------------------------------

View vStack(HorizontalAlignment alignment, double spacing, std::vector<View> children);
View hStack(VerticalAlignment alignment, double spacing, std::vector<View> children);
View spacer(double minLength = 0);
View text(LocalizedText key, Font font, std::optional<Color> color = std::nullopt,
          std::optional<int> lineLimit = std::nullopt);
View verbatim(std::string text, Font font, std::optional<Color> color = std::nullopt,
              std::optional<int> lineLimit = std::nullopt);
View symbol(std::string name, Font font, std::optional<Fill> fill = std::nullopt);
View shape(Shape shape, std::optional<Fill> fill);
View strokeBorder(Shape shape, Color color, double width);
View linearGradient(std::vector<Color> stops, UnitPoint start = UnitPoint::top(), UnitPoint end = UnitPoint::bottom());
View image(std::shared_ptr<const ViewImage> image);
View button(std::string id, std::function<void()> action, View label, std::optional<char> shortcut = std::nullopt);
View divider();
View nativeSwitch(Binding<bool> isOn, ControlSize size, Color tint);
View nativePicker(std::vector<LocalizedText> titles, std::size_t selectedIndex, std::function<void(std::size_t)> select);
View brandReader(std::function<View(const AppBrand&)> body);
// The first of `choices` whose ideal width fits the proposed width; the
// last when none does (FirstThatFitsNode).
View firstThatFits(std::vector<View> choices);
// Reports hover on `id` to the host; returns `view` unchanged while a
// snapshot renders (a snapshot never shows hover states).
View trackingHover(View view, std::string id);

}  // namespace orvik
