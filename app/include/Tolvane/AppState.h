// The app's one state object: it owns the event tap and the Music controller,
// holds the user's two settings (written through to the preference store on
// every assignment), follows whether Music runs and what it plays, decides
// every intercepted media key, keeps the tap in step with the switch and the
// Accessibility permission, and derives the status the menu shows.
//
// Observers subscribe to `objectWillChange`, which is sent immediately before
// a published field is stored; they re-read the fields and the derived values
// (`status`, `menuBarSymbol`) in a later main-thread task.
//
// Thread rules: main thread only, construction included. Callbacks it hands
// out (the tap's key handler, the Automation callback, notification handlers,
// the poll) hold it weakly and do nothing once it is gone.
#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string_view>
#include <vector>

#include "OrvikKit/MainThread.h"
#include "OrvikKit/Notifications.h"
#include "OrvikKit/RepeatingTask.h"
#include "OrvikKit/Signal.h"
#include "OrvikKit/SystemServices.h"
#include "OrvikKit/UpdateReminderCenter.h"
#include "OrvikKitCore/Date.h"
#include "OrvikKitCore/Preferences.h"
#include "Tolvane/MediaKeyTap.h"
#include "Tolvane/MusicController.h"
#include "Tolvane/MusicScripting.h"
#include "Tolvane/Track.h"
#include "TolvaneCore/AppStatus.h"
#include "TolvaneCore/KeyRouting.h"
#include "TolvaneCore/NowPlaying.h"

namespace tolvane {

// Everything the app state reaches the platform through. On macOS these are
// the adapters over AppKit, Foundation, CoreGraphics and friends; in tests,
// fakes. A preview state keeps them but calls none.
struct AppServices {
    std::shared_ptr<orvik::MainThread> mainThread;
    std::shared_ptr<const orvik::RunningApplications> runningApplications;
    std::shared_ptr<orvik::NotificationCenter> distributedNotifications;
    std::shared_ptr<orvik::NotificationCenter> workspaceNotifications;
    std::shared_ptr<orvik::AccessibilityTrust> accessibility;
    std::shared_ptr<EventTapSystem> eventTaps;
    std::shared_ptr<MusicScripting> scripting;
    std::shared_ptr<orvik::AppInfoSource> appInfo;
    std::shared_ptr<orvik::URLOpener> urlOpener;
    // The standard user defaults: the update reminder keeps its period there
    // whatever store the settings use.
    std::shared_ptr<orvik::PreferenceStore> standardDefaults;
    std::function<orvik::Date()> now;
};

class AppState : public std::enable_shared_from_this<AppState> {
public:
    static constinit inline const orvik::Preference<bool> enabledPreference{"enabled", true};
    static constinit inline const orvik::Preference<ClosedBehavior> closedBehaviorPreference{"closedBehavior",
                                                                                   ClosedBehavior::launchMusic};

    static constexpr std::string_view musicBundleIdentifier = "com.apple.Music";
    static constexpr std::string_view playerInfoNotification = "com.apple.Music.playerInfo";
    static constexpr std::string_view didLaunchApplicationNotification = "NSWorkspaceDidLaunchApplicationNotification";
    static constexpr std::string_view didTerminateApplicationNotification =
        "NSWorkspaceDidTerminateApplicationNotification";
    static constexpr std::string_view didWakeNotification = "NSWorkspaceDidWakeNotification";
    static constexpr std::string_view appIdentifier = "tolvane";
    static constexpr orvik::Duration accessibilityPollInterval{2.0};

    // Builds the state over `preferences`. A preview reads the settings and
    // stops there: it observes nothing, starts no tap, asks for no permission
    // and runs no timer. Otherwise it observes Music and the Mac's wake,
    // fetches the track, asks for Accessibility (the system prompt may
    // appear), starts the tap when enabled and trusted, and polls
    // Accessibility every 2 seconds (each tick also revives a tap the system
    // switched off without telling).
    static std::shared_ptr<AppState> create(std::shared_ptr<orvik::PreferenceStore> preferences, bool preview,
                                            AppServices services);

    // Stops the tap, whose callback holds an unretained pointer into this
    // object.
    ~AppState();

    AppState(const AppState&) = delete;
    AppState& operator=(const AppState&) = delete;

    // --- Published fields -------------------------------------------------
    orvik::ChangeSignal objectWillChange;

    bool isEnabled() const noexcept { return isEnabled_; }
    // Stores, writes "enabled" through (every time, also for an unchanged
    // value) and starts or stops the tap.
    void setEnabled(bool enabled);

    ClosedBehavior closedBehavior() const noexcept { return closedBehavior_; }
    // Stores and writes "closedBehavior" through; the tap is not touched.
    void setClosedBehavior(ClosedBehavior behavior);

    bool hasAccessibility() const noexcept { return hasAccessibility_; }
    bool tapActive() const noexcept { return tapActive_; }
    bool automationDenied() const noexcept { return automationDenied_; }
    bool isMusicRunning() const noexcept { return isMusicRunning_; }
    const std::optional<Track>& track() const noexcept { return track_; }
    std::int64_t keysForwarded() const noexcept { return keysForwarded_; }

    // --- Derived values ---------------------------------------------------
    AppStatus status() const noexcept;
    std::string_view menuBarSymbol() const noexcept;

    // --- Owned parts --------------------------------------------------------
    MusicController& music() noexcept { return *music_; }
    MediaKeyTap& tap() noexcept { return *tap_; }
    const std::shared_ptr<orvik::UpdateReminderCenter>& updateReminders() const noexcept { return updateReminders_; }
    bool isPreview() const noexcept { return isPreview_; }

    // --- Operations -----------------------------------------------------------
    // Re-reads whether Music runs and fetches the current track with its
    // artwork. Does nothing on a preview.
    void refreshTrack();
    // A transport button's command: play/pause becomes launchAndPlay while
    // Music is (as last known) not running. Not counted as a key.
    void perform(MusicCommand command);
    // Fills a preview with sample data.
    void applyPreview(std::optional<Track> track, bool accessibility, std::int64_t keys);

private:
    AppState(std::shared_ptr<orvik::PreferenceStore> preferences, bool preview, AppServices services);

    void start();
    bool handle(MediaKey key);
    // Music's player notification is delivered at once, even while the app
    // is not active (which an agent almost never is): held back, the menu-bar
    // symbol would lag until the user next opened the menu. The workspace's
    // launch and terminate notifications are never held.
    void observeMusic();
    // Revives a tap the system switched off during sleep as soon as the Mac
    // wakes (the 2-second poll would otherwise find it a little later).
    void observeWake();
    void playerInfoChanged(const PlayerInfo& info);
    void applicationLaunchedOrTerminated(const orvik::Notification& notification);
    void updateTap();
    void watchAccessibility();

    // Stores a published field, telling the observers first.
    template <class Value>
    void publish(Value& field, Value value) {
        objectWillChange.send();
        field = std::move(value);
    }

    AppServices services_;
    std::shared_ptr<orvik::PreferenceStore> preferences_;
    bool isPreview_;

    bool isEnabled_ = true;
    ClosedBehavior closedBehavior_ = ClosedBehavior::launchMusic;
    bool hasAccessibility_ = false;
    bool tapActive_ = false;
    bool automationDenied_ = false;
    bool isMusicRunning_ = false;
    std::optional<Track> track_;
    std::int64_t keysForwarded_ = 0;

    std::unique_ptr<MusicController> music_;
    std::shared_ptr<orvik::UpdateReminderCenter> updateReminders_;
    std::unique_ptr<MediaKeyTap> tap_;
    std::shared_ptr<orvik::Logger> tapLogger_;
    std::vector<std::unique_ptr<orvik::NotificationObservation>> observations_;
    std::optional<orvik::RepeatingTask> permissionWatch_;
};

// Converts a notification's user info into the form the now-playing parser
// reads: string keys, and string, boolean, integer and double values (other
// values are present but unreadable).
UserInfo userInfoFrom(const orvik::PropertyListValue::Dictionary& dictionary);

}  // namespace tolvane
