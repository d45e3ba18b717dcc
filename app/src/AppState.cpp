#include "Tolvane/AppState.h"

#include "OrvikKit/FatalError.h"

#include <limits>
#include <utility>

namespace tolvane {

std::shared_ptr<AppState> AppState::create(std::shared_ptr<orvik::PreferenceStore> preferences, bool preview,
                                           AppServices services) {
    std::shared_ptr<AppState> state(new AppState(std::move(preferences), preview, std::move(services)));
    if (!preview) {
        state->start();
    }
    return state;
}

AppState::AppState(std::shared_ptr<orvik::PreferenceStore> preferences, bool preview, AppServices services)
    : services_(std::move(services)), preferences_(std::move(preferences)), isPreview_(preview) {
    orvik::assertOnMainThread(*services_.mainThread);

    if (!isPreview_) {
        tapLogger_ = services_.appInfo->logger("tap");
    }
    music_ = std::make_unique<MusicController>(*services_.mainThread, services_.runningApplications,
                                               services_.scripting);
    tap_ = std::make_unique<MediaKeyTap>(*services_.mainThread, services_.eventTaps, tapLogger_);

    // The first reads neither write the settings back nor touch the tap.
    isEnabled_ = preferences_->read(enabledPreference);
    closedBehavior_ = preferences_->read(closedBehaviorPreference);

    if (isPreview_) {
        updateReminders_ = orvik::UpdateReminderCenter::preview(std::string(appIdentifier), false, services_.mainThread);
    } else {
        // Deliberately the standard user defaults, not the settings' store.
        updateReminders_ = orvik::UpdateReminderCenter::create(
            std::string(appIdentifier), services_.appInfo->version(), services_.standardDefaults, services_.now,
            services_.urlOpener, services_.mainThread);
    }
}

AppState::~AppState() { tap_->stop(); }

void AppState::start() {
    isMusicRunning_ = services_.runningApplications->isRunning(musicBundleIdentifier);

    const std::weak_ptr<AppState> weak = weak_from_this();
    tap_->onKey = [weak](MediaKey key) {
        const std::shared_ptr<AppState> state = weak.lock();
        return state != nullptr && state->handle(key);
    };
    music_->onAutomationPermission = [weak](bool granted) {
        if (const std::shared_ptr<AppState> state = weak.lock()) {
            state->publish(state->automationDenied_, !granted);
        }
    };

    observeMusic();
    observeWake();
    refreshTrack();
    hasAccessibility_ = services_.accessibility->requestIfNeeded();
    updateTap();
    permissionWatch_.emplace(*services_.mainThread, accessibilityPollInterval, [weak] {
        if (const std::shared_ptr<AppState> state = weak.lock()) {
            state->watchAccessibility();
        }
    });
}

void AppState::setEnabled(bool enabled) {
    orvik::assertOnMainThread(*services_.mainThread);
    publish(isEnabled_, enabled);
    preferences_->write(enabledPreference, enabled);
    updateTap();
}

void AppState::setClosedBehavior(ClosedBehavior behavior) {
    orvik::assertOnMainThread(*services_.mainThread);
    publish(closedBehavior_, behavior);
    preferences_->write(closedBehaviorPreference, behavior);
}

AppStatus AppState::status() const noexcept {
    return appStatusFor({
        .isEnabled = isEnabled_,
        .hasAccessibility = hasAccessibility_,
        .tapActive = tapActive_,
        .automationDenied = automationDenied_,
    });
}

std::string_view AppState::menuBarSymbol() const noexcept {
    return tolvane::menuBarSymbol(status(), track_ ? std::optional<bool>(track_->summary.isPlaying) : std::nullopt);
}

// --- Music ---------------------------------------------------------------------

void AppState::observeMusic() {
    const std::weak_ptr<AppState> weak = weak_from_this();
    const orvik::MainThread& mainThread = *services_.mainThread;
    observations_.push_back(std::make_unique<orvik::NotificationObservation>(
        mainThread, std::string(playerInfoNotification), services_.distributedNotifications,
        [weak](const orvik::Notification& notification) {
            if (const std::shared_ptr<AppState> state = weak.lock()) {
                state->playerInfoChanged(PlayerInfo::fromUserInfo(userInfoFrom(notification.userInfo)));
            }
        },
        orvik::Delivery::immediate));
    for (std::string_view name : {didLaunchApplicationNotification, didTerminateApplicationNotification}) {
        observations_.push_back(std::make_unique<orvik::NotificationObservation>(
            mainThread, std::string(name), services_.workspaceNotifications,
            [weak](const orvik::Notification& notification) {
                if (const std::shared_ptr<AppState> state = weak.lock()) {
                    state->applicationLaunchedOrTerminated(notification);
                }
            }));
    }
}

void AppState::observeWake() {
    const std::weak_ptr<AppState> weak = weak_from_this();
    observations_.push_back(std::make_unique<orvik::NotificationObservation>(
        *services_.mainThread, std::string(didWakeNotification), services_.workspaceNotifications,
        [weak](const orvik::Notification&) {
            if (const std::shared_ptr<AppState> state = weak.lock()) {
                // Taps are known to die silently around sleep; the poll would
                // notice within 2 seconds, the wake at once.
                state->tap_->reviveIfDisabled();
            }
        }));
}

void AppState::applicationLaunchedOrTerminated(const orvik::Notification& notification) {
    const auto application = notification.userInfo.find(orvik::Notification::applicationKey);
    if (application == notification.userInfo.end() || application->second.dictionary() == nullptr) {
        return;
    }
    const auto& details = *application->second.dictionary();
    const auto bundleIdentifier = details.find(orvik::Notification::bundleIdentifierKey);
    if (bundleIdentifier == details.end() || bundleIdentifier->second.string() == nullptr ||
        *bundleIdentifier->second.string() != musicBundleIdentifier) {
        return;
    }
    const bool launched = notification.name == didLaunchApplicationNotification;
    publish(isMusicRunning_, launched);
    if (!launched) {
        publish(track_, std::optional<Track>());
    }
}

void AppState::playerInfoChanged(const PlayerInfo& info) {
    const std::optional<TrackSummary> current =
        track_ ? std::optional<TrackSummary>(track_->summary) : std::nullopt;
    const NowPlayingChange change = NowPlayingChange::from(current, info);
    switch (change.kind()) {
    case NowPlayingChange::Kind::sameSong:
        // A play/pause toggle or a changed field of the same song keeps the
        // artwork it has.
        publish(track_, std::optional<Track>(Track{*change.summary(), track_ ? track_->artwork : std::nullopt}));
        break;
    case NowPlayingChange::Kind::newSong:
        // The title changes at once; the artwork follows with the fetch.
        publish(track_, std::optional<Track>(Track{*change.summary(), std::nullopt}));
        refreshTrack();
        break;
    case NowPlayingChange::Kind::cleared:
        publish(track_, std::optional<Track>());
        break;
    }
}

void AppState::refreshTrack() {
    orvik::assertOnMainThread(*services_.mainThread);
    if (isPreview_) {
        return;
    }
    publish(isMusicRunning_, services_.runningApplications->isRunning(musicBundleIdentifier));
    // Holds the state strongly until the answer is stored; never cancelled.
    music_->currentTrack([state = shared_from_this()](std::optional<Track> track) {
        state->publish(state->track_, std::move(track));
    });
}

// --- Keys ----------------------------------------------------------------------

bool AppState::handle(MediaKey key) {
    // Asked afresh: Music may have quit an instant ago, before its terminate
    // notification arrives.
    const bool musicIsRunning = services_.runningApplications->isRunning(musicBundleIdentifier);
    const KeyRoute route = KeyRouting::route(key, musicIsRunning, closedBehavior_);
    if (const std::optional<MusicCommand> command = route.command()) {
        music_->commands.yield(*command);
        if (keysForwarded_ == std::numeric_limits<std::int64_t>::max()) {
            orvik::fatalError("the count of keys sent overflowed");
        }
        publish(keysForwarded_, keysForwarded_ + 1);
    }
    return route.takesKey();
}

void AppState::perform(MusicCommand command) {
    orvik::assertOnMainThread(*services_.mainThread);
    if (command == MusicCommand::playPause && !isMusicRunning_) {
        command = MusicCommand::launchAndPlay;
    }
    music_->commands.yield(command);
}

void AppState::applyPreview(std::optional<Track> track, bool accessibility, std::int64_t keys) {
    orvik::assertOnMainThread(*services_.mainThread);
    const bool hasTrack = track.has_value();
    publish(track_, std::move(track));
    publish(hasAccessibility_, accessibility);
    publish(tapActive_, accessibility);
    publish(isMusicRunning_, hasTrack);
    publish(keysForwarded_, keys);
}

// --- Tap and permissions -----------------------------------------------------------

void AppState::updateTap() {
    if (isPreview_) {
        return;
    }
    if (isEnabled_ && hasAccessibility_) {
        if (!tap_->start()) {
            tapLogger_->error("could not create the event tap");
        }
    } else {
        tap_->stop();
    }
    publish(tapActive_, tap_->isRunning());
}

void AppState::watchAccessibility() {
    const bool trusted = services_.accessibility->isTrusted();
    if (PermissionCheck::needsTapUpdate({
            .trusted = trusted,
            .hadAccess = hasAccessibility_,
            .isEnabled = isEnabled_,
            .tapActive = tapActive_,
        })) {
        publish(hasAccessibility_, trusted);
        updateTap();
        return;
    }
    // The system can switch a tap off without telling (after sleep or a user
    // switch); switch it back on rather than leave the keys dead.
    tap_->reviveIfDisabled();
}

// --- Notification user info ------------------------------------------------------------

UserInfo userInfoFrom(const orvik::PropertyListValue::Dictionary& dictionary) {
    UserInfo userInfo;
    userInfo.reserve(dictionary.size());
    for (const auto& [key, value] : dictionary) {
        UserInfoValue converted = OtherUserInfoValue{};
        if (const auto* string = value.string()) {
            converted = *string;
        } else if (const auto* boolean = value.boolean()) {
            converted = *boolean;
        } else if (const auto* integer = value.integer()) {
            converted = *integer;
        } else if (const auto* real = value.real()) {
            converted = *real;
        }
        userInfo.push_back({key, std::move(converted)});
    }
    return userInfo;
}

}  // namespace tolvane
