#include "OrvikKit/Layout.h"

#include <algorithm>
#include <cmath>
#include <concepts>
#include <cstddef>
#include <type_traits>

namespace orvik {

namespace {

// Lengths that differ from a pixel boundary by less than this are on it:
// sums of measured lengths carry rounding noise.
constexpr double pixelTolerance = 1e-6;

// `length` rounded up to whole pixels of `scale` pixels per point.
double pixelCeiling(double length, double scale) {
    return std::ceil(length * scale - pixelTolerance) / scale;
}

// `position` moved to the nearest pixel boundary of `scale`.
double pixelRounded(double position, double scale) { return std::round(position * scale) / scale; }

// A choice whose ideal width exceeds the proposal by less than this fits:
// sums of measured lengths carry rounding noise.
constexpr double fitTolerance = 0.01;

// How a child takes what its stack proposes along the stack's axis, in the
// order the stack serves them.
enum class Flexibility : std::uint8_t { rigid, shrinks, fills };

double along(Axis axis, Size size) { return axis == Axis::horizontal ? size.width : size.height; }
double across(Axis axis, Size size) { return axis == Axis::horizontal ? size.height : size.width; }

ProposedSize proposal(Axis axis, std::optional<double> alongLength, std::optional<double> acrossLength) {
    return axis == Axis::horizontal ? ProposedSize{alongLength, acrossLength}
                                    : ProposedSize{acrossLength, alongLength};
}

Size size(const LayoutNode& node) { return Size{node.frame.width, node.frame.height}; }

void offset(LayoutNode& node, double dx, double dy) {
    node.frame.x += dx;
    node.frame.y += dy;
    for (LayoutNode& child : node.children) offset(child, dx, dy);
}

double alignedOffset(HorizontalAlignment alignment, double space, double length) {
    switch (alignment) {
    case HorizontalAlignment::leading: return 0;
    case HorizontalAlignment::center: return (space - length) / 2;
    case HorizontalAlignment::trailing: return space - length;
    }
    return 0;
}

double alignedOffset(VerticalAlignment alignment, double space, double length) {
    switch (alignment) {
    case VerticalAlignment::top: return 0;
    case VerticalAlignment::center: return (space - length) / 2;
    case VerticalAlignment::bottom: return space - length;
    }
    return 0;
}

// Places `child` (laid out at the origin) inside `frame` by `alignment`.
void align(LayoutNode& child, Size frame, Alignment alignment) {
    offset(child, alignedOffset(alignment.horizontal, frame.width, child.frame.width),
           alignedOffset(alignment.vertical, frame.height, child.frame.height));
}

std::optional<double> shrunk(std::optional<double> length, double by) {
    if (!length) return std::nullopt;
    return std::max(0.0, *length - by);
}

std::optional<double> clamped(std::optional<double> length, std::optional<double> minimum,
                              std::optional<double> maximum) {
    if (!length) return std::nullopt;
    double value = *length;
    if (maximum) value = std::min(value, *maximum);
    if (minimum) value = std::max(value, *minimum);
    return value;
}

// A flexible frame's length on one side: up to the maximum of what is
// proposed when a maximum is given, otherwise the child's; never below the
// minimum.
double flexibleLength(std::optional<double> proposed, std::optional<double> minimum, std::optional<double> maximum,
                      double child) {
    double length = child;
    if (maximum) length = proposed ? std::min(*maximum, *proposed) : std::min(*maximum, child);
    if (minimum) length = std::max(length, *minimum);
    return length;
}

// What a node inherits from its ancestors.
struct Environment {
    const AppBrand* brand;
    LayoutDirection direction;
};

// Mirrors the children of `node` (laid out at the origin) within its width.
void mirrorChildren(LayoutNode& node) {
    for (LayoutNode& child : node.children) {
        const double mirroredX = node.frame.width - child.frame.x - child.frame.width;
        offset(child, mirroredX - child.frame.x, 0);
    }
}

class Layouter {
public:
    explicit Layouter(const LayoutContext& context) : context_(context) {}

    // Lays `view` out at the origin. `stackAxis` is the axis of the stack the
    // view is a direct child of (dividers run across it).
    // Children are laid out leading to trailing and mirrored here, in one
    // place, when the environment runs from right to left.
    LayoutNode place(const View& view, ProposedSize proposed, Environment environment, Axis stackAxis) {
        LayoutNode node;
        node.view = &view;
        node.direction = environment.direction;
        std::visit([&](const auto& payload) { placeNode(payload, node, proposed, environment, stackAxis); }, view.node);
        if (environment.direction == LayoutDirection::rightToLeft) mirrorChildren(node);
        return node;
    }

private:
    std::string localized(const LocalizedText& text) const {
        return context_.localize ? context_.localize(text) : text.untranslated();
    }

    void setSize(LayoutNode& node, Size size) {
        node.frame.width = size.width;
        node.frame.height = size.height;
    }

    // A measured size rounded up to whole device pixels, when the layout is
    // for a pixel grid: a text's lines keep all of their height and width.
    Size onPixels(Size measured) const {
        if (!context_.pixelScale) return measured;
        return Size{pixelCeiling(measured.width, *context_.pixelScale),
                    pixelCeiling(measured.height, *context_.pixelScale)};
    }

    // A node with one child that takes the child's size.
    void passThrough(const std::vector<View>& child, LayoutNode& node, ProposedSize proposed, Environment environment,
                     Axis stackAxis) {
        node.children.push_back(place(child.front(), proposed, environment, stackAxis));
        setSize(node, size(node.children.front()));
    }

    void placeNode(const StackNode& stack, LayoutNode& node, ProposedSize proposed, Environment environment, Axis) {
        const Axis axis = stack.axis;
        const std::size_t count = stack.children.size();
        const std::optional<double> available = axis == Axis::horizontal ? proposed.width : proposed.height;
        const std::optional<double> acrossProposal = axis == Axis::horizontal ? proposed.height : proposed.width;
        const double spacingTotal = count > 1 ? stack.spacing * static_cast<double>(count - 1) : 0.0;

        node.children.resize(count);
        std::vector<std::size_t> spacers;
        std::vector<std::size_t> others;
        for (std::size_t index = 0; index < count; ++index) {
            (std::holds_alternative<SpacerNode>(stack.children[index].node) ? spacers : others).push_back(index);
        }

        const auto placeSpacer = [&](std::size_t index, double length) {
            LayoutNode& spacerNode = node.children[index];
            spacerNode.view = &stack.children[index];
            const Size spacerSize = axis == Axis::horizontal ? Size{length, 0} : Size{0, length};
            setSize(spacerNode, spacerSize);
        };

        if (!available) {
            for (std::size_t index : others) {
                node.children[index] = place(stack.children[index], proposal(axis, std::nullopt, acrossProposal),
                                             environment, axis);
            }
            for (std::size_t index : spacers) {
                placeSpacer(index, std::get<SpacerNode>(stack.children[index].node).minLength);
            }
        } else {
            double remaining = *available - spacingTotal;
            for (std::size_t index : spacers) remaining -= std::get<SpacerNode>(stack.children[index].node).minLength;

            // Serve rigid children first, then those that shrink (the smaller
            // ideal first, so that a short text keeps its length and a long
            // one gets the rest), then those that fill.
            struct Order {
                std::size_t index;
                Flexibility flexibility;
                double ideal;
            };
            std::vector<Order> order;
            order.reserve(others.size());
            for (std::size_t index : others) {
                const Flexibility flexibility = flexibilityOf(stack.children[index], axis, environment);
                double ideal = 0;
                if (flexibility == Flexibility::shrinks) {
                    ideal = along(axis, size(place(stack.children[index], proposal(axis, std::nullopt, acrossProposal),
                                                   environment, axis)));
                }
                order.push_back({index, flexibility, ideal});
            }
            std::stable_sort(order.begin(), order.end(), [](const Order& lhs, const Order& rhs) {
                if (lhs.flexibility != rhs.flexibility) return lhs.flexibility < rhs.flexibility;
                return lhs.flexibility == Flexibility::shrinks && lhs.ideal < rhs.ideal;
            });
            std::size_t left = order.size();
            for (const Order& entry : order) {
                const double share = std::max(0.0, remaining) / static_cast<double>(left);
                node.children[entry.index] =
                    place(stack.children[entry.index], proposal(axis, share, acrossProposal), environment, axis);
                remaining -= along(axis, size(node.children[entry.index]));
                --left;
            }
            const double extra =
                spacers.empty() ? 0.0 : std::max(0.0, remaining) / static_cast<double>(spacers.size());
            for (std::size_t index : spacers) {
                placeSpacer(index, std::get<SpacerNode>(stack.children[index].node).minLength + extra);
            }
        }

        double length = spacingTotal;
        double thickness = 0;
        for (const LayoutNode& child : node.children) {
            length += along(axis, size(child));
            thickness = std::max(thickness, across(axis, size(child)));
        }
        // Spacers span the stack across its axis.
        for (std::size_t index : spacers) {
            LayoutNode& spacerNode = node.children[index];
            if (axis == Axis::horizontal) {
                spacerNode.frame.height = thickness;
            } else {
                spacerNode.frame.width = thickness;
            }
        }

        double cursor = 0;
        for (LayoutNode& child : node.children) {
            if (axis == Axis::horizontal) {
                offset(child, cursor, alignedOffset(stack.alignment.vertical, thickness, child.frame.height));
                cursor += child.frame.width + stack.spacing;
            } else {
                offset(child, alignedOffset(stack.alignment.horizontal, thickness, child.frame.width), cursor);
                cursor += child.frame.height + stack.spacing;
            }
        }
        setSize(node, axis == Axis::horizontal ? Size{length, thickness} : Size{thickness, length});
    }

    void placeNode(const SpacerNode& spacer, LayoutNode& node, ProposedSize, Environment, Axis) {
        setSize(node, Size{spacer.minLength, spacer.minLength});
    }

    void placeNode(const FrameNode& frame, LayoutNode& node, ProposedSize proposed, Environment environment,
                   Axis stackAxis) {
        Size frameSize;
        if (!frame.flexible) {
            const ProposedSize childProposal{frame.width ? frame.width : proposed.width,
                                             frame.height ? frame.height : proposed.height};
            node.children.push_back(place(frame.child.front(), childProposal, environment, stackAxis));
            const Size child = size(node.children.front());
            frameSize = Size{frame.width.value_or(child.width), frame.height.value_or(child.height)};
        } else {
            const ProposedSize childProposal{clamped(proposed.width, frame.minWidth, frame.maxWidth),
                                             clamped(proposed.height, frame.minHeight, frame.maxHeight)};
            node.children.push_back(place(frame.child.front(), childProposal, environment, stackAxis));
            const Size child = size(node.children.front());
            frameSize = Size{flexibleLength(proposed.width, frame.minWidth, frame.maxWidth, child.width),
                             flexibleLength(proposed.height, frame.minHeight, frame.maxHeight, child.height)};
        }
        align(node.children.front(), frameSize, frame.alignment);
        setSize(node, frameSize);
    }

    void placeNode(const PaddingNode& padding, LayoutNode& node, ProposedSize proposed, Environment environment,
                   Axis stackAxis) {
        const EdgeInsets& insets = padding.insets;
        const ProposedSize childProposal{shrunk(proposed.width, insets.leading + insets.trailing),
                                         shrunk(proposed.height, insets.top + insets.bottom)};
        node.children.push_back(place(padding.child.front(), childProposal, environment, stackAxis));
        LayoutNode& child = node.children.front();
        offset(child, insets.leading, insets.top);
        setSize(node, Size{child.frame.width + insets.leading + insets.trailing,
                           child.frame.height + insets.top + insets.bottom});
    }

    void placeNode(const LayerNode& layer, LayoutNode& node, ProposedSize proposed, Environment environment,
                   Axis stackAxis) {
        node.children.push_back(place(layer.content[0], proposed, environment, stackAxis));
        const Size contentSize = size(node.children.front());
        node.children.push_back(
            place(layer.content[1], ProposedSize{contentSize.width, contentSize.height}, environment, stackAxis));
        align(node.children.back(), contentSize, layer.alignment);
        setSize(node, contentSize);
    }

    void placeNode(const TextNode& text, LayoutNode& node, ProposedSize proposed, Environment, Axis) {
        if (const auto* key = std::get_if<LocalizedText>(&text.content)) {
            node.text = localized(*key);
        } else {
            node.text = std::get<std::string>(text.content);
        }
        const Size natural = context_.measurer.textSize(node.text, text.font, std::nullopt, text.lineLimit);
        if (proposed.width && natural.width > *proposed.width) {
            Size cut = onPixels(context_.measurer.textSize(node.text, text.font, *proposed.width, text.lineLimit));
            // Cut or wrapped at the proposal: rounding up must not widen it.
            cut.width = std::min(cut.width, *proposed.width);
            setSize(node, cut);
            node.truncated = text.lineLimit == 1;
            node.wrapped = text.lineLimit != 1;
        } else {
            setSize(node, onPixels(natural));
        }
    }

    void placeNode(const SymbolNode& symbol, LayoutNode& node, ProposedSize, Environment, Axis) {
        setSize(node, onPixels(context_.measurer.symbolSize(symbol.name, symbol.font)));
    }

    void placeNode(const ShapeNode&, LayoutNode& node, ProposedSize proposed, Environment, Axis) {
        setSize(node, Size{proposed.width.value_or(10), proposed.height.value_or(10)});
    }

    // Resizable, keeping its aspect ratio and filling what is proposed.
    void placeNode(const ImageNode& image, LayoutNode& node, ProposedSize proposed, Environment, Axis) {
        const double width = image.image ? image.image->width() : 0;
        const double height = image.image ? image.image->height() : 0;
        if (width <= 0 || height <= 0) {
            setSize(node, Size{proposed.width.value_or(0), proposed.height.value_or(0)});
            return;
        }
        double scale = 1;
        if (proposed.width && proposed.height) {
            scale = std::max(*proposed.width / width, *proposed.height / height);
        } else if (proposed.width) {
            scale = *proposed.width / width;
        } else if (proposed.height) {
            scale = *proposed.height / height;
        }
        setSize(node, Size{width * scale, height * scale});
    }

    // Clips, shadows, opacity, foreground styles, buttons, tooltips and
    // hover areas take their child's place and size unchanged.
    template <class Wrapper>
        requires std::same_as<Wrapper, ClipNode> || std::same_as<Wrapper, ShadowNode> ||
                 std::same_as<Wrapper, OpacityNode> || std::same_as<Wrapper, ForegroundNode> ||
                 std::same_as<Wrapper, ButtonNode> || std::same_as<Wrapper, TooltipNode> ||
                 std::same_as<Wrapper, HoverNode>
    void placeNode(const Wrapper& wrapper, LayoutNode& node, ProposedSize proposed, Environment environment,
                   Axis stackAxis) {
        passThrough(wrapper.child, node, proposed, environment, stackAxis);
    }
    void placeNode(const BrandNode& brandNode, LayoutNode& node, ProposedSize proposed, Environment environment,
                   Axis stackAxis) {
        passThrough(brandNode.child, node, proposed, Environment{&brandNode.brand, environment.direction}, stackAxis);
    }

    void placeNode(const LayoutDirectionNode& directionNode, LayoutNode& node, ProposedSize proposed,
                   Environment environment, Axis stackAxis) {
        passThrough(directionNode.child, node, proposed, Environment{environment.brand, directionNode.direction},
                    stackAxis);
    }

    void placeNode(const SwitchNode& control, LayoutNode& node, ProposedSize, Environment, Axis) {
        setSize(node, onPixels(context_.measurer.switchSize(control.size)));
    }

    void placeNode(const PickerNode& picker, LayoutNode& node, ProposedSize, Environment, Axis) {
        node.options.reserve(picker.titles.size());
        for (const LocalizedText& title : picker.titles) node.options.push_back(localized(title));
        setSize(node, onPixels(context_.measurer.popUpSize(node.options, picker.selectedIndex)));
    }

    void placeNode(const DividerNode&, LayoutNode& node, ProposedSize proposed, Environment, Axis stackAxis) {
        constexpr double thickness = 1;
        setSize(node, stackAxis == Axis::vertical ? Size{proposed.width.value_or(0), thickness}
                                                  : Size{thickness, proposed.height.value_or(0)});
    }

    // The first choice whose ideal width (laid out with the width left
    // open) fits the proposed width; the last otherwise. Without a proposed
    // width every choice fits, so the first is taken.
    void placeNode(const FirstThatFitsNode& fits, LayoutNode& node, ProposedSize proposed, Environment environment,
                   Axis stackAxis) {
        if (fits.choices.empty()) return;
        std::size_t chosen = fits.choices.size() - 1;
        for (std::size_t index = 0; index + 1 < fits.choices.size(); ++index) {
            if (!proposed.width) {
                chosen = index;
                break;
            }
            const LayoutNode ideal = place(fits.choices[index], ProposedSize{std::nullopt, proposed.height}, environment,
                                           stackAxis);
            if (ideal.frame.width <= *proposed.width + fitTolerance) {
                chosen = index;
                break;
            }
        }
        node.children.push_back(place(fits.choices[chosen], proposed, environment, stackAxis));
        setSize(node, size(node.children.front()));
    }

    void placeNode(const BrandReaderNode& reader, LayoutNode& node, ProposedSize proposed, Environment environment,
                   Axis stackAxis) {
        node.expanded = std::make_shared<const View>(reader.body(*environment.brand));
        node.children.push_back(place(*node.expanded, proposed, environment, stackAxis));
        setSize(node, size(node.children.front()));
    }

    Flexibility flexibilityOf(const View& view, Axis axis, Environment environment) {
        return std::visit(
            [&](const auto& payload) -> Flexibility {
                using Payload = std::decay_t<decltype(payload)>;
                if constexpr (std::is_same_v<Payload, StackNode>) {
                    Flexibility most = Flexibility::rigid;
                    for (const View& child : payload.children) {
                        const Flexibility flexibility =
                            std::holds_alternative<SpacerNode>(child.node)
                                ? (payload.axis == axis ? Flexibility::fills : Flexibility::rigid)
                                : flexibilityOf(child, axis, environment);
                        most = std::max(most, flexibility);
                    }
                    return most;
                } else if constexpr (std::is_same_v<Payload, FrameNode>) {
                    const bool horizontal = axis == Axis::horizontal;
                    if (!payload.flexible) {
                        if (horizontal ? payload.width.has_value() : payload.height.has_value()) {
                            return Flexibility::rigid;
                        }
                    } else if (horizontal ? payload.maxWidth.has_value() : payload.maxHeight.has_value()) {
                        return Flexibility::fills;
                    }
                    return flexibilityOf(payload.child.front(), axis, environment);
                } else if constexpr (std::is_same_v<Payload, LayerNode>) {
                    return flexibilityOf(payload.content.front(), axis, environment);
                } else if constexpr (std::is_same_v<Payload, TextNode>) {
                    return Flexibility::shrinks;
                } else if constexpr (std::is_same_v<Payload, ShapeNode> || std::is_same_v<Payload, ImageNode> ||
                                     std::is_same_v<Payload, SpacerNode>) {
                    return Flexibility::fills;
                } else if constexpr (std::is_same_v<Payload, BrandNode>) {
                    return flexibilityOf(payload.child.front(), axis, Environment{&payload.brand, environment.direction});
                } else if constexpr (std::is_same_v<Payload, BrandReaderNode>) {
                    return flexibilityOf(payload.body(*environment.brand), axis, environment);
                } else if constexpr (std::is_same_v<Payload, FirstThatFitsNode>) {
                    return payload.choices.empty() ? Flexibility::rigid
                                                   : flexibilityOf(payload.choices.front(), axis, environment);
                } else if constexpr (std::is_same_v<Payload, LayoutDirectionNode>) {
                    return flexibilityOf(payload.child.front(), axis, Environment{environment.brand, payload.direction});
                } else if constexpr (std::is_same_v<Payload, PaddingNode> || std::is_same_v<Payload, ClipNode> ||
                                     std::is_same_v<Payload, ShadowNode> || std::is_same_v<Payload, OpacityNode> ||
                                     std::is_same_v<Payload, ForegroundNode> || std::is_same_v<Payload, ButtonNode> ||
                                     std::is_same_v<Payload, TooltipNode> || std::is_same_v<Payload, HoverNode>) {
                    return flexibilityOf(payload.child.front(), axis, environment);
                } else {
                    // Symbols, native controls, dividers.
                    return Flexibility::rigid;
                }
            },
            view.node);
    }

    const LayoutContext& context_;
};

}  // namespace

namespace {

// Frames are sums of measured lengths; a hair's difference is rounding.
constexpr double frameTolerance = 0.01;

bool insideHorizontally(const Rect& inner, const Rect& outer) {
    return inner.x >= outer.x - frameTolerance && inner.maxX() <= outer.maxX() + frameTolerance;
}

bool insideVertically(const Rect& inner, const Rect& outer) {
    return inner.y >= outer.y - frameTolerance && inner.maxY() <= outer.maxY() + frameTolerance;
}

void collectCutTexts(const LayoutNode& node, std::vector<const Rect*>& ancestors,
                     std::vector<const LayoutNode*>& into) {
    if (std::holds_alternative<TextNode>(node.view->node)) {
        const bool overflows = std::any_of(ancestors.begin(), ancestors.end(), [&node](const Rect* frame) {
            return !insideHorizontally(node.frame, *frame) || (node.wrapped && !insideVertically(node.frame, *frame));
        });
        if (node.truncated || overflows) into.push_back(&node);
    }
    ancestors.push_back(&node.frame);
    for (const LayoutNode& child : node.children) collectCutTexts(child, ancestors, into);
    ancestors.pop_back();
}

}  // namespace

std::vector<const LayoutNode*> cutTexts(const LayoutNode& root) {
    std::vector<const LayoutNode*> cut;
    std::vector<const Rect*> ancestors;
    collectCutTexts(root, ancestors, cut);
    return cut;
}

namespace {

// Where an edge of the old root size goes: flush with the new root edge when
// it was flush with the old one, otherwise to the nearest pixel boundary.
struct EdgeSnap {
    double scale;
    double oldEnd;
    double newEnd;

    double operator()(double edge) const {
        if (std::abs(edge - oldEnd) <= pixelTolerance) return newEnd;
        return pixelRounded(edge, scale);
    }
};

void snapFrames(LayoutNode& node, const EdgeSnap& horizontal, const EdgeSnap& vertical) {
    const double left = horizontal(node.frame.x);
    const double right = horizontal(node.frame.maxX());
    const double top = vertical(node.frame.y);
    const double bottom = vertical(node.frame.maxY());
    node.frame = Rect{left, top, std::max(0.0, right - left), std::max(0.0, bottom - top)};
    for (LayoutNode& child : node.children) snapFrames(child, horizontal, vertical);
}

// Puts every frame edge of a laid-out tree (at the origin) on the pixel grid
// of `scale`, and makes the root a whole number of points: each edge is
// snapped on its own, in root coordinates, so rounding is the same for
// every node that shares an edge and never moves a child outside its parent
// (rounding keeps the order of edges).
void alignToPixelGrid(LayoutNode& root, double scale) {
    const auto wholePoints = [](double length) { return std::ceil(length - pixelTolerance); };
    const EdgeSnap horizontal{scale, root.frame.maxX(), wholePoints(root.frame.maxX())};
    const EdgeSnap vertical{scale, root.frame.maxY(), wholePoints(root.frame.maxY())};
    snapFrames(root, horizontal, vertical);
}

}  // namespace

LayoutNode layout(const View& view, ProposedSize proposal, const LayoutContext& context) {
    Layouter layouter(context);
    LayoutNode root =
        layouter.place(view, proposal, Environment{&AppBrand::kitDefault(), context.direction}, Axis::vertical);
    if (context.pixelScale && *context.pixelScale > 0) alignToPixelGrid(root, *context.pixelScale);
    return root;
}

}  // namespace orvik
