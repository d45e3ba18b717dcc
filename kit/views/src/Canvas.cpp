#include "OrvikKit/Canvas.h"

#include <type_traits>

namespace orvik {

namespace {

Point unitPointIn(UnitPoint point, Rect frame) {
    return Point{frame.x + point.x * frame.width, frame.y + point.y * frame.height};
}

// The shape a button is drawn as: the first shape inside it that fills its
// frame (its background), else a rounded rectangle of its frame.
PlacedShape buttonShape(const LayoutNode& button) {
    const auto find = [&button](const LayoutNode& node, const auto& self) -> const ShapeNode* {
        if (const auto* shape = std::get_if<ShapeNode>(&node.view->node)) {
            if (node.frame == button.frame) return shape;
        }
        for (const LayoutNode& child : node.children) {
            if (const ShapeNode* found = self(child, self)) return found;
        }
        return nullptr;
    };
    if (const ShapeNode* shape = find(button, find)) return PlacedShape{shape->shape, button.frame};
    return PlacedShape{Shape::roundedRectangle(6), button.frame};
}

// The focus ring's outline: the shape grown by the ring's width on every
// side (corners by as much), so that a border inside it is a band outside
// the shape.
PlacedShape ringOutline(const PlacedShape& shape) {
    const Rect& frame = shape.frame;
    PlacedShape grown{shape.shape, Rect{frame.x - focusRingWidth, frame.y - focusRingWidth,
                                        frame.width + 2 * focusRingWidth, frame.height + 2 * focusRingWidth}};
    if (grown.shape.kind == Shape::Kind::roundedRectangle) grown.shape.cornerRadius += focusRingWidth;
    return grown;
}

class Painter {
public:
    Painter(Canvas& canvas, Appearance appearance, std::optional<std::string_view> focused)
        : canvas_(canvas), appearance_(appearance), focused_(focused) {}

    void paint(const LayoutNode& node, const Color& foreground) {
        std::visit([&](const auto& payload) { paintNode(payload, node, foreground); }, node.view->node);
    }

private:
    Rgba resolve(const Color& color) { return canvas_.resolve(color, appearance_); }

    Paint paintFor(const Fill& fill, Rect frame) {
        Paint paint;
        switch (fill.kind) {
        case Fill::Kind::color: return Paint::solid(resolve(fill.color));
        case Fill::Kind::automaticGradient: {
            const GradientEnds ends = automaticGradientEnds(resolve(fill.color));
            paint.isGradient = true;
            paint.colors[0] = ends.top;
            paint.colors[1] = ends.bottom;
            paint.colorCount = 2;
            paint.start = unitPointIn(UnitPoint::top(), frame);
            paint.end = unitPointIn(UnitPoint::bottom(), frame);
            return paint;
        }
        case Fill::Kind::linearGradient:
            paint.isGradient = true;
            paint.colorCount = 0;
            for (const Color& stop : fill.stops) {
                if (paint.colorCount == Paint::maxStops) break;
                paint.colors[paint.colorCount++] = resolve(stop);
            }
            paint.start = unitPointIn(fill.startPoint, frame);
            paint.end = unitPointIn(fill.endPoint, frame);
            return paint;
        }
        return paint;
    }

    void children(const LayoutNode& node, const Color& foreground) {
        for (const LayoutNode& child : node.children) paint(child, foreground);
    }

    template <class Payload>
    void paintNode(const Payload& payload, const LayoutNode& node, const Color& foreground) {
        if constexpr (std::is_same_v<Payload, LayerNode>) {
            // children: {content, layer}
            if (payload.behind) {
                paint(node.children[1], foreground);
                paint(node.children[0], foreground);
            } else {
                paint(node.children[0], foreground);
                paint(node.children[1], foreground);
            }
        } else if constexpr (std::is_same_v<Payload, TextNode>) {
            const LayoutDirection direction = std::holds_alternative<LocalizedText>(payload.content)
                                                  ? node.direction
                                                  : firstStrongDirection(node.text, node.direction);
            canvas_.drawText(TextRun{node.text, payload.font, payload.lineLimit, direction}, node.frame,
                             resolve(payload.color.value_or(foreground)));
        } else if constexpr (std::is_same_v<Payload, SymbolNode>) {
            const bool mirrored =
                node.direction == LayoutDirection::rightToLeft && mirrorsInRightToLeft(payload.name);
            canvas_.drawSymbol(payload.name, payload.font, node.frame,
                               paintFor(payload.fill.value_or(Fill::solid(foreground)), node.frame), mirrored);
        } else if constexpr (std::is_same_v<Payload, ShapeNode>) {
            const PlacedShape placed{payload.shape, node.frame};
            if (payload.fill) canvas_.fill(placed, paintFor(*payload.fill, node.frame));
            if (payload.borderColor) canvas_.strokeInside(placed, payload.borderWidth, resolve(*payload.borderColor));
        } else if constexpr (std::is_same_v<Payload, ImageNode>) {
            if (payload.image) canvas_.drawImage(*payload.image, node.frame);
        } else if constexpr (std::is_same_v<Payload, ClipNode>) {
            canvas_.beginClip(PlacedShape{payload.shape, node.frame});
            children(node, foreground);
            canvas_.endClip();
        } else if constexpr (std::is_same_v<Payload, ShadowNode>) {
            canvas_.beginShadow(ResolvedShadow{resolve(payload.shadow.color), payload.shadow.radius, payload.shadow.x,
                                               payload.shadow.y},
                                node.frame);
            children(node, foreground);
            canvas_.endShadow();
        } else if constexpr (std::is_same_v<Payload, OpacityNode>) {
            canvas_.beginOpacity(payload.opacity, node.frame);
            children(node, foreground);
            canvas_.endOpacity();
        } else if constexpr (std::is_same_v<Payload, ForegroundNode>) {
            children(node, payload.color);
        } else if constexpr (std::is_same_v<Payload, DividerNode>) {
            canvas_.fill(PlacedShape{Shape::rectangle(), node.frame}, Paint::solid(resolve(Color::separator())));
        } else if constexpr (std::is_same_v<Payload, SwitchNode> || std::is_same_v<Payload, PickerNode> ||
                             std::is_same_v<Payload, SpacerNode>) {
            // Native controls are the host's; spacers draw nothing.
        } else if constexpr (std::is_same_v<Payload, ButtonNode>) {
            children(node, foreground);
            if (focused_ && payload.id == *focused_) {
                canvas_.strokeInside(ringOutline(buttonShape(node)), focusRingWidth,
                                     resolve(Color::keyboardFocusIndicator()));
            }
        } else {
            children(node, foreground);
        }
    }

    Canvas& canvas_;
    Appearance appearance_;
    std::optional<std::string_view> focused_;
};

}  // namespace

void paint(const LayoutNode& root, Canvas& canvas, Appearance appearance, std::optional<std::string_view> focused) {
    Painter painter(canvas, appearance, focused);
    painter.paint(root, Color::primary());
}

}  // namespace orvik
