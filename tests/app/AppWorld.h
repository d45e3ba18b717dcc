// A whole app on fakes: the virtual-clock main thread, a manual scripting
// queue, a scripted Music, the event-tap system, the notification centres,
// Accessibility, the preference stores and the clock. Tests launch the app
// state on it and drive it as the system would: raw media-key events into the
// tap, Music's player notification, workspace launch and terminate
// notifications, the passing of time.
#pragma once

#include <chrono>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "OrvikKitCore/Preferences.h"
#include "TestSupport/FakeEventTapSystem.h"
#include "TestSupport/FakeNotificationCenter.h"
#include "TestSupport/FakeRunningApplications.h"
#include "TestSupport/FakeScriptEngine.h"
#include "TestSupport/FakeSystemServices.h"
#include "TestSupport/FakeThumbnailer.h"
#include "TestSupport/ManualMainThread.h"
#include "TestSupport/ManualSerialQueue.h"
#include "TestSupport/MusicSources.h"
#include "TestSupport/RecordingLogger.h"
#include "Tolvane/AppState.h"
#include "Tolvane/MusicScripting.h"

namespace testsupport {

inline std::string commandSource(tolvane::MusicCommand command) { return sources::command(command); }
inline const std::string& trackQuerySource() { return sources::trackQuery; }
inline const std::string& artworkQuerySource() { return sources::artworkQuery; }

struct AppWorld {
    std::shared_ptr<ManualMainThread> mainThread = std::make_shared<ManualMainThread>();
    std::shared_ptr<ManualSerialQueue> scriptQueue = std::make_shared<ManualSerialQueue>();
    // The queue the scripts run on: the manual one above unless a test puts
    // a real worker thread here before launching.
    std::shared_ptr<orvik::SerialQueue> scriptingQueue = scriptQueue;
    std::shared_ptr<FakeScriptEngine> music = std::make_shared<FakeScriptEngine>();
    std::shared_ptr<FakeThumbnailer> thumbnailer = std::make_shared<FakeThumbnailer>();
    std::shared_ptr<RecordingLogger> scriptLogger = std::make_shared<RecordingLogger>();
    std::shared_ptr<FakeRunningApplications> running = std::make_shared<FakeRunningApplications>();
    std::shared_ptr<FakeNotificationCenter> distributed = std::make_shared<FakeNotificationCenter>();
    std::shared_ptr<FakeNotificationCenter> workspace = std::make_shared<FakeNotificationCenter>();
    std::shared_ptr<FakeAccessibilityTrust> accessibility = std::make_shared<FakeAccessibilityTrust>(true);
    std::shared_ptr<FakeEventTapSystem> taps = std::make_shared<FakeEventTapSystem>();
    std::shared_ptr<FakeAppInfoSource> appInfo = std::make_shared<FakeAppInfoSource>("1.2");
    std::shared_ptr<FakeURLOpener> urlOpener = std::make_shared<FakeURLOpener>();
    std::shared_ptr<orvik::InMemoryPreferenceStore> settings = std::make_shared<orvik::InMemoryPreferenceStore>();
    std::shared_ptr<orvik::InMemoryPreferenceStore> standardDefaults =
        std::make_shared<orvik::InMemoryPreferenceStore>();
    // 2026-11-01 00:00 UTC, moved by the tests.
    orvik::Date now = orvik::dateFromSecondsSince1970(1793491200.0);

    // Whatever is still queued runs, so that work holding the state (a track
    // fetch holds it strongly until its answer is stored) lets it go.
    ~AppWorld() { settle(); }

    tolvane::AppServices services() {
        return tolvane::AppServices{
            .mainThread = mainThread,
            .runningApplications = running,
            .distributedNotifications = distributed,
            .workspaceNotifications = workspace,
            .accessibility = accessibility,
            .eventTaps = taps,
            .scripting = std::make_shared<tolvane::MusicScripting>(scriptingQueue, music, thumbnailer, scriptLogger),
            .appInfo = appInfo,
            .urlOpener = urlOpener,
            .standardDefaults = standardDefaults,
            .now = [this] { return now; },
        };
    }

    std::shared_ptr<tolvane::AppState> launch(bool preview = false) {
        return tolvane::AppState::create(settings, preview, services());
    }

    // Runs the scripting queue and the main thread until neither has work.
    void settle() {
        while (scriptQueue->runUntilIdle() + mainThread->runUntilIdle() > 0) {
        }
    }

    // Time passes on both clocks: the main thread's timers and the wall clock.
    void wait(double seconds) {
        now += orvik::Seconds(seconds);
        mainThread->advance(orvik::Duration(seconds));
    }

    // Music is running with this track; the track query and artwork query
    // answer accordingly.
    void musicPlays(const std::string& name, const std::string& artist, bool playing,
                    std::optional<std::string> artworkLabel = std::nullopt) {
        running->setRunning("com.apple.Music", true);
        music->answer(trackQuerySource(),
                      FakeScriptEngine::text(name + "\t" + artist + "\t" + (playing ? "playing" : "paused")));
        if (artworkLabel) {
            music->answer(artworkQuerySource(), FakeScriptEngine::bytes(FakeThumbnailer::imageBytes(*artworkLabel)));
        } else {
            music->answer(artworkQuerySource(), FakeScriptEngine::nothing());
        }
    }

    void postPlayerInfo(const std::string& state, const std::string& name, const std::string& artist) {
        distributed->post({"com.apple.Music.playerInfo", {{"Player State", state}, {"Name", name}, {"Artist", artist}}});
    }

    void postWorkspace(const std::string& notification, const std::string& bundleIdentifier) {
        workspace->post({notification,
                         {{orvik::Notification::applicationKey,
                           orvik::PropertyListValue::Dictionary{{orvik::Notification::bundleIdentifierKey, bundleIdentifier}}}}});
    }

    void musicLaunches() {
        running->setRunning("com.apple.Music", true);
        postWorkspace("NSWorkspaceDidLaunchApplicationNotification", "com.apple.Music");
    }

    void musicQuits() {
        running->setRunning("com.apple.Music", false);
        postWorkspace("NSWorkspaceDidTerminateApplicationNotification", "com.apple.Music");
    }

    // A full press and release of a media key through the tap; answers
    // whether the press was swallowed (the release then follows it).
    bool press(std::int64_t keyType) {
        const bool pressSwallowed = taps->deliverMediaKey(mediaKeyData1(keyType, true));
        const bool releaseSwallowed = taps->deliverMediaKey(mediaKeyData1(keyType, false));
        EXPECT_EQ(pressSwallowed, releaseSwallowed) << "a release must follow its press";
        return pressSwallowed;
    }

    // The sources of the script runs so far that were commands (not track
    // or artwork queries).
    std::vector<std::string> commandRuns() const {
        std::vector<std::string> commands;
        for (const std::string& source : music->runs()) {
            if (source != trackQuerySource() && source != artworkQuerySource()) commands.push_back(source);
        }
        return commands;
    }
};

}  // namespace testsupport
