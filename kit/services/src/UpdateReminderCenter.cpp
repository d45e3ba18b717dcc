#include "OrvikKit/UpdateReminderCenter.h"

#include "OrvikKit/FatalError.h"

#include <cassert>
#include <utility>

namespace orvik {

Date UpdateReminderCenter::systemNow() { return Date(std::chrono::system_clock::now()); }

UpdateReminderCenter::UpdateReminderCenter(std::string app, std::string version, std::optional<Real> real, bool due)
    : updateReminderDue(due), app_(std::move(app)), version_(std::move(version)), real_(std::move(real)) {}

UpdateReminderCenter::~UpdateReminderCenter() = default;

std::shared_ptr<UpdateReminderCenter> UpdateReminderCenter::create(std::string app, std::string version,
                                                                   std::shared_ptr<PreferenceStore> preferences,
                                                                   Clock now, std::shared_ptr<URLOpener> urlOpener,
                                                                   std::shared_ptr<MainThread> mainThread) {
    assert(preferences != nullptr && urlOpener != nullptr && mainThread != nullptr && now);
    assertOnMainThread(*mainThread);

    UpdateReminder reminder(std::move(preferences), version, now());
    const bool due = reminder.isDue(now());
    std::shared_ptr<UpdateReminderCenter> center(new UpdateReminderCenter(
        std::move(app), std::move(version),
        Real{.reminder = std::move(reminder), .urlOpener = std::move(urlOpener), .now = std::move(now)}, due));

    // The first refresh comes one interval from now; the flag was computed
    // just above.
    center->mainThread_ = std::move(mainThread);
    center->refresher_ = std::make_unique<RepeatingTask>(
        *center->mainThread_, Duration(refreshInterval), [weak = center->weak_from_this()] {
            if (const auto alive = weak.lock()) alive->refresh();
        });
    return center;
}

std::shared_ptr<UpdateReminderCenter> UpdateReminderCenter::preview(std::string app, bool updateReminderDue,
                                                                    std::shared_ptr<MainThread> mainThread) {
    if (mainThread) assertOnMainThread(*mainThread);
    std::shared_ptr<UpdateReminderCenter> center(
        new UpdateReminderCenter(std::move(app), std::string(), std::nullopt, updateReminderDue));
    center->mainThread_ = std::move(mainThread);
    return center;
}

void UpdateReminderCenter::assertOnMainThreadWhenKnown() const {
    if (mainThread_) assertOnMainThread(*mainThread_);
}

void UpdateReminderCenter::refresh() {
    assertOnMainThreadWhenKnown();
    const bool due = real_ && real_->reminder.isDue(real_->now());
    if (due != updateReminderDue.get()) updateReminderDue.set(due);
}

void UpdateReminderCenter::checkForUpdates() {
    assertOnMainThreadWhenKnown();
    if (real_) {
        // Whether the page opened makes no difference: the user has dealt
        // with the reminder either way. An address that is not a URL is the
        // program's own fault, not the user's.
        if (real_->urlOpener->open(UpdateReminder::updatesPageAddress(app_, version_)) == URLOpenResult::notAURL) {
            fatalError("the updates-page address does not parse as a URL");
        }
        real_->reminder.restart(real_->now());
    }
    updateReminderDue.set(false);
}

void UpdateReminderCenter::dismissUpdateReminder() {
    assertOnMainThreadWhenKnown();
    if (real_) real_->reminder.restart(real_->now());
    updateReminderDue.set(false);
}

}  // namespace orvik
