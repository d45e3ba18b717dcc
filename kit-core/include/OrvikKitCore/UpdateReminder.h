// The quiet update reminder: thirty days after the user first ran a version
// (or last dealt with the reminder) it comes due. Tolvane never checks the
// network; the user opens the maker's updates page or dismisses the reminder,
// and either starts a new period.
//
// A plain value over a shared preference store; main thread only, like the
// store.
#pragma once

#include <chrono>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

#include "OrvikKitCore/Date.h"
#include "OrvikKitCore/Preferences.h"

namespace orvik {

class UpdateReminder {
public:
    // Thirty days of 86400 seconds; calendars and daylight saving play no part.
    static constexpr std::chrono::seconds interval{2592000};

    // The version the current period was started for.
    static constinit inline const Preference<std::optional<std::string>> versionPreference{"updateReminderVersion", std::nullopt};
    // The start of the current period, in seconds since 1970.
    static constinit inline const Preference<std::optional<double>> sincePreference{"updateReminderSince", std::nullopt};

    // The maker's web site, which serves the updates page.
    static constexpr std::string_view updatesSite = "https://orvik.app";

    // Opens the period for `version` as of `now`: a stored period for the same
    // version that started no later than now is kept; anything else (no
    // period, another version, no start, a start in the future as after the
    // clock was set back) starts a new one at now.
    UpdateReminder(std::shared_ptr<PreferenceStore> store, std::string_view version, Date now);

    // The start of the current period; nothing when none is stored or the
    // stored value is not a finite number.
    std::optional<Date> since() const;

    // Starts a new period at `at`; the version is left alone.
    void restart(Date at);

    // True once `interval` has passed since the period began.
    bool isDue(Date at) const;

    // The updates page for an app and version: the site's "/updates/" path
    // with "?app=" and "&version=" followed by the values as they stand.
    static std::string updatesPageAddress(std::string_view app, std::string_view version);

private:
    std::shared_ptr<PreferenceStore> store_;
};

}  // namespace orvik
