#include "OrvikKit/MenuPieces.h"

namespace orvik {

View AppGlyph::body() const {
    return brandReader([size = size](const AppBrand& brand) {
        return shape(Shape::roundedRectangle(size * cornerRatio), Fill::linearGradient(brand.gradient))
            .frame(size, size)
            .overlay(symbol(brand.symbol, Font{size * brand.symbolScale, FontWeight::semibold},
                            Fill::solid(Color::white())))
            .shadow(ShadowStyle{brand.accent.withOpacity(0.35), 4, 0, 2});
    });
}

View Card::body() && {
    const Shape outline = Shape::roundedRectangle(cornerRadius);
    return std::move(content)
        .padding(padding)
        .frame(View::FlexibleFrame{.maxWidth = infinity, .alignment = Alignment::topLeading()})
        .background(shape(outline, Fill::solid(Color::primary().withOpacity(0.05))))
        .overlay(strokeBorder(outline, Color::primary().withOpacity(0.06), 1));
}

View ActionIcon::body() const {
    return brandReader([symbolName = symbol, size = size](const AppBrand& brand) {
        return orvik::symbol(symbolName, Font{size * 0.53, FontWeight::semibold}, Fill::solid(Color::white()))
            .frame(size, size)
            .background(shape(Shape::roundedRectangle(size * 0.25), Fill::automaticGradient(brand.accent)));
    });
}

View SettingRow::body() && {
    std::vector<View> children;
    children.reserve(4);
    children.push_back(ActionIcon{symbol, 20}.body());
    children.push_back(text(std::move(title), Font{12}, std::nullopt, 1));
    children.push_back(spacer());
    children.push_back(std::move(accessory));
    return hStack(VerticalAlignment::center, 10, std::move(children))
        .padding(EdgeInsets::horizontal(10))
        .frame(std::nullopt, 38);
}

View MenuSwitch::body() const {
    if (!Snapshot::isActive()) {
        return brandReader([isOn = isOn, size = size](const AppBrand& brand) {
            return nativeSwitch(isOn, size, brand.accent);
        });
    }
    return brandReader([on = isOn.value, size = size](const AppBrand& brand) {
        const double width = drawnWidth(size);
        const double height = drawnHeight(size);
        constexpr double inset = 1.5;
        const double knob = height - 2 * inset;
        return shape(Shape::capsule(), Fill::solid(on ? brand.accent : Color::primary().withOpacity(0.15)))
            .frame(width, height)
            .overlay(shape(Shape::circle(), Fill::solid(Color::white()))
                         .frame(knob, knob)
                         .shadow(ShadowStyle{Color::black().withOpacity(0.2), 1, 0, 0.5})
                         .padding(inset),
                     on ? Alignment::trailing() : Alignment::leading());
    });
}

View menuPickerDrawn(LocalizedText selectionTitle) {
    std::vector<View> children;
    children.reserve(2);
    children.push_back(text(std::move(selectionTitle), Font{11}));
    children.push_back(symbol("chevron.up.chevron.down", Font{8, FontWeight::bold}));
    return hStack(VerticalAlignment::center, 6, std::move(children))
        .padding(EdgeInsets::horizontal(8))
        .frame(std::nullopt, 20)
        .background(shape(Shape::roundedRectangle(5), Fill::solid(Color::primary().withOpacity(0.08))));
}

View PillButtonStyle::body(std::string id, LocalizedText label, std::function<void()> action, bool isPressed) const {
    return brandReader([prominent = prominent, id = std::move(id), label = std::move(label),
                        action = std::move(action), isPressed](const AppBrand& brand) {
        const Fill fill = prominent ? Fill::automaticGradient(brand.accent)
                                    : Fill::solid(Color::primary().withOpacity(0.08));
        View styled = text(label, Font{11, FontWeight::semibold}, prominent ? Color::white() : Color::primary())
                          .padding(EdgeInsets::horizontal(10))
                          .frame(std::nullopt, 22)
                          .background(shape(Shape::capsule(), fill))
                          .opacity(isPressed ? 0.7 : 1.0);
        return button(id, action, std::move(styled));
    });
}

View KeyCaps::body() const {
    std::vector<View> caps;
    caps.reserve(keys.size());
    const Shape outline = Shape::roundedRectangle(5);
    for (const std::string& key : keys) {
        caps.push_back(verbatim(key, Font{11, FontWeight::medium})
                           .frame(View::FlexibleFrame{.minWidth = 20, .minHeight = 20})
                           .padding(2)
                           .background(shape(outline, Fill::solid(Color::primary().withOpacity(0.07))))
                           .overlay(strokeBorder(outline, Color::primary().withOpacity(0.1), 1)));
    }
    return hStack(VerticalAlignment::center, 3, std::move(caps)).foregroundStyle(Color::secondary());
}

View borderedButton(std::string id, LocalizedText label, std::function<void()> action, bool isPressed) {
    View styled = text(std::move(label), Font{11})
                      .padding(EdgeInsets::horizontal(8))
                      .frame(std::nullopt, 20)
                      .background(shape(Shape::roundedRectangle(5),
                                        Fill::solid(Color::primary().withOpacity(isPressed ? 0.2 : 0.1))));
    return button(std::move(id), std::move(action), std::move(styled));
}

View body(const WarningCard& card, const ViewState& state) {
    const std::string buttonID = "warning." + card.symbol;
    std::vector<View> column;
    column.reserve(3);
    column.push_back(text(card.title, Font{12.5, FontWeight::semibold}));
    column.push_back(text(card.message, Font{11}, Color::secondary()));
    column.push_back(borderedButton(buttonID, card.button, card.action, state.isPressed(buttonID)));

    std::vector<View> row;
    row.reserve(2);
    row.push_back(symbol(card.symbol, Font{15}, Fill::solid(Color::orange())).frame(22, std::nullopt));
    row.push_back(vStack(HorizontalAlignment::leading, 6, std::move(column)));
    return Card{11, hStack(VerticalAlignment::top, 10, std::move(row))}.body();
}

}  // namespace orvik
