// The observable owner of the update reminder's due flag.
//
// The real centre keeps an `UpdateReminder` over the app's preference store,
// computes the flag at creation, refreshes it every hour, and performs the
// two user actions: checking for updates (opening the maker's updates page)
// and dismissing the reminder. Both restart the thirty-day period, due or
// not, and set the flag to false. A preview centre has neither reminder nor
// refresher: its flag stays as given until an action sets it to false, and
// its actions do no system work.
//
// Ownership: centres are made by `create` or `preview` and held by
// std::shared_ptr. The hourly refresher holds its centre weakly and is owned
// by it, so releasing the last reference ends the refreshing.
//
// Main thread only: creation, the refresher's runs, `refresh` and both
// actions, each of which asserts it.
#pragma once

#include <chrono>
#include <functional>
#include <memory>
#include <optional>
#include <string>

#include "OrvikKit/MainThread.h"
#include "OrvikKit/RepeatingTask.h"
#include "OrvikKit/Signal.h"
#include "OrvikKit/SystemServices.h"
#include "OrvikKitCore/Date.h"
#include "OrvikKitCore/Preferences.h"
#include "OrvikKitCore/UpdateReminder.h"

namespace orvik {

class UpdateReminderCenter : public std::enable_shared_from_this<UpdateReminderCenter> {
public:
    using Clock = std::function<Date()>;

    // How often the running app looks at the reminder again: the flag turns
    // true at most this long (of time the Mac is awake) after the period has
    // run out.
    static constexpr std::chrono::seconds refreshInterval{3600};

    // The system clock as a Date: the clock the app's centre runs on.
    static Date systemNow();

    // The real centre for `app` (the identifier sent to the updates page)
    // at `version`: opens or keeps the reminder's period in `preferences` as
    // of `now()`, sets the flag to whether it is due, and starts the hourly
    // refresher on `mainThread`. `urlOpener` opens the updates page.
    static std::shared_ptr<UpdateReminderCenter> create(std::string app, std::string version,
                                                        std::shared_ptr<PreferenceStore> preferences, Clock now,
                                                        std::shared_ptr<URLOpener> urlOpener,
                                                        std::shared_ptr<MainThread> mainThread);

    // A centre with no reminder and no refresher whose flag starts at
    // `updateReminderDue`; for previews and snapshots. Given a main thread,
    // its operations assert that they run there, as the real centre's do.
    static std::shared_ptr<UpdateReminderCenter> preview(std::string app, bool updateReminderDue = false,
                                                         std::shared_ptr<MainThread> mainThread = nullptr);

    UpdateReminderCenter(const UpdateReminderCenter&) = delete;
    UpdateReminderCenter& operator=(const UpdateReminderCenter&) = delete;
    ~UpdateReminderCenter();

    // Whether the reminder is due. Observers are told of every assignment;
    // the refresher assigns only changes, the actions always assign false.
    // Written by the centre only.
    Published<bool> updateReminderDue{false};

    const std::string& app() const noexcept { return app_; }
    // The version the real centre was created for; empty for a preview.
    const std::string& version() const noexcept { return version_; }
    // Whether this is a real centre (with a reminder and its refresher).
    bool hasReminder() const noexcept { return real_.has_value(); }

    // Recomputes the flag (false without a reminder) and publishes it only
    // when it differs from the current one.
    void refresh();

    // The "Check for Updates" action: opens the updates page for the app and
    // version (a failure to open is ignored; an address that does not parse
    // as a URL is a programming fault that stops the process), restarts the
    // period at now and
    // sets the flag to false. A preview only sets the flag.
    void checkForUpdates();

    // The "Not Now" action: restarts the period at now and sets the flag to
    // false. A preview only sets the flag.
    void dismissUpdateReminder();

private:
    // What only the real centre has.
    struct Real {
        UpdateReminder reminder;
        std::shared_ptr<URLOpener> urlOpener;
        Clock now;
    };

    UpdateReminderCenter(std::string app, std::string version, std::optional<Real> real, bool due);
    void assertOnMainThreadWhenKnown() const;

    std::string app_;
    std::string version_;
    std::optional<Real> real_;
    std::shared_ptr<MainThread> mainThread_;  // kept alive for the refresher; null only for a bare preview
    // Declared last so that it is released first.
    std::unique_ptr<RepeatingTask> refresher_;
};

}  // namespace orvik
