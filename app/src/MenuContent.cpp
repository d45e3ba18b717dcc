#include "Tolvane/MenuContent.h"

#include <string>

#include "OrvikKit/SystemSettings.h"

namespace tolvane {

namespace {

using orvik::appText;
using orvik::LocalizedText;

orvik::NamedColor namedColor(StatusColor color) {
    switch (color) {
    case StatusColor::systemGray: return orvik::NamedColor::gray;
    case StatusColor::systemOrange: return orvik::NamedColor::orange;
    case StatusColor::systemGreen: return orvik::NamedColor::green;
    }
    return orvik::NamedColor::gray;  // unreachable
}

// An action on the state that does nothing once the state is gone.
template <class Body>
auto onState(const std::shared_ptr<AppState>& state, Body body) {
    return [weak = std::weak_ptr<AppState>(state), body](auto&&... arguments) {
        if (const std::shared_ptr<AppState> alive = weak.lock()) {
            body(*alive, std::forward<decltype(arguments)>(arguments)...);
        }
    };
}

orvik::MenuHeader header(const std::shared_ptr<AppState>& state) {
    const AppStatus status = state->status();
    return orvik::MenuHeader{
        .status = appText(std::string(headerText(status))),
        .statusColor = namedColor(headerColor(status)),
        .isOn = state->isEnabled(),
        .setOn = onState(state, [](AppState& alive, bool on) { alive.setEnabled(on); }),
        .switchHelp = appText(state->isEnabled() ? "Turn off" : "Turn on"),
    };
}

std::vector<orvik::WarningCard> warnings(const AppState& state, const MenuEnvironment& environment) {
    std::vector<orvik::WarningCard> cards;
    const auto openPane = [opener = environment.urlOpener](orvik::SystemSettings::Pane pane) {
        return [opener, pane] {
            if (opener) orvik::SystemSettings::open(pane, *opener);
        };
    };
    if (!state.hasAccessibility()) {
        cards.push_back(orvik::WarningCard{
            .symbol = "hand.raised.fill",
            .title = appText("Allow Accessibility access"),
            .message = appText("macOS requires this permission for an app to catch the media keys before other apps "
                               "do. If Tolvane is already turned on in the list, select it, click \u2212 and open "
                               "the app again."),
            .action = openPane(orvik::SystemSettings::Pane::accessibility),
        });
    }
    if (state.automationDenied()) {
        cards.push_back(orvik::WarningCard{
            .symbol = "exclamationmark.triangle.fill",
            .title = appText("Allow controlling Music"),
            .message = appText("Under Automation, turn on \u201CMusic\u201D below Tolvane. Without it the keys do "
                               "nothing."),
            .action = openPane(orvik::SystemSettings::Pane::automation),
        });
    }
    return cards;
}

NowPlayingCard nowPlaying(const std::shared_ptr<AppState>& state) {
    const std::optional<Track>& track = state->track();
    const bool isPlaying = track && track->summary.isPlaying;
    const auto button = [&](std::string symbol, double size, MusicCommand command, orvik::LocalizedText help) {
        return TransportButton{
            .symbol = std::move(symbol),
            .size = size,
            .command = command,
            .action = onState(state, [command](AppState& alive) { alive.perform(command); }),
            .help = std::move(help),
        };
    };
    NowPlayingCard card{
        .artwork = track ? track->artwork : std::nullopt,
        .title = track ? MenuText(track->summary.name)
                       : MenuText(appText(state->isMusicRunning() ? "Nothing playing" : "Music is closed")),
        .subtitle = track ? MenuText(track->summary.artist) : MenuText(appText("Press \u23EF to start")),
        .transport = {},
    };
    card.transport.push_back(button("backward.fill", 11, MusicCommand::previous, appText("Previous Track")));
    card.transport.push_back(button(isPlaying ? "pause.fill" : "play.fill", 15, MusicCommand::playPause,
                                    isPlaying ? appText("Pause") : appText("Play")));
    card.transport.push_back(button("forward.fill", 11, MusicCommand::next, appText("Next Track")));
    return card;
}

SettingsCard settings(const std::shared_ptr<AppState>& state, const MenuEnvironment& environment) {
    std::vector<ClosedBehaviorOption> options;
    for (ClosedBehavior behavior : allClosedBehaviors) {
        options.push_back({behavior, title(behavior)});
    }
    return SettingsCard{
        .title = appText("When Music is closed"),
        .options = std::move(options),
        .selection = state->closedBehavior(),
        .select = onState(state, [](AppState& alive, ClosedBehavior behavior) { alive.setClosedBehavior(behavior); }),
        .openAtLogin = environment.openAtLogin ? environment.openAtLogin
                                               : std::make_shared<orvik::OpenAtLoginRow>(environment.loginItem),
    };
}

orvik::PrivacyCard privacy() {
    orvik::PrivacyCard card;
    card.items = {
        {"network.slash", appText("No internet connection, no data collected")},
        {"keyboard", appText("Only sees \u23EE \u23EF \u23ED \u2014 never what you type")},
    };
    return card;
}

orvik::MenuFooter footer(const AppState& state, const MenuEnvironment& environment) {
    std::optional<LocalizedText> caption;
    if (state.keysForwarded() >= 1) {
        caption = appText("Keys sent: %lld", {std::to_string(state.keysForwarded())});
    }
    return orvik::MenuFooter{
        .caption = std::move(caption),
        .checkForUpdates = [center = state.updateReminders()] { center->checkForUpdates(); },
        .version = environment.version,
        .quit = environment.quit,
    };
}

}  // namespace

LocalizedText title(ClosedBehavior behavior) {
    switch (behavior) {
    case ClosedBehavior::launchMusic: return appText("Open Music");
    case ClosedBehavior::ignore: return appText("Ignore the key");
    case ClosedBehavior::system: return appText("macOS default");
    }
    return appText("Open Music");  // unreachable
}

MenuContent menuContent(const std::shared_ptr<AppState>& state, const MenuEnvironment& environment) {
    const auto& reminders = state->updateReminders();
    return MenuContent{
        .header = header(state),
        .updateReminder = reminders->updateReminderDue.get()
                              ? std::optional<orvik::UpdateReminderCard>(orvik::UpdateReminderCard::from(reminders))
                              : std::nullopt,
        .warnings = warnings(*state, environment),
        .nowPlaying = nowPlaying(state),
        .settings = settings(state, environment),
        .privacy = privacy(),
        .footer = footer(*state, environment),
        .onAppear = onState(state, [](AppState& alive) { alive.refreshTrack(); }),
    };
}

}  // namespace tolvane
