#include "OrvikKitCore/UpdateReminder.h"

#include <cassert>
#include <cmath>

namespace orvik {

UpdateReminder::UpdateReminder(std::shared_ptr<PreferenceStore> store, std::string_view version, Date now)
    : store_(std::move(store)) {
    assert(store_ != nullptr);
    if (store_->read(versionPreference) == version) {
        if (const auto start = since(); start && *start <= now) {
            return;
        }
    }
    store_->write(versionPreference, std::optional<std::string>(version));
    restart(now);
}

std::optional<Date> UpdateReminder::since() const {
    const auto seconds = store_->read(sincePreference);
    if (!seconds || !std::isfinite(*seconds)) {
        return std::nullopt;
    }
    return dateFromSecondsSince1970(*seconds);
}

void UpdateReminder::restart(Date at) { store_->write(sincePreference, std::optional<double>(secondsSince1970(at))); }

bool UpdateReminder::isDue(Date at) const {
    const auto start = since();
    return start && at - *start >= interval;
}

std::string UpdateReminder::updatesPageAddress(std::string_view app, std::string_view version) {
    std::string address(updatesSite);
    address += "/updates/?app=";
    address += app;
    address += "&version=";
    address += version;
    return address;
}

}  // namespace orvik
