#include "OrvikKit/SystemServices.h"

namespace orvik::LoginItem {

std::string failureMessage(std::string_view errorDescription) {
    return "login item change failed: " + std::string(errorDescription);
}

}  // namespace orvik::LoginItem

namespace orvik::AppInfo {

std::string version(const std::optional<std::string>& shortVersionString) {
    return shortVersionString ? *shortVersionString : std::string(developmentVersion);
}

std::string subsystem(const std::optional<std::string>& bundleIdentifier, std::string_view appIdentifier) {
    return bundleIdentifier && !bundleIdentifier->empty() ? *bundleIdentifier : std::string(appIdentifier);
}

std::string scriptingQueueLabel(const std::optional<std::string>& bundleIdentifier, std::string_view appIdentifier) {
    return subsystem(bundleIdentifier, appIdentifier) + ".applescript";
}

}  // namespace orvik::AppInfo
