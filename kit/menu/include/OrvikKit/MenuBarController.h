// The decisions behind the app's status item and its popover: which image
// the button shows (the app's symbol, badged while the update reminder is
// due), when it is redrawn, how a click opens and closes the popover, and
// what opening the app again shows: the popover when the item is on screen,
// otherwise a window that says where the icon went (MissingIcon.h).
//
// The status item, its button, the popover and the drawing of images sit
// behind `StatusItem`; its macOS implementation creates the item (square
// length, autosave name `MenuBarController::autosaveName`, the button's
// accessibility label the title, its action `toggle`), hosts the popover's
// content and draws the badge with `badgeGeometry`.
//
// Main thread only. Change signals and due-flag values become main-thread
// tasks that hold the controller weakly, so a released controller stops
// redrawing.
#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

#include "OrvikKit/AppBrand.h"
#include "OrvikKit/MainThread.h"
#include "OrvikKit/MissingIcon.h"
#include "OrvikKit/Signal.h"
#include "OrvikKit/SystemServices.h"
#include "OrvikKit/UpdateReminderCenter.h"

namespace orvik {

// An image for the status item's button: a system symbol image.
struct StatusItemImage {
    std::string symbolName;                // the SF Symbols name
    std::string accessibilityDescription;  // what assistive technology reads out
    bool isTemplate = true;                // tinted by the menu bar for light and dark
    bool badged = false;                   // drawn with the update dot (see badgeGeometry)

    friend bool operator==(const StatusItemImage&, const StatusItemImage&) = default;
};

// Rectangles and sizes in an image's own point coordinates (origin at the
// bottom left).
struct ImageSize {
    double width = 0;
    double height = 0;

    friend constexpr bool operator==(const ImageSize&, const ImageSize&) = default;
};

struct ImageRect {
    double x = 0;
    double y = 0;
    double width = 0;
    double height = 0;

    // The rectangle grown by `by` on every side.
    constexpr ImageRect grownBy(double by) const noexcept {
        return ImageRect{.x = x - by, .y = y - by, .width = width + 2 * by, .height = height + 2 * by};
    }

    friend constexpr bool operator==(const ImageRect&, const ImageRect&) = default;
};

// Where the update dot goes on an image of a given size. The badged image
// has the source's size: the source is drawn over the whole of it, then a
// transparent ring is punched out (compositing "clear", an oval in `ring`) so
// the dot stands apart from the symbol, then the dot is filled black (an
// oval in `dot`). With no graphics context to set the compositing on, the dot
// is still filled, without the ring.
struct BadgeGeometry {
    static constexpr double dotSize = 5;
    static constexpr double ringWidth = 1.5;

    ImageRect dot;   // a square in the top-right corner
    ImageRect ring;  // the dot grown by the ring's width
};

constexpr BadgeGeometry badgeGeometry(ImageSize imageSize) noexcept {
    const ImageRect dot{.x = imageSize.width - BadgeGeometry::dotSize,
                        .y = imageSize.height - BadgeGeometry::dotSize,
                        .width = BadgeGeometry::dotSize,
                        .height = BadgeGeometry::dotSize};
    return BadgeGeometry{.dot = dot, .ring = dot.grownBy(BadgeGeometry::ringWidth)};
}

// The status item with its button and popover, as the controller drives it.
class StatusItem {
public:
    virtual ~StatusItem() = default;

    // Whether the status item has a button (the system may give none).
    virtual bool hasButton() const = 0;

    // Wires the button: clicking it calls `action`, and assistive technology
    // reads `accessibilityLabel` for it. Does nothing without a button.
    virtual void configureButton(std::string_view accessibilityLabel, std::function<void()> action) = 0;

    // Makes the system symbol image `image` describes (a template image with
    // the accessibility description; badged: a new template image of the
    // same size and description with the dot drawn) and puts it on the
    // button. Answers false, changing nothing, when the platform has no
    // symbol of that name or there is no button.
    virtual bool setImage(const StatusItemImage& image) = 0;

    virtual bool isPopoverShown() const = 0;

    // Where the item is now: the item's visibility flag, the button's
    // window (ordered in, occluded, its frame) and every screen's frame with
    // the areas beside a camera housing. Read afresh on every call.
    virtual StatusItemPlacement placement() const = 0;

    // Activates the application, ignoring other applications.
    virtual void activateApplication() = 0;
    // Shows the popover relative to the button's bounds, attached to the
    // button, below it.
    virtual void showPopover() = 0;
    // Makes the window of the popover's content the key window, so that its
    // controls take keyboard input at once.
    virtual void makePopoverKey() = 0;
    // Closes the popover as if the user had (performClose).
    virtual void closePopover() = 0;
};

// What the help window for a hidden status item needs.
struct MissingIconEnvironment {
    std::shared_ptr<ContentWindow> window;
    std::shared_ptr<URLOpener> urlOpener;  // opens Menu Bar settings
    SystemVersion systemVersion;
    AppBrand brand;
    std::function<void()> quit;
};

class MenuBarController : public std::enable_shared_from_this<MenuBarController> {
public:
    // Keeps the item's place in the menu bar across launches.
    static constexpr std::string_view autosaveName = "Item-0";

    // A controller over `statusItem` for the app named `title` (the button's
    // accessibility label and the image's accessibility description). Wires
    // the button to `toggle()` (holding the controller weakly), draws the
    // image from `symbol()` at once, then again, in a later main-thread task,
    // each time `changes` fires, so that the symbol is read after the change
    // has landed. Last, it becomes `shared()`.
    static std::shared_ptr<MenuBarController> create(std::shared_ptr<StatusItem> statusItem,
                                                     std::shared_ptr<MainThread> mainThread,
                                                     std::string title, ChangeSignal& changes,
                                                     std::function<std::string()> symbol);

    // The controller most recently constructed, while something keeps it
    // alive (the application does, for the life of the process); null
    // before the first. Main thread only.
    static std::shared_ptr<MenuBarController> shared();

    MenuBarController(const MenuBarController&) = delete;
    MenuBarController& operator=(const MenuBarController&) = delete;

    // Follows a due flag: each value that differs from the one before (the
    // first always counts) is posted to the main thread, where it becomes
    // the badge state and the image is redrawn. Replaces an earlier
    // following.
    void showUpdateBadge(Published<bool>& updateReminderDue);
    void showUpdateBadge(UpdateReminderCenter& center) { showUpdateBadge(center.updateReminderDue); }

    // The button's action: closes the popover when it is shown, otherwise
    // opens it.
    void toggle();
    // Without a button does nothing. When the popover is not shown:
    // activates the app, shows the popover and makes it key.
    void open();
    // Closes the popover when it is shown.
    void close();

    // Lets `reopen` show the help window when the item is not on screen.
    void showMissingIconHelpWith(MissingIconEnvironment environment);
    // The app was opened again while it runs (Finder, Spotlight, `open`).
    // When the item is on screen (iconPlacement), or nothing was given to
    // showMissingIconHelpWith, as open(), after closing a help window that
    // is shown. Otherwise the help window (missingIconHelp for the title
    // and the system version) is shown and comes to the front; its buttons
    // open Menu Bar settings (the window stays), quit the app, or close the
    // window. Answers where the item was found.
    IconPlacement reopen();

    // Redraws the button's image from the symbol and the badge state. An
    // unknown symbol leaves the previous image.
    void updateIcon();

    const std::string& title() const noexcept { return title_; }
    bool showsBadge() const noexcept { return showsBadge_; }

private:
    MenuBarController(std::shared_ptr<StatusItem> statusItem, std::shared_ptr<MainThread> mainThread, std::string title,
                      std::function<std::string()> symbol);

    std::shared_ptr<StatusItem> statusItem_;
    std::shared_ptr<MainThread> mainThread_;
    std::string title_;
    std::function<std::string()> symbol_;
    Subscription changesSubscription_;
    Subscription badgeSubscription_;
    bool showsBadge_ = false;
    std::optional<MissingIconEnvironment> missingIcon_;

    void perform(MissingIconAction action);
};

}  // namespace orvik
