// What the popover shows, as data: a pure function of the app state (and the
// update reminder it owns) that MenuView turns into the view tree. Every control
// carries the action it performs, bound weakly to the state.
//
// Texts are localisation keys: the kit's own in its table "OrvikKit", the
// app's in the main table (LocalizedText says which). A track's name and
// artist are shown as they stand.
//
// Main thread only.
#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <variant>
#include <vector>

#include "OrvikKit/MenuChrome.h"
#include "OrvikKit/SystemServices.h"
#include "Tolvane/AppState.h"
#include "Tolvane/Track.h"
#include "TolvaneCore/KeyRouting.h"

namespace tolvane {

// A localisation key, or text shown as it stands.
using MenuText = std::variant<orvik::LocalizedText, std::string>;

struct TransportButton {
    std::string symbol;  // a system symbol name
    double size;         // the symbol's font size
    MusicCommand command;
    std::function<void()> action;
    // What the button does, in words: its tooltip, and what VoiceOver reads
    // for a button that shows only a symbol.
    orvik::LocalizedText help;
};

struct NowPlayingCard {
    // The artwork; without one the placeholder (a grey gradient with the
    // "music.note" symbol) is drawn.
    std::optional<ArtworkImage> artwork;
    MenuText title;     // the track's name, or "Nothing playing" / "Music is closed"
    MenuText subtitle;  // the track's artist, or "Press ⏯ to start"
    std::vector<TransportButton> transport;  // previous, play/pause, next
};

struct ClosedBehaviorOption {
    ClosedBehavior value;
    orvik::LocalizedText title;
};

struct SettingsCard {
    std::string symbol = "music.note.house";
    orvik::LocalizedText title;
    std::vector<ClosedBehaviorOption> options;  // every case, in declared order
    ClosedBehavior selection;
    std::function<void(ClosedBehavior)> select;
    // The open-at-login row's view state (see MenuEnvironment::openAtLogin).
    std::shared_ptr<orvik::OpenAtLoginRow> openAtLogin;
};

struct MenuContent {
    orvik::MenuHeader header;
    std::optional<orvik::UpdateReminderCard> updateReminder;  // while the reminder is due
    std::vector<orvik::WarningCard> warnings;                 // Accessibility first, then Automation
    NowPlayingCard nowPlaying;
    SettingsCard settings;
    orvik::PrivacyCard privacy;
    orvik::MenuFooter footer;
    // Run each time the popover is shown: brings the now-playing card up to date.
    std::function<void()> onAppear;
};

// What the menu needs beyond the state.
struct MenuEnvironment {
    // The login-item service; while a snapshot renders (Snapshot::isActive)
    // it is never asked and may be null.
    std::shared_ptr<orvik::LoginItemService> loginItem{};
    // The open-at-login row as read when the popover was shown (MenuPopover
    // makes one per showing, so rebuilding the content does not ask the
    // login-item service again). None: a row is read from `loginItem` now.
    std::shared_ptr<orvik::OpenAtLoginRow> openAtLogin{};
    std::shared_ptr<orvik::URLOpener> urlOpener{};  // opens System Settings panes
    std::string version{};                          // the app's version
    std::function<void()> quit{};                   // asks the application to terminate
};

// The localised title of a closed behaviour (app table).
orvik::LocalizedText title(ClosedBehavior behavior);

MenuContent menuContent(const std::shared_ptr<AppState>& state, const MenuEnvironment& environment);

}  // namespace tolvane
