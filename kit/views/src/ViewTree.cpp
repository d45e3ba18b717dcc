#include "OrvikKit/ViewTree.h"

#include "OrvikKit/Snapshot.h"

namespace orvik {

namespace {

std::vector<View> one(View view) {
    std::vector<View> children;
    children.push_back(std::move(view));
    return children;
}

std::vector<View> two(View first, View second) {
    std::vector<View> children;
    children.reserve(2);
    children.push_back(std::move(first));
    children.push_back(std::move(second));
    return children;
}

}  // namespace

View View::padding(EdgeInsets insets) && { return View{PaddingNode{insets, one(std::move(*this))}}; }

View View::frame(std::optional<double> width, std::optional<double> height, Alignment alignment) && {
    FrameNode frame;
    frame.width = width;
    frame.height = height;
    frame.alignment = alignment;
    frame.child = one(std::move(*this));
    return View{std::move(frame)};
}

View View::frame(const FlexibleFrame& bounds) && {
    FrameNode frame;
    frame.flexible = true;
    frame.minWidth = bounds.minWidth;
    frame.maxWidth = bounds.maxWidth;
    frame.minHeight = bounds.minHeight;
    frame.maxHeight = bounds.maxHeight;
    frame.alignment = bounds.alignment;
    frame.child = one(std::move(*this));
    return View{std::move(frame)};
}

View View::background(View layer, Alignment alignment) && {
    return View{LayerNode{true, alignment, two(std::move(*this), std::move(layer))}};
}

View View::overlay(View layer, Alignment alignment) && {
    return View{LayerNode{false, alignment, two(std::move(*this), std::move(layer))}};
}

View View::clipShape(Shape shape) && { return View{ClipNode{shape, one(std::move(*this))}}; }
View View::shadow(ShadowStyle shadow) && { return View{ShadowNode{shadow, one(std::move(*this))}}; }
View View::opacity(double opacity) && { return View{OpacityNode{opacity, one(std::move(*this))}}; }
View View::foregroundStyle(Color color) && { return View{ForegroundNode{color, one(std::move(*this))}}; }
View View::help(LocalizedText text) && { return View{TooltipNode{std::move(text), one(std::move(*this))}}; }
View View::appBrand(AppBrand brand) && { return View{BrandNode{std::move(brand), one(std::move(*this))}}; }
View View::layoutDirection(LayoutDirection direction) && {
    return View{LayoutDirectionNode{direction, one(std::move(*this))}};
}

View vStack(HorizontalAlignment alignment, double spacing, std::vector<View> children) {
    return View{StackNode{Axis::vertical, spacing, Alignment{alignment, VerticalAlignment::center}, std::move(children)}};
}

View hStack(VerticalAlignment alignment, double spacing, std::vector<View> children) {
    return View{
        StackNode{Axis::horizontal, spacing, Alignment{HorizontalAlignment::center, alignment}, std::move(children)}};
}

View spacer(double minLength) { return View{SpacerNode{minLength}}; }

View text(LocalizedText key, Font font, std::optional<Color> color, std::optional<int> lineLimit) {
    return View{TextNode{std::move(key), font, color, lineLimit}};
}

View verbatim(std::string text, Font font, std::optional<Color> color, std::optional<int> lineLimit) {
    return View{TextNode{std::move(text), font, color, lineLimit}};
}

View symbol(std::string name, Font font, std::optional<Fill> fill) {
    return View{SymbolNode{std::move(name), font, std::move(fill)}};
}

View shape(Shape shape, std::optional<Fill> fill) { return View{ShapeNode{shape, std::move(fill), std::nullopt, 0}}; }

View strokeBorder(Shape shape, Color color, double width) {
    return View{ShapeNode{shape, std::nullopt, color, width}};
}

View linearGradient(std::vector<Color> stops, UnitPoint start, UnitPoint end) {
    return shape(Shape::rectangle(), Fill::linearGradient(std::move(stops), start, end));
}

View image(std::shared_ptr<const ViewImage> image) { return View{ImageNode{std::move(image)}}; }

View button(std::string id, std::function<void()> action, View label, std::optional<char> shortcut) {
    return View{ButtonNode{std::move(id), std::move(action), shortcut, one(std::move(label))}};
}

View divider() { return View{DividerNode{}}; }

View nativeSwitch(Binding<bool> isOn, ControlSize size, Color tint) {
    return View{SwitchNode{std::move(isOn), size, tint}};
}

View nativePicker(std::vector<LocalizedText> titles, std::size_t selectedIndex, std::function<void(std::size_t)> select) {
    return View{PickerNode{std::move(titles), selectedIndex, std::move(select)}};
}

View brandReader(std::function<View(const AppBrand&)> body) { return View{BrandReaderNode{std::move(body)}}; }

View firstThatFits(std::vector<View> choices) { return View{FirstThatFitsNode{std::move(choices)}}; }

View trackingHover(View view, std::string id) {
    if (Snapshot::isActive()) return view;
    return View{HoverNode{std::move(id), one(std::move(view))}};
}

}  // namespace orvik
