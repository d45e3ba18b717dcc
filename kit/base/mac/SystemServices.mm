// The system-service ports: accessibility trust, the login item, opening
// URLs, running applications, and the memory footprint.
#import <AppKit/AppKit.h>
#include <ApplicationServices/ApplicationServices.h>
#import <ServiceManagement/SMAppService.h>
#include <libproc.h>
#include <unistd.h>

#include <cstdint>
#include <memory>
#include <string>
#include <utility>

#import "OrvikKitMac/Strings.h"
#include "OrvikKitMac/BaseAdapters.h"

namespace orvik::mac {

// LoginItem::Status carries the service's status values.
static_assert(static_cast<std::int64_t>(SMAppServiceStatusNotRegistered) ==
              static_cast<std::int64_t>(LoginItem::Status::notRegistered));
static_assert(static_cast<std::int64_t>(SMAppServiceStatusEnabled) == static_cast<std::int64_t>(LoginItem::Status::enabled));
static_assert(static_cast<std::int64_t>(SMAppServiceStatusRequiresApproval) ==
              static_cast<std::int64_t>(LoginItem::Status::requiresApproval));
static_assert(static_cast<std::int64_t>(SMAppServiceStatusNotFound) ==
              static_cast<std::int64_t>(LoginItem::Status::notFound));

namespace {

class AXAccessibilityTrust final : public AccessibilityTrust {
public:
    bool isTrusted() override { return AXIsProcessTrusted(); }

    bool requestIfNeeded() override {
        NSDictionary* options = @{(__bridge NSString*)kAXTrustedCheckOptionPrompt : @YES};
        return AXIsProcessTrustedWithOptions((__bridge CFDictionaryRef)options);
    }
};

class MainAppLoginItem final : public LoginItemService {
public:
    explicit MainAppLoginItem(std::shared_ptr<Logger> logger) : logger_(std::move(logger)) {}

    bool isEnabled() override {
        return LoginItem::countsAsEnabled(static_cast<LoginItem::Status>(SMAppService.mainAppService.status));
    }

    bool setEnabled(bool enabled) override {
        SMAppService* service = SMAppService.mainAppService;
        NSError* error = nil;
        const BOOL changed = enabled ? [service registerAndReturnError:&error] : [service unregisterAndReturnError:&error];
        if (!changed && logger_) {
            logger_->error(LoginItem::failureMessage(portableString(error.localizedDescription).value_or(std::string())));
        }
        return isEnabled();
    }

private:
    std::shared_ptr<Logger> logger_;
};

class WorkspaceURLOpener final : public URLOpener {
public:
    URLOpenResult open(std::string_view url) override {
        NSString* string = platformString(url);
        NSURL* parsed = string == nil ? nil : [NSURL URLWithString:string];
        if (parsed == nil) return URLOpenResult::notAURL;
        return [NSWorkspace.sharedWorkspace openURL:parsed] ? URLOpenResult::opened : URLOpenResult::notOpened;
    }
};

class WorkspaceRunningApplications final : public RunningApplications {
public:
    bool isRunning(std::string_view bundleIdentifier) const override {
        NSString* identifier = platformString(bundleIdentifier);
        if (identifier == nil) return false;
        return [NSRunningApplication runningApplicationsWithBundleIdentifier:identifier].count > 0;
    }
};

}  // namespace

std::shared_ptr<AccessibilityTrust> makeAccessibilityTrust() { return std::make_shared<AXAccessibilityTrust>(); }

std::shared_ptr<LoginItemService> makeLoginItemService(std::shared_ptr<Logger> logger) {
    return std::make_shared<MainAppLoginItem>(std::move(logger));
}

std::shared_ptr<URLOpener> makeURLOpener() { return std::make_shared<WorkspaceURLOpener>(); }

std::shared_ptr<RunningApplications> makeRunningApplications() {
    return std::make_shared<WorkspaceRunningApplications>();
}

}  // namespace orvik::mac

namespace orvik::MemoryFootprint {

Reading read() {
    struct rusage_info_v4 info {};
    if (proc_pid_rusage(getpid(), RUSAGE_INFO_V4, reinterpret_cast<rusage_info_t*>(&info)) != 0) return Reading{};
    return Reading{.current = info.ri_phys_footprint, .peak = info.ri_lifetime_max_phys_footprint};
}

}  // namespace orvik::MemoryFootprint
