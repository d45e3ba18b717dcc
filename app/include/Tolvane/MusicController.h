// The app's one handle on Music. Commands wait in an unbounded first-in,
// first-out queue and run one at a time, in order, on the scripting queue, so
// a key press never waits for Music. After every conclusive run (succeeded or
// denied) the owner is told on the main thread whether this app may control
// Music. The current track is fetched on demand, never launching Music.
//
// Thread rules: created, used and destroyed on the main thread; callbacks
// run there. Destroying the controller mid-run is safe: the commands already
// queued still run, and no report is made. The main thread must outlive the
// controller and the work it has queued.
#pragma once

#include <functional>
#include <memory>
#include <optional>

#include "OrvikKit/MainThread.h"
#include "OrvikKit/SystemServices.h"
#include "Tolvane/MusicScripting.h"
#include "Tolvane/Track.h"
#include "TolvaneCore/KeyRouting.h"

namespace tolvane {

class MusicController {
public:
    // The sending end of the command queue.
    class CommandStream {
    public:
        // Adds a command; never blocks, never drops. Main thread only. Once
        // the controller is gone the stream is finished, and a command added
        // through a copy of it is ignored.
        void yield(MusicCommand command);

    private:
        friend class MusicController;
        struct Loop;

        CommandStream() = default;  // only the controller makes a stream

        std::shared_ptr<Loop> loop_;
    };

    MusicController(orvik::MainThread& mainThread, std::shared_ptr<const orvik::RunningApplications> runningApplications,
                    std::shared_ptr<MusicScripting> scripting);
    ~MusicController();

    MusicController(const MusicController&) = delete;
    MusicController& operator=(const MusicController&) = delete;

    CommandStream commands;

    // Told true after a run that succeeded, false after one Music refused
    // for want of permission; not told about other failures.
    std::function<void(bool granted)> onAutomationPermission = [](bool) {};

    // Fetches the current track with its artwork and hands it (or nothing) to
    // `completion` in a later main-thread task, never before returning. When
    // Music is not running the answer is nothing, and no script runs and
    // nothing is reported. When the controller is gone by the time the track
    // is handed over (destroyed while the query ran, or by the permission
    // callback just before), `completion` is released uncalled.
    void currentTrack(std::function<void(std::optional<Track>)> completion);

private:
    struct Anchor;

    // Calls onAutomationPermission for a conclusive outcome; nothing for failed.
    void reportPermission(MusicScripting::Outcome outcome);

    orvik::MainThread& mainThread_;
    std::shared_ptr<const orvik::RunningApplications> runningApplications_;
    std::shared_ptr<MusicScripting> scripting_;
    // The queued work's weak handle on this controller; cleared when it is
    // destroyed.
    std::shared_ptr<Anchor> anchor_;
};

}  // namespace tolvane
