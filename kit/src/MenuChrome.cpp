#include "OrvikKit/MenuChrome.h"

#include <cassert>
#include <utility>

namespace orvik {

MenuFooter::Lines MenuFooter::lines() const {
    Lines lines;
    if (caption) {
        lines.caption = *caption;
    } else if (!checkForUpdates) {
        lines.caption = versionText(version);
    }
    if (checkForUpdates) {
        lines.rows.push_back(FooterRow{.title = kitText("Check for Updates"),
                                       .detail = versionText(version),
                                       .shortcut = std::nullopt,
                                       .action = checkForUpdates});
    }
    lines.rows.push_back(
        FooterRow{.title = kitText("Quit"), .detail = kitText("\u2318Q"), .shortcut = 'q', .action = quit});
    return lines;
}

UpdateReminderCard UpdateReminderCard::from(std::shared_ptr<UpdateReminderCenter> center) {
    assert(center != nullptr);
    UpdateReminderCard card;
    card.check = PillButton{
        .title = kitText("Check"), .prominent = true, .action = [center] { center->checkForUpdates(); }};
    card.notNow = PillButton{
        .title = kitText("Not Now"), .prominent = false, .action = [center] { center->dismissUpdateReminder(); }};
    return card;
}

OpenAtLoginRow::OpenAtLoginRow(std::shared_ptr<LoginItemService> loginItem, bool isOn)
    : loginItem_(std::move(loginItem)), isOn_(isOn) {}

OpenAtLoginRow::OpenAtLoginRow(std::shared_ptr<LoginItemService> loginItem)
    : OpenAtLoginRow(loginItem, loginItem->isEnabled()) {}

OpenAtLoginRow OpenAtLoginRow::snapshot() { return OpenAtLoginRow(nullptr, false); }

void OpenAtLoginRow::setOn(bool on) {
    if (!loginItem_) return;
    isOn_ = loginItem_->setEnabled(on);
}

}  // namespace orvik
