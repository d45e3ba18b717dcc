#include "OrvikKit/MenuChromeViews.h"

#include <string>
#include <utility>
#include <vector>

namespace orvik {

View body(const MenuHeader& header) {
    std::vector<View> statusLine;
    statusLine.reserve(2);
    statusLine.push_back(shape(Shape::circle(), Fill::solid(Color::standard(header.statusColor))).frame(7, 7));
    statusLine.push_back(text(header.status, Font{11.5}, Color::secondary(), 1));

    std::vector<View> column;
    column.reserve(2);
    column.push_back(brandReader([](const AppBrand& brand) {
        return verbatim(brand.name, Font{15, FontWeight::semibold});
    }));
    column.push_back(hStack(VerticalAlignment::center, 5, std::move(statusLine)));

    std::vector<View> row;
    row.reserve(4);
    row.push_back(AppGlyph{40}.body());
    row.push_back(vStack(HorizontalAlignment::leading, 2, std::move(column)));
    row.push_back(spacer());
    row.push_back(MenuSwitch{Binding<bool>{header.isOn, header.setOn}, ControlSize::small}.body().help(
        header.switchHelp));
    return hStack(VerticalAlignment::center, 12, std::move(row));
}

View body(const FooterRow& row, const ViewState& state) {
    const std::string id = "footer." + row.title.key;
    const bool hovered = state.isHovered(id);
    std::vector<View> line;
    line.reserve(3);
    line.push_back(text(row.title, Font{12}, Color::primary(), 1));
    line.push_back(spacer());
    line.push_back(text(row.detail, Font{12}, Color::tertiary()));
    View label = hStack(VerticalAlignment::center, 8, std::move(line))
                     .padding(EdgeInsets::horizontal(11))
                     .frame(std::nullopt, 26)
                     .background(shape(Shape::roundedRectangle(7),
                                       Fill::solid(Color::primary().withOpacity(hovered ? 0.07 : 0))));
    return trackingHover(button(id, row.action, std::move(label), row.shortcut), id);
}

View body(const MenuFooter& footer, const ViewState& state) {
    MenuFooter::Lines lines = footer.lines();
    std::vector<View> stack;
    stack.reserve(lines.rows.size() + 1);
    if (lines.caption) {
        stack.push_back(text(std::move(*lines.caption), Font{12}, Color::tertiary(), 1)
                            .frame(View::FlexibleFrame{.maxWidth = infinity,
                                                       .minHeight = 26,
                                                       .alignment = Alignment::leading()})
                            .padding(EdgeInsets::horizontal(11)));
    }
    for (const FooterRow& row : lines.rows) stack.push_back(body(row, state));
    return vStack(HorizontalAlignment::leading, 0, std::move(stack));
}

View body(const PrivacyItem& item) {
    std::vector<View> row;
    row.reserve(2);
    row.push_back(
        symbol(item.symbol, Font{10, FontWeight::medium}, Fill::solid(Color::green())).frame(15, std::nullopt));
    row.push_back(text(item.text, Font{11}, Color::primary().withOpacity(0.85)));
    return hStack(VerticalAlignment::center, 7, std::move(row));
}

View body(const PrivacyCard& card) {
    std::vector<View> column;
    column.reserve(card.items.size() + 1);
    column.push_back(text(card.title, Font{12.5, FontWeight::semibold}));
    for (const PrivacyItem& item : card.items) column.push_back(body(item));

    std::vector<View> row;
    row.reserve(2);
    row.push_back(symbol(card.symbol, Font{18}, Fill::automaticGradient(Color::green())));
    row.push_back(vStack(HorizontalAlignment::leading, 5, std::move(column)));
    return Card{11, hStack(VerticalAlignment::top, 10, std::move(row))}.body();
}

View body(const std::shared_ptr<OpenAtLoginRow>& row) {
    const Binding<bool> isOn{row->isOn(), [row](bool on) { row->setOn(on); }};
    return SettingRow{std::string(OpenAtLoginRow::symbol), OpenAtLoginRow::title(),
                      MenuSwitch{isOn, ControlSize::mini}.body()}
        .body();
}

View body(const UpdateReminderCard& card, const ViewState& state) {
    std::vector<View> buttons;
    buttons.reserve(2);
    const std::string checkID = "update.check";
    const std::string notNowID = "update.notNow";
    buttons.push_back(PillButtonStyle{card.check.prominent}.body(checkID, card.check.title, card.check.action,
                                                                 state.isPressed(checkID)));
    buttons.push_back(PillButtonStyle{card.notNow.prominent}.body(notNowID, card.notNow.title, card.notNow.action,
                                                                  state.isPressed(notNowID)));

    std::vector<View> column;
    column.reserve(3);
    column.push_back(text(card.title, Font{12.5, FontWeight::semibold}));
    column.push_back(text(card.message, Font{11}, Color::secondary()));
    column.push_back(hStack(VerticalAlignment::center, 6, std::move(buttons)).padding(EdgeInsets{2, 0, 0, 0}));

    std::vector<View> row;
    row.reserve(2);
    row.push_back(brandReader([symbolName = card.symbol](const AppBrand& brand) {
        return symbol(symbolName, Font{17}, Fill::automaticGradient(brand.accent)).frame(22, std::nullopt);
    }));
    row.push_back(vStack(HorizontalAlignment::leading, 4, std::move(column)));
    return Card{11, hStack(VerticalAlignment::top, 10, std::move(row))}.body();
}

}  // namespace orvik
