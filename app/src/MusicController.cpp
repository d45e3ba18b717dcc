#include "Tolvane/MusicController.h"

#include <cassert>
#include <deque>
#include <string>
#include <utility>

namespace tolvane {

using Outcome = MusicScripting::Outcome;

// What queued work knows of the controller. The controller holds the only
// strong reference and clears `controller` as it is destroyed, so work that
// comes back later finds it gone; everything here happens on the main thread.
struct MusicController::Anchor {
    MusicController* controller;

    // Tells the controller behind `weak`, if it still exists, about a run's
    // outcome. Answers whether it still exists afterwards: the permission
    // callback may have destroyed it.
    static bool report(const std::weak_ptr<Anchor>& weak, Outcome outcome) {
        const std::shared_ptr<Anchor> anchor = weak.lock();
        if (!anchor || anchor->controller == nullptr) return false;
        anchor->controller->reportPermission(outcome);
        return anchor->controller != nullptr;
    }
};

// The command loop: the stream's buffer and the one run under way. Lives on
// the main thread; the run's completion holds it strongly on its way through
// the scripting queue and back, so it outlives the controller until every
// command already queued has run. It holds the scripting strongly and the
// controller only weakly.
struct MusicController::CommandStream::Loop : std::enable_shared_from_this<Loop> {
    Loop(orvik::MainThread& mainThread, std::shared_ptr<MusicScripting> scripting, std::weak_ptr<Anchor> controller)
        : mainThread(mainThread), scripting(std::move(scripting)), controller(std::move(controller)) {}

    orvik::MainThread& mainThread;
    const std::shared_ptr<MusicScripting> scripting;
    const std::weak_ptr<Anchor> controller;
    std::deque<MusicCommand> pending;  // unbounded, oldest first
    bool running = false;              // a command's run has not come back yet
    bool finished = false;             // the controller is gone: take no more

    // The key path. While a run is under way this only appends to the deque.
    void add(MusicCommand command) {
        if (finished) return;
        pending.push_back(command);
        if (!running) startNext();
    }

    void startNext() {
        const MusicCommand command = pending.front();
        pending.pop_front();
        running = true;
        scripting->execute(std::string(MusicScripting::body(command)),
                           [loop = shared_from_this()](MusicScripting::Execution execution) mutable {
                               // On the scripting queue. Only the outcome goes
                               // back; the result is of no use here.
                               const Outcome outcome = execution.outcome;
                               orvik::MainThread& mainThread = loop->mainThread;
                               mainThread.post([loop = std::move(loop), outcome] { loop->runFinished(outcome); });
                           });
    }

    void runFinished(Outcome outcome) {
        running = false;
        Anchor::report(controller, outcome);
        // The permission callback may have added a command, and so started it.
        if (!running && !pending.empty()) startNext();
    }
};

void MusicController::CommandStream::yield(MusicCommand command) {
    orvik::assertOnMainThread(loop_->mainThread);
    loop_->add(command);
}

MusicController::MusicController(orvik::MainThread& mainThread,
                                 std::shared_ptr<const orvik::RunningApplications> runningApplications,
                                 std::shared_ptr<MusicScripting> scripting)
    : mainThread_(mainThread),
      runningApplications_(std::move(runningApplications)),
      scripting_(std::move(scripting)),
      anchor_(std::make_shared<Anchor>(Anchor{this})) {
    orvik::assertOnMainThread(mainThread_);
    assert(runningApplications_ && scripting_);
    commands.loop_ = std::make_shared<CommandStream::Loop>(mainThread_, scripting_, anchor_);
}

MusicController::~MusicController() {
    orvik::assertOnMainThread(mainThread_);
    anchor_->controller = nullptr;
    // Finishing the stream: commands already queued still run, none is taken.
    commands.loop_->finished = true;
}

void MusicController::currentTrack(std::function<void(std::optional<Track>)> completion) {
    orvik::assertOnMainThread(mainThread_);
    if (!runningApplications_->isRunning(MusicScripting::musicBundleIdentifier)) {
        // Any script would launch Music, so ask nothing. The answer still
        // comes in a later main-thread task, as a fetched one does, never
        // inside the caller.
        mainThread_.post([controller = std::weak_ptr<Anchor>(anchor_), completion = std::move(completion)]() mutable {
            const std::shared_ptr<Anchor> anchor = controller.lock();
            if (!anchor || anchor->controller == nullptr) return;
            completion(std::nullopt);
        });
        return;
    }
    scripting_->currentTrack([&mainThread = mainThread_, controller = std::weak_ptr<Anchor>(anchor_),
                              completion = std::move(completion)](std::optional<Track> track, Outcome outcome) mutable {
        // On the scripting queue: everything moves on to the main thread, so
        // the caller's completion is called and released there.
        mainThread.post([controller = std::move(controller), completion = std::move(completion),
                         track = std::move(track), outcome]() mutable {
            if (!Anchor::report(controller, outcome)) return;
            completion(std::move(track));
        });
    });
}

void MusicController::reportPermission(Outcome outcome) {
    if (outcome == Outcome::failed) return;
    // A copy: the callback may destroy this controller, and this member with it.
    const std::function<void(bool)> callback = onAutomationPermission;
    if (callback) callback(outcome == Outcome::succeeded);
}

}  // namespace tolvane
