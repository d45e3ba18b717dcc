#include "OrvikKit/MenuChrome.h"

#include "OrvikKit/Snapshot.h"

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

OpenAtLoginRow::OpenAtLoginRow(std::shared_ptr<LoginItemService> loginItem)
    : loginItem_(std::move(loginItem)), snapshot_(Snapshot::isActive()), isOn_(false) {
    if (snapshot_) return;
    assert(loginItem_ != nullptr);
    isOn_ = loginItem_->isEnabled();
}

void OpenAtLoginRow::setOn(bool on) {
    if (snapshot_) return;
    isOn_ = loginItem_->setEnabled(on);
}

}  // namespace orvik
