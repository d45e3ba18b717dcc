#include "Tolvane/MenuView.h"

#include <string>
#include <utility>
#include <vector>

#include "OrvikKit/MenuChromeViews.h"
#include "OrvikKit/MenuPieces.h"

namespace tolvane {

namespace {

using orvik::Color;
using orvik::Fill;
using orvik::Font;
using orvik::FontWeight;
using orvik::View;

View menuText(const MenuText& value, Font font, std::optional<Color> color, std::optional<int> lineLimit) {
    if (const auto* key = std::get_if<orvik::LocalizedText>(&value)) return orvik::text(*key, font, color, lineLimit);
    return orvik::verbatim(std::get<std::string>(value), font, color, lineLimit);
}

View nowPlayingCard(const NowPlayingCard& card, bool hasTrack, const orvik::ViewState& state) {
    // A track's name and artist stay on one line; the texts shown without a
    // track are short.
    const std::optional<int> lineLimit = hasTrack ? std::optional<int>(1) : std::nullopt;
    std::vector<View> lines;
    lines.reserve(2);
    lines.push_back(menuText(card.title, Font{12.5, FontWeight::semibold}, std::nullopt, lineLimit));
    lines.push_back(menuText(card.subtitle, Font{11.5}, Color::secondary(), lineLimit));

    std::vector<View> buttons;
    buttons.reserve(card.transport.size());
    for (const TransportButton& button : card.transport) buttons.push_back(body(button, state));

    std::vector<View> row;
    row.reserve(4);
    row.push_back(Artwork{card.artwork}.body());
    row.push_back(orvik::vStack(orvik::HorizontalAlignment::leading, 2, std::move(lines)));
    row.push_back(orvik::spacer(4));
    // The playback buttons show the direction of the tape, not of reading:
    // previous, play and next keep their order and their symbols in every
    // language, as the system's own playback controls do; in a right-to-left
    // menu the group as a whole moves to the left with the rest of the row.
    row.push_back(orvik::hStack(orvik::VerticalAlignment::center, 2, std::move(buttons))
                      .layoutDirection(orvik::LayoutDirection::leftToRight));
    return orvik::Card{11, orvik::hStack(orvik::VerticalAlignment::center, 12, std::move(row))}.body();
}

View settingsCard(const SettingsCard& card) {
    std::vector<ClosedBehavior> options;
    options.reserve(card.options.size());
    for (const ClosedBehaviorOption& option : card.options) options.push_back(option.value);
    const orvik::MenuPicker<ClosedBehavior> picker{
        .selection = orvik::Binding<ClosedBehavior>{card.selection, card.select},
        .options = std::move(options),
        .title = [](const ClosedBehavior& behavior) { return title(behavior); },
    };

    std::vector<View> rows;
    rows.reserve(3);
    rows.push_back(orvik::SettingRow{card.symbol, card.title, picker.body()}.body());
    rows.push_back(orvik::divider().padding(orvik::EdgeInsets{0, 40, 0, 0}));
    rows.push_back(orvik::body(card.openAtLogin));
    return orvik::Card{0, orvik::vStack(orvik::HorizontalAlignment::leading, 0, std::move(rows))}.body();
}

}  // namespace

const orvik::AppBrand& musicBrand() {
    static const orvik::AppBrand brand{
        .name = "Tolvane",
        .symbol = "playpause.fill",
        .gradient = {Color::sRGB(0.98, 0.36, 0.47, 1.0), Color::sRGB(0.98, 0.14, 0.27, 1.0)},
        .accent = Color::pink(),
        .symbolScale = 0.36,
    };
    return brand;
}

View Artwork::body() const {
    View content = [&] {
        if (image) {
            if (const auto* drawable = dynamic_cast<const orvik::ViewImage*>(&image->content())) {
                return orvik::image(std::shared_ptr<const orvik::ViewImage>(image->shared(), drawable));
            }
        }
        return orvik::linearGradient({Color::gray().withOpacity(0.35), Color::gray().withOpacity(0.2)})
            .overlay(orvik::symbol("music.note", Font{17}, Fill::solid(Color::secondary())));
    }();
    return std::move(content)
        .frame(side, side)
        .clipShape(orvik::Shape::roundedRectangle(7))
        .shadow(orvik::ShadowStyle{Color::black().withOpacity(0.15), 2, 0, 1});
}

std::string transportButtonID(MusicCommand command) {
    switch (command) {
    case MusicCommand::previous: return "transport.previous";
    case MusicCommand::playPause: return "transport.playPause";
    case MusicCommand::next: return "transport.next";
    case MusicCommand::launchAndPlay: return "transport.launchAndPlay";
    }
    return "transport";
}

View body(const TransportButton& button, const orvik::ViewState& state) {
    const std::string id = transportButtonID(button.command);
    View label = orvik::symbol(button.symbol, Font{button.size, FontWeight::semibold})
                     .frame(26, 26)
                     .background(orvik::shape(orvik::Shape::circle(),
                                              Fill::solid(Color::primary().withOpacity(state.isHovered(id) ? 0.1 : 0))));
    return orvik::trackingHover(orvik::button(id, button.action, std::move(label)).help(button.help), id);
}

View MenuView::body() const {
    std::vector<View> children;
    children.reserve(8);
    children.push_back(orvik::body(content.header));
    if (content.updateReminder) children.push_back(orvik::body(*content.updateReminder, state));
    for (const orvik::WarningCard& warning : content.warnings) children.push_back(orvik::body(warning, state));
    children.push_back(nowPlayingCard(content.nowPlaying, std::holds_alternative<std::string>(content.nowPlaying.title),
                                      state));
    children.push_back(settingsCard(content.settings));
    children.push_back(orvik::body(content.privacy));
    children.push_back(orvik::body(content.footer, state));
    return orvik::vStack(orvik::HorizontalAlignment::leading, spacing, std::move(children))
        .padding(padding)
        .frame(width, std::nullopt)
        .appBrand(musicBrand());
}

MenuPopover::MenuPopover(std::shared_ptr<AppState> state, MenuEnvironment environment)
    : state_(std::move(state)), environment_(std::move(environment)) {
    stateChanges_ = state_->objectWillChange.subscribe([this] { changes.send(); });
    dueFlagChanges_ = state_->updateReminders()->updateReminderDue.subscribe([this](const bool&) { changes.send(); });
}

void MenuPopover::willShow() {
    viewState_ = orvik::ViewState{};
    openAtLogin_ = std::make_shared<orvik::OpenAtLoginRow>(environment_.loginItem);
    MenuEnvironment environment = environment_;
    environment.openAtLogin = openAtLogin_;
    const MenuContent content = menuContent(state_, environment);
    if (content.onAppear) content.onAppear();
}

View MenuPopover::body() {
    if (!openAtLogin_) openAtLogin_ = std::make_shared<orvik::OpenAtLoginRow>(environment_.loginItem);
    MenuEnvironment environment = environment_;
    environment.openAtLogin = openAtLogin_;
    return MenuView{menuContent(state_, environment), viewState_}.body();
}

}  // namespace tolvane
