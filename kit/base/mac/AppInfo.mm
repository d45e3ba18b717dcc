// AppInfoSource and Logger over the main bundle and the unified log.
#import <Foundation/Foundation.h>
#include <os/log.h>

#include <algorithm>
#include <climits>
#include <memory>
#include <string>
#include <utility>

#import "OrvikKitMac/Strings.h"
#include "OrvikKitMac/BaseAdapters.h"

namespace orvik::mac {

namespace {

class UnifiedLogger final : public Logger {
public:
    explicit UnifiedLogger(os_log_t log) : log_(log) {}

    void error(std::string_view message) noexcept override {
        // The message is formatted by the portable code (the Conventions'
        // texts); it is public, so the log shows it in full.
        const int length = static_cast<int>(std::min<std::size_t>(message.size(), INT_MAX));
        os_log_error(log_, "%{public}.*s", length, message.data());
    }

private:
    os_log_t log_;
};

class BundleAppInfo final : public AppInfoSource {
public:
    explicit BundleAppInfo(std::string appIdentifier) : appIdentifier_(std::move(appIdentifier)) {}

    std::string version() const override {
        id value = [NSBundle.mainBundle objectForInfoDictionaryKey:@"CFBundleShortVersionString"];
        std::optional<std::string> shortVersion;
        if ([value isKindOfClass:[NSString class]]) shortVersion = portableString(static_cast<NSString*>(value));
        return AppInfo::version(shortVersion);
    }

    std::shared_ptr<Logger> logger(std::string_view category) override {
        const std::string subsystem = AppInfo::subsystem(mainBundleIdentifier(), appIdentifier_);
        return std::make_shared<UnifiedLogger>(os_log_create(subsystem.c_str(), std::string(category).c_str()));
    }

private:
    std::string appIdentifier_;
};

}  // namespace

std::optional<std::string> mainBundleIdentifier() { return portableString(NSBundle.mainBundle.bundleIdentifier); }

std::shared_ptr<AppInfoSource> makeAppInfoSource(std::string appIdentifier) {
    return std::make_shared<BundleAppInfo>(std::move(appIdentifier));
}

}  // namespace orvik::mac
