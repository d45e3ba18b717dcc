// Reaching a menu-bar agent whose status item is not on screen.
//
// macOS 26 lets the user switch an app's status item off (System Settings ›
// Menu Bar › Allow in the Menu Bar), and a full menu bar (above all on a
// MacBook whose camera housing takes the middle of it) hides the items that
// do not fit. In both cases the item still exists and still reports itself
// visible, and an agent with no other window cannot be reached. Opening the
// app again (Finder, Spotlight, `open`) is then the way back in: the
// controller asks where the item is (`iconPlacement`), shows the popover when
// the item is on screen, and otherwise a small window that says where the
// icon went and what to do (`missingIconHelp`, drawn by `MissingIconView`).
//
// Everything here is decided from facts the platform reports
// (`StatusItemPlacement`, `SystemVersion`); the platform only reads them and
// shows what is decided. Pure values and functions, except
// `MissingIconWindowContent` (main thread only).
#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "OrvikKit/AppBrand.h"
#include "OrvikKit/HostedContent.h"
#include "OrvikKit/LocalizedText.h"
#include "OrvikKit/Signal.h"
#include "OrvikKit/SystemServices.h"
#include "OrvikKit/ViewTree.h"

namespace orvik {

// A rectangle in global screen coordinates: points, the origin at the bottom
// left of the main screen, y growing upwards.
struct ScreenRect {
    double x = 0;
    double y = 0;
    double width = 0;
    double height = 0;

    constexpr double maxX() const noexcept { return x + width; }
    constexpr double maxY() const noexcept { return y + height; }
    constexpr double midX() const noexcept { return x + width / 2; }
    constexpr double midY() const noexcept { return y + height / 2; }
    constexpr bool isEmpty() const noexcept { return !(width > 0) || !(height > 0); }

    friend constexpr bool operator==(const ScreenRect&, const ScreenRect&) = default;
};

// One screen: its frame, and the unobscured areas at its top left and top
// right beside a camera housing, which are empty on a screen without one.
struct ScreenFacts {
    ScreenRect frame;
    ScreenRect topLeftArea;
    ScreenRect topRightArea;

    // Whether the screen has a camera housing in its top edge.
    constexpr bool hasCameraHousing() const noexcept { return !topLeftArea.isEmpty() || !topRightArea.isEmpty(); }

    friend constexpr bool operator==(const ScreenFacts&, const ScreenFacts&) = default;
};

// What the platform reports about the status item at one moment. The
// defaults describe an item that is nowhere, so a fact left out never makes
// an item count as shown.
struct StatusItemPlacement {
    bool hasButton = false;        // the system gave the item a button
    bool itemIsVisible = false;    // the item's own visibility flag
    bool hasWindow = false;        // the button is in a window
    bool windowIsVisible = false;  // that window is ordered in
    bool windowIsOccluded = true;  // its occlusion state lacks "visible": no part of it can be seen
    ScreenRect windowFrame;        // that window's frame
    std::vector<ScreenFacts> screens;

    friend bool operator==(const StatusItemPlacement&, const StatusItemPlacement&) = default;
};

// Where the status item is, by the first fact that keeps it off screen.
enum class IconPlacement : std::uint8_t {
    shown,
    noButton,             // the system gave the item no button
    hiddenByApp,          // the item's visibility flag is off
    notInAWindow,         // the button is in no window
    windowOrderedOut,     // the button's window is not on screen
    windowOccluded,       // the window server reports no part of the window visible
    offTheMenuBar,        // the window is on no screen's top edge
    behindCameraHousing,  // the window's middle is between the areas beside a camera housing
};

// The item counts as shown when it has a button in a window that is ordered
// in and not fully occluded, whose middle lies on a screen no lower than one
// window height below that screen's top edge (where the menu bar is), and,
// on a screen with a camera housing, within one of the unobscured areas
// beside it. The item's own visibility flag is necessary but never enough:
// it stays on while the item is hidden for want of room.
IconPlacement iconPlacement(const StatusItemPlacement& facts) noexcept;

constexpr bool isShown(IconPlacement placement) noexcept { return placement == IconPlacement::shown; }

// macOS 26 and later have Menu Bar settings with the list "Allow in the
// Menu Bar"; macOS 13 to 15 have no such setting.
constexpr bool hasMenuBarAllowList(SystemVersion version) noexcept { return version.releaseMajor() >= 26; }

// What a button of the help window does.
enum class MissingIconAction : std::uint8_t {
    openMenuBarSettings,  // opens System Settings › Menu Bar; the window stays
    quit,                 // quits the app
    dismiss,              // closes the window
};

struct MissingIconButton {
    std::string id;  // the hover and press identifier
    LocalizedText title;
    MissingIconAction action = MissingIconAction::dismiss;
    bool prominent = false;  // the default button, filled with the brand accent

    friend bool operator==(const MissingIconButton&, const MissingIconButton&) = default;
};

// What the help window says, and its buttons from leading to trailing.
struct MissingIconHelp {
    LocalizedText title;
    std::vector<LocalizedText> paragraphs;
    std::vector<MissingIconButton> buttons;

    friend bool operator==(const MissingIconHelp&, const MissingIconHelp&) = default;
};

// The help for the app named `appName` on `version`: on macOS 26 and later,
// where the icon is most likely switched off in Menu Bar settings, with a
// button that opens them; on macOS 13 to 15, that the menu bar may be too
// full to show it and how to make room. Both offer to quit the app (which
// cannot be reached otherwise) and to close the window.
MissingIconHelp missingIconHelp(std::string_view appName, SystemVersion version);

// The help window's tree: the app's glyph beside the title and the
// paragraphs, the buttons in a row below (Quit at the leading end, the
// others at the trailing end, the prominent one last) or, where the row
// does not fit, stacked at the trailing edge with the prominent one on
// top, `width` points wide with `padding` on every side. A button calls
// `perform` with its action.
struct MissingIconView {
    MissingIconHelp help;
    ViewState state;
    std::function<void(MissingIconAction)> perform;

    static constexpr double width = 420;
    static constexpr double padding = 20;
    static constexpr double glyphSize = 56;
    View body() const;
};

// The help window's content for a host: the view over `help` in `brand`,
// with a view state of its own that is fresh each time the window is shown.
class MissingIconWindowContent final : public HostedContent {
public:
    MissingIconWindowContent(MissingIconHelp help, AppBrand brand, std::function<void(MissingIconAction)> perform);

    View body() override;
    ViewState& viewState() noexcept override { return state_; }
    void willShow() override { state_ = ViewState{}; }
    // The help does not change while the window is shown.
    ChangeSignal& changeSignal() noexcept override { return changes_; }

    const MissingIconHelp& help() const noexcept { return help_; }

private:
    MissingIconHelp help_;
    AppBrand brand_;
    std::function<void(MissingIconAction)> perform_;
    ViewState state_;
    ChangeSignal changes_;
};

}  // namespace orvik
