// The app's status as the user sees it (header line and status-item symbol),
// and the rule that tells the Accessibility poll when the tap needs another
// look.
//
// Pure functions. The texts are localisation keys of the app's main table.
#pragma once

#include <concepts>
#include <cstdint>
#include <optional>
#include <string_view>

namespace tolvane {

// A Boolean fact that every call must state. It has no default, so a fact
// left out of a designated initialiser does not compile, and only a real
// bool converts to it (no pointers, integers or enumerations).
class Fact {
public:
    constexpr Fact(bool value) noexcept : value_(value) {}  // NOLINT(google-explicit-constructor): reads as a bool
    template <class Other>
        requires(!std::same_as<Other, bool>)
    Fact(Other) = delete;

    constexpr operator bool() const noexcept { return value_; }  // NOLINT(google-explicit-constructor)

private:
    bool value_;
};

// Ordered by precedence: the first that applies is the status.
enum class AppStatus : std::uint8_t { paused, waitingForPermission, couldNotActivate, automationDenied, active };

// What the status is derived from; designated initialisers name each fact,
// and every fact must be given.
struct AppStatusFacts {
    Fact isEnabled;
    Fact hasAccessibility;
    Fact tapActive;
    Fact automationDenied;
};

constexpr AppStatus appStatusFor(const AppStatusFacts& facts) noexcept {
    if (!facts.isEnabled) return AppStatus::paused;
    if (!facts.hasAccessibility) return AppStatus::waitingForPermission;
    if (!facts.tapActive) return AppStatus::couldNotActivate;
    if (facts.automationDenied) return AppStatus::automationDenied;
    return AppStatus::active;
}

// The system's named colours the header line is drawn in.
enum class StatusColor : std::uint8_t { systemGray, systemOrange, systemGreen };

constexpr std::string_view headerText(AppStatus status) noexcept {
    switch (status) {
    case AppStatus::paused: return "Paused \u00B7 keys follow the macOS default";
    case AppStatus::waitingForPermission: return "Waiting for permission";
    case AppStatus::couldNotActivate: return "Could not activate";
    case AppStatus::automationDenied: return "Not allowed to control Music";
    case AppStatus::active: return "Active \u00B7 \u23EE \u23EF \u23ED \u2192 Music only";
    }
    return "";  // unreachable
}

constexpr StatusColor headerColor(AppStatus status) noexcept {
    switch (status) {
    case AppStatus::paused: return StatusColor::systemGray;
    case AppStatus::waitingForPermission:
    case AppStatus::couldNotActivate:
    case AppStatus::automationDenied: return StatusColor::systemOrange;
    case AppStatus::active: return StatusColor::systemGreen;
    }
    return StatusColor::systemGray;  // unreachable
}

// The status item's symbol (an SF Symbols name). `isPlaying` is nothing when
// there is no track. While active it shows the player's present state, not
// the action a press would take.
constexpr std::string_view menuBarSymbol(AppStatus status, std::optional<bool> isPlaying) noexcept {
    switch (status) {
    case AppStatus::paused: return "play.slash.fill";
    case AppStatus::waitingForPermission:
    case AppStatus::couldNotActivate:
    case AppStatus::automationDenied: return "exclamationmark.triangle.fill";
    case AppStatus::active:
        if (!isPlaying) return "playpause.fill";
        return *isPlaying ? "play.fill" : "pause.fill";
    }
    return "playpause.fill";  // unreachable
}

namespace PermissionCheck {

// Every fact must be given.
struct TapFacts {
    Fact trusted;    // the system's Accessibility answer just now
    Fact hadAccess;  // the answer the app last acted on
    Fact isEnabled;
    Fact tapActive;
};

// True when Accessibility was granted or withdrawn since the last look, or
// when the tap should run but does not (so its creation is tried again).
constexpr bool needsTapUpdate(const TapFacts& facts) noexcept {
    if (bool(facts.trusted) != bool(facts.hadAccess)) return true;
    return facts.trusted && facts.isEnabled && !facts.tapActive;
}

}  // namespace PermissionCheck

}  // namespace tolvane
