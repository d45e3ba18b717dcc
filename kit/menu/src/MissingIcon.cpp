#include "OrvikKit/MissingIcon.h"

#include <string>
#include <utility>

#include "OrvikKit/MenuPieces.h"

namespace orvik {

namespace {

// The window's middle lies on `screen`, no lower than one window height
// below its top edge: where the menu bar is. macOS parks an item it does
// not allow in the menu bar well away from it (at the bottom of the main
// screen), with the item's visibility flag still on.
bool isOnTopEdge(const ScreenRect& window, const ScreenRect& screen) noexcept {
    const double midX = window.midX();
    const double midY = window.midY();
    return midX >= screen.x && midX < screen.maxX() && midY <= screen.maxY() && midY >= screen.maxY() - window.height;
}

// The window's middle is above one of the unobscured areas beside a camera
// housing; anything between them is behind the housing.
bool isBesideCameraHousing(const ScreenRect& window, const ScreenFacts& screen) noexcept {
    const auto within = [midX = window.midX()](const ScreenRect& area) {
        return !area.isEmpty() && midX >= area.x && midX <= area.maxX();
    };
    return within(screen.topLeftArea) || within(screen.topRightArea);
}

}  // namespace

IconPlacement iconPlacement(const StatusItemPlacement& facts) noexcept {
    if (!facts.hasButton) return IconPlacement::noButton;
    if (!facts.itemIsVisible) return IconPlacement::hiddenByApp;
    if (!facts.hasWindow) return IconPlacement::notInAWindow;
    if (!facts.windowIsVisible) return IconPlacement::windowOrderedOut;
    if (facts.windowIsOccluded) return IconPlacement::windowOccluded;
    if (facts.windowFrame.isEmpty()) return IconPlacement::offTheMenuBar;
    for (const ScreenFacts& screen : facts.screens) {
        if (!isOnTopEdge(facts.windowFrame, screen.frame)) continue;
        if (!screen.hasCameraHousing() || isBesideCameraHousing(facts.windowFrame, screen)) {
            return IconPlacement::shown;
        }
        return IconPlacement::behindCameraHousing;
    }
    return IconPlacement::offTheMenuBar;
}

MissingIconHelp missingIconHelp(std::string_view appName, SystemVersion version) {
    const std::string name(appName);
    MissingIconHelp help{
        .title = kitText("%@ is running, but its icon is hidden", {name}),
        .paragraphs = {},
        .buttons = {},
    };
    help.buttons.push_back(MissingIconButton{.id = "missingIcon.quit",
                                             .title = kitText("Quit %@", {name}),
                                             .action = MissingIconAction::quit,
                                             .prominent = false});
    if (hasMenuBarAllowList(version)) {
        help.paragraphs.push_back(
            kitText("macOS shows an app's icon in the menu bar only if the app is allowed there. To bring %@ back, "
                    "turn it on in System Settings \u203A Menu Bar, under \u201CAllow in the Menu Bar\u201D.",
                    {name}));
        help.paragraphs.push_back(
            kitText("If it's already on, the menu bar may be too full to fit the icon. To make room, hold down "
                    "Command (\u2318) and drag icons you don't need out of the menu bar."));
        help.buttons.push_back(MissingIconButton{.id = "missingIcon.dismiss",
                                                 .title = kitText("OK"),
                                                 .action = MissingIconAction::dismiss,
                                                 .prominent = false});
        help.buttons.push_back(MissingIconButton{.id = "missingIcon.menuBarSettings",
                                                 .title = kitText("Open Menu Bar Settings"),
                                                 .action = MissingIconAction::openMenuBarSettings,
                                                 .prominent = true});
    } else {
        help.paragraphs.push_back(
            kitText("The menu bar may be too full to show it. This happens most often on a MacBook with a camera "
                    "notch, which leaves less room for icons."));
        help.paragraphs.push_back(
            kitText("To make room, hold down Command (\u2318) and drag icons you don't need out of the menu bar, or "
                    "quit apps whose icons you can do without. You can also remove system icons in System "
                    "Settings \u203A Control Center."));
        help.buttons.push_back(MissingIconButton{.id = "missingIcon.dismiss",
                                                 .title = kitText("OK"),
                                                 .action = MissingIconAction::dismiss,
                                                 .prominent = true});
    }
    return help;
}

View MissingIconView::body() const {
    std::vector<View> column;
    column.reserve(help.paragraphs.size() + 1);
    column.push_back(text(help.title, Font{15, FontWeight::semibold}));
    for (const LocalizedText& paragraph : help.paragraphs) {
        column.push_back(text(paragraph, Font{12}, Color::primary().withOpacity(0.85)));
    }

    std::vector<View> message;
    message.reserve(2);
    message.push_back(AppGlyph{glyphSize}.body());
    message.push_back(vStack(HorizontalAlignment::leading, 8, std::move(column)));

    const auto pill = [this](const MissingIconButton& button) {
        const std::function<void(MissingIconAction)>& act = perform;
        return PillButtonStyle{button.prominent}.body(
            button.id, button.title,
            [act, action = button.action] {
                if (act) act(action);
            },
            state.isPressed(button.id));
    };
    // In a row, Quit stands apart at the leading end. Where the row does not
    // fit (long titles in some languages), the buttons stack at the
    // trailing edge, the prominent one on top, as an alert's do.
    std::vector<View> row;
    row.reserve(help.buttons.size() + 1);
    for (const MissingIconButton& button : help.buttons) {
        row.push_back(pill(button));
        if (button.action == MissingIconAction::quit) row.push_back(spacer());
    }
    std::vector<View> stack;
    stack.reserve(help.buttons.size());
    for (auto button = help.buttons.rbegin(); button != help.buttons.rend(); ++button) stack.push_back(pill(*button));
    std::vector<View> arrangements;
    arrangements.reserve(2);
    arrangements.push_back(hStack(VerticalAlignment::center, 8, std::move(row)));
    arrangements.push_back(vStack(HorizontalAlignment::trailing, 8, std::move(stack))
                               .frame(View::FlexibleFrame{
                                   .maxWidth = infinity,
                                   .alignment = Alignment{HorizontalAlignment::trailing, VerticalAlignment::center}}));

    std::vector<View> rows;
    rows.reserve(2);
    rows.push_back(hStack(VerticalAlignment::top, 16, std::move(message)));
    rows.push_back(firstThatFits(std::move(arrangements)));
    return vStack(HorizontalAlignment::leading, 20, std::move(rows)).padding(padding).frame(width, std::nullopt);
}

MissingIconWindowContent::MissingIconWindowContent(MissingIconHelp help, AppBrand brand,
                                                   std::function<void(MissingIconAction)> perform)
    : help_(std::move(help)), brand_(std::move(brand)), perform_(std::move(perform)) {}

View MissingIconWindowContent::body() {
    return MissingIconView{.help = help_, .state = state_, .perform = perform_}.body().appBrand(brand_);
}

}  // namespace orvik
