// The system services a menu-bar utility needs, as small interfaces owned by
// the portable code, with the pure rules around them: the login item's
// status, the app's version and log subsystem, the running system's version
// and the memory footprint's readings. Their macOS implementations are the
// base room's adapters (OrvikKitMac/BaseAdapters.h); tests use fakes. Which
// pane of System Settings opens where is the services room's
// (OrvikKit/SystemSettings.h).
//
// Everything here is called on the main thread, except Logger, which any
// thread may use.
#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

namespace orvik {

// Error-level lines of the unified log, under one category. Logging never
// throws, so failure paths (the event tap's among them) may always log.
class Logger {
public:
    virtual ~Logger() = default;
    virtual void error(std::string_view message) noexcept = 0;
};

// The app's version and its loggers (the main bundle's short version string,
// or "dev" when it has none).
class AppInfoSource {
public:
    virtual ~AppInfoSource() = default;
    virtual std::string version() const = 0;
    virtual std::shared_ptr<Logger> logger(std::string_view category) = 0;
};

// The accessibility trust that an event tap needs.
class AccessibilityTrust {
public:
    virtual ~AccessibilityTrust() = default;
    // Asked afresh, never prompts.
    virtual bool isTrusted() = 0;
    // The same question, with the system's prompt offered when not trusted.
    // The prompt is asynchronous: the answer is the trust right now.
    virtual bool requestIfNeeded() = 0;
};

// Opening the app at login.
class LoginItemService {
public:
    virtual ~LoginItemService() = default;
    // True exactly when the app is registered and enabled (not when it
    // still needs the user's approval).
    virtual bool isEnabled() = 0;
    // Registers or unregisters, logs a failure, and answers the state read
    // afterwards.
    virtual bool setEnabled(bool enabled) = 0;
};

// What became of a request to open a URL.
enum class URLOpenResult : std::uint8_t {
    opened,     // the workspace reported success
    notOpened,  // a URL, which the workspace did not open
    notAURL,    // the string does not parse as a URL; nothing was asked of the workspace
};

// Opening a URL through the workspace.
class URLOpener {
public:
    virtual ~URLOpener() = default;
    virtual URLOpenResult open(std::string_view url) = 0;
};

// Which applications run, by bundle identifier.
class RunningApplications {
public:
    virtual ~RunningApplications() = default;
    // Asked of the system at the moment of the call. Main thread only.
    virtual bool isRunning(std::string_view bundleIdentifier) const = 0;
};

// The running system's version, as the platform reports it.
struct SystemVersion {
    std::int64_t major = 0;
    std::int64_t minor = 0;
    std::int64_t patch = 0;

    // macOS 26 reports itself as 16 to apps built with an SDK older than its
    // own; that number stands for 26.
    static constexpr std::int64_t compatibilityMajorOf26 = 16;
    constexpr std::int64_t releaseMajor() const noexcept { return major == compatibilityMajorOf26 ? 26 : major; }

    friend constexpr bool operator==(const SystemVersion&, const SystemVersion&) = default;
};

namespace LoginItem {

// The main-app login-item service's status values.
enum class Status : std::int64_t { notRegistered = 0, enabled = 1, requiresApproval = 2, notFound = 3 };

// Only an enabled item opens at login: one that still needs the user's
// approval, is not registered or is not found does not.
constexpr bool countsAsEnabled(Status status) noexcept { return status == Status::enabled; }

// The log line of a failed registration or unregistration, for the
// "login-item" category.
std::string failureMessage(std::string_view errorDescription);

}  // namespace LoginItem

namespace AppInfo {

// Shown wherever the version appears when the bundle has no short version.
inline constexpr std::string_view developmentVersion = "dev";

// The app's version from the bundle's short version string, when it has one
// that is a string.
std::string version(const std::optional<std::string>& shortVersionString);

// The unified-log subsystem: the main bundle's identifier, or the app's own
// identifier (the one its bundle is built with) when the process's main
// bundle has none, or an empty one (a test runner, a bare executable).
std::string subsystem(const std::optional<std::string>& bundleIdentifier, std::string_view appIdentifier);

// The label of the serial queue that runs the app's AppleScript: the
// subsystem followed by ".applescript".
std::string scriptingQueueLabel(const std::optional<std::string>& bundleIdentifier, std::string_view appIdentifier);

}  // namespace AppInfo

namespace MemoryFootprint {

struct Reading {
    std::uint64_t current = 0;  // physical footprint now, in bytes
    std::uint64_t peak = 0;     // highest physical footprint of the process's life, in bytes

    double currentMB() const noexcept { return static_cast<double>(current) / 1048576.0; }
    double peakMB() const noexcept { return static_cast<double>(peak) / 1048576.0; }

    friend bool operator==(const Reading&, const Reading&) = default;
};

}  // namespace MemoryFootprint

}  // namespace orvik
