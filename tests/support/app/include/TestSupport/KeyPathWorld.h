// A launched app state on fakes that keep the key path quiet: the running
// applications answer without recording, and the scripting queue runs
// nothing until told, so once one command is under way every later one only
// waits in the controller's queue. For the allocation tests and the
// benchmarks of one key press through the tap and the state.
#pragma once

#include <memory>

#include "OrvikKitCore/Preferences.h"
#include "TestSupport/FakeEventTapSystem.h"
#include "TestSupport/FakeNotificationCenter.h"
#include "TestSupport/FakeScriptEngine.h"
#include "TestSupport/FakeSystemServices.h"
#include "TestSupport/FakeThumbnailer.h"
#include "TestSupport/ManualMainThread.h"
#include "TestSupport/ManualSerialQueue.h"
#include "TestSupport/QuietRunningApplications.h"
#include "TestSupport/RecordingLogger.h"
#include "Tolvane/AppState.h"

namespace testsupport {

struct KeyPathWorld {
    std::shared_ptr<ManualMainThread> mainThread = std::make_shared<ManualMainThread>();
    std::shared_ptr<ManualSerialQueue> scriptQueue = std::make_shared<ManualSerialQueue>();
    std::shared_ptr<QuietRunningApplications> running = std::make_shared<QuietRunningApplications>();
    std::shared_ptr<FakeEventTapSystem> taps = std::make_shared<FakeEventTapSystem>();
    std::shared_ptr<tolvane::AppState> state;

    explicit KeyPathWorld(bool musicRuns) {
        running->musicRuns = musicRuns;
        state = tolvane::AppState::create(
            std::make_shared<orvik::InMemoryPreferenceStore>(), false,
            tolvane::AppServices{
                .mainThread = mainThread,
                .runningApplications = running,
                .distributedNotifications = std::make_shared<FakeNotificationCenter>(),
                .workspaceNotifications = std::make_shared<FakeNotificationCenter>(),
                .accessibility = std::make_shared<FakeAccessibilityTrust>(true),
                .eventTaps = taps,
                .scripting = std::make_shared<tolvane::MusicScripting>(scriptQueue, std::make_shared<FakeScriptEngine>(),
                                                                       std::make_shared<FakeThumbnailer>(),
                                                                       std::make_shared<RecordingLogger>()),
                .appInfo = std::make_shared<FakeAppInfoSource>("1.0"),
                .urlOpener = std::make_shared<FakeURLOpener>(),
                .standardDefaults = std::make_shared<orvik::InMemoryPreferenceStore>(),
                .now = [] { return orvik::dateFromSecondsSince1970(1793491200.0); },
            });
    }

    ~KeyPathWorld() {
        state.reset();
        while (scriptQueue->runUntilIdle() + mainThread->runUntilIdle() > 0) {
        }
    }

    KeyPathWorld(const KeyPathWorld&) = delete;
    KeyPathWorld& operator=(const KeyPathWorld&) = delete;
};

}  // namespace testsupport
