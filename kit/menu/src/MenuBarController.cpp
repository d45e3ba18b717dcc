#include "OrvikKit/MenuBarController.h"

#include <cassert>
#include <optional>
#include <utility>

#include "OrvikKit/SystemSettings.h"

namespace orvik {

namespace {

// Weak, so that releasing a controller still ends its redrawing; the
// application keeps its controller alive.
std::weak_ptr<MenuBarController>& sharedController() {
    static std::weak_ptr<MenuBarController> controller;
    return controller;
}

}  // namespace

std::shared_ptr<MenuBarController> MenuBarController::shared() { return sharedController().lock(); }

MenuBarController::MenuBarController(std::shared_ptr<StatusItem> statusItem, std::shared_ptr<MainThread> mainThread,
                                     std::string title, std::function<std::string()> symbol)
    : statusItem_(std::move(statusItem)),
      mainThread_(std::move(mainThread)),
      title_(std::move(title)),
      symbol_(std::move(symbol)) {}

std::shared_ptr<MenuBarController> MenuBarController::create(std::shared_ptr<StatusItem> statusItem,
                                                             std::shared_ptr<MainThread> mainThread,
                                                             std::string title, ChangeSignal& changes,
                                                             std::function<std::string()> symbol) {
    assert(statusItem != nullptr && mainThread != nullptr && symbol);
    assertOnMainThread(*mainThread);
    std::shared_ptr<MenuBarController> controller(
        new MenuBarController(std::move(statusItem), std::move(mainThread), std::move(title), std::move(symbol)));
    controller->statusItem_->configureButton(controller->title_, [weak = controller->weak_from_this()] {
        if (const auto alive = weak.lock()) alive->toggle();
    });
    controller->updateIcon();
    // The signal comes before the new value is stored: redraw in a later
    // task, when the symbol reads the new state.
    controller->changesSubscription_ =
        changes.subscribe([weak = controller->weak_from_this(), mainThread = controller->mainThread_.get()] {
            mainThread->post([weak] {
                if (const auto alive = weak.lock()) alive->updateIcon();
            });
        });
    sharedController() = controller;
    return controller;
}

void MenuBarController::showUpdateBadge(Published<bool>& updateReminderDue) {
    assertOnMainThread(*mainThread_);
    // Shared, not captured by value: the flag calls a copy of the handler.
    auto last = std::make_shared<std::optional<bool>>();
    badgeSubscription_ =
        updateReminderDue.subscribe([weak = weak_from_this(), mainThread = mainThread_.get(), last](const bool& due) {
            if (*last == due) return;
            *last = due;
            mainThread->post([weak, due] {
                if (const auto alive = weak.lock()) {
                    alive->showsBadge_ = due;
                    alive->updateIcon();
                }
            });
        });
}

void MenuBarController::toggle() {
    assertOnMainThread(*mainThread_);
    if (statusItem_->isPopoverShown()) {
        statusItem_->closePopover();
    } else {
        open();
    }
}

void MenuBarController::open() {
    assertOnMainThread(*mainThread_);
    if (!statusItem_->hasButton() || statusItem_->isPopoverShown()) return;
    statusItem_->activateApplication();
    statusItem_->showPopover();
    statusItem_->makePopoverKey();
}

void MenuBarController::close() {
    assertOnMainThread(*mainThread_);
    if (statusItem_->isPopoverShown()) statusItem_->closePopover();
}

void MenuBarController::showMissingIconHelpWith(MissingIconEnvironment environment) {
    assertOnMainThread(*mainThread_);
    assert(environment.window != nullptr && environment.urlOpener != nullptr && environment.quit);
    missingIcon_ = std::move(environment);
}

IconPlacement MenuBarController::reopen() {
    assertOnMainThread(*mainThread_);
    const IconPlacement placement = iconPlacement(statusItem_->placement());
    if (isShown(placement) || !missingIcon_) {
        if (missingIcon_ && missingIcon_->window->isShown()) missingIcon_->window->close();
        open();
        return placement;
    }
    auto content = std::make_shared<MissingIconWindowContent>(
        missingIconHelp(title_, missingIcon_->systemVersion), missingIcon_->brand,
        [weak = weak_from_this()](MissingIconAction action) {
            if (const auto alive = weak.lock()) alive->perform(action);
        });
    missingIcon_->window->show(std::move(content), title_);
    return placement;
}

void MenuBarController::perform(MissingIconAction action) {
    assertOnMainThread(*mainThread_);
    if (!missingIcon_) return;
    switch (action) {
    case MissingIconAction::openMenuBarSettings:
        SystemSettings::open(SystemSettings::Pane::menuBar, *missingIcon_->urlOpener);
        return;
    case MissingIconAction::quit: missingIcon_->quit(); return;
    case MissingIconAction::dismiss: missingIcon_->window->close(); return;
    }
}

void MenuBarController::updateIcon() {
    assertOnMainThread(*mainThread_);
    if (!statusItem_->hasButton()) return;
    // An unknown symbol is refused by the status item, which keeps the
    // image it has.
    statusItem_->setImage(StatusItemImage{
        .symbolName = symbol_(), .accessibilityDescription = title_, .isTemplate = true, .badged = showsBadge_});
}

}  // namespace orvik
