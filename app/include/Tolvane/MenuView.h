// The popover's view tree: MenuView turns the menu's content (MenuContent)
// into the kit's views, in the app's brand, 330 points wide with its height
// following the content. MenuPopover is what a host shows: it rebuilds the
// tree from the app state, tells the host when to redraw (on every app-state
// change and every assignment of the update reminder's due flag), and keeps
// the popover's view state (hover and press, the open-at-login row read once
// per showing).
//
// Main thread only.
#pragma once

#include <memory>
#include <optional>
#include <string>

#include "OrvikKit/AppBrand.h"
#include "OrvikKit/HostedContent.h"
#include "OrvikKit/MenuChrome.h"
#include "OrvikKit/Signal.h"
#include "OrvikKit/ViewTree.h"
#include "Tolvane/AppState.h"
#include "Tolvane/MenuContent.h"
#include "Tolvane/Track.h"

namespace tolvane {

// The app's brand: "Tolvane", "playpause.fill", a pink-to-red gradient,
// the system pink as accent, symbol scale 0.36.
const orvik::AppBrand& musicBrand();

// A 44 × 44 square with corner radius 7, clipping its content, with a soft
// shadow: the artwork filling it (aspect fill, decorative), or without one a
// grey gradient with the "music.note" symbol. An image the platform's canvas
// cannot draw (not an orvik::ViewImage) shows the placeholder.
struct Artwork {
    std::optional<ArtworkImage> image;

    static constexpr double side = 44;
    orvik::View body() const;
};

// A symbol in a 26 × 26 circle target, with a faint circle while hovered.
orvik::View body(const TransportButton& button, const orvik::ViewState& state);

// The hover and press identifier of a transport button.
std::string transportButtonID(MusicCommand command);

struct MenuView {
    MenuContent content;
    orvik::ViewState state;

    static constexpr double width = 330;
    static constexpr double padding = 14;
    static constexpr double spacing = 12;
    orvik::View body() const;
};

class MenuPopover final : public orvik::HostedContent {
public:
    MenuPopover(std::shared_ptr<AppState> state, MenuEnvironment environment);
    MenuPopover(const MenuPopover&) = delete;
    MenuPopover& operator=(const MenuPopover&) = delete;

    // Each time the popover is shown: a fresh view state (nothing hovered or
    // pressed), the open-at-login row read once from the login-item service,
    // and the track refreshed (the content's onAppear).
    void willShow() override;

    // The tree for the state as it is now.
    orvik::View body() override;

    // The host's hover and press state; a change needs a new body.
    orvik::ViewState& viewState() noexcept override { return viewState_; }

    // Sent before the app state or the update reminder's due flag changes:
    // the host redraws in a later main-thread task, once the change has
    // landed.
    orvik::ChangeSignal changes;
    orvik::ChangeSignal& changeSignal() noexcept override { return changes; }

private:
    std::shared_ptr<AppState> state_;
    MenuEnvironment environment_;
    orvik::ViewState viewState_;
    std::shared_ptr<orvik::OpenAtLoginRow> openAtLogin_;
    orvik::Subscription stateChanges_;
    orvik::Subscription dueFlagChanges_;
};

}  // namespace tolvane
