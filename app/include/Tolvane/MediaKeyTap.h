// The media-key event tap: an active session tap at the head of the queue
// that sees every system-defined event, decodes media keys, asks the gate
// whether to swallow each one, and drops it or hands it back unchanged.
//
// Thread rules: created, started, stopped and called back on the main thread
// (the tap's run-loop source sits on the main run loop); a callback on any
// other thread stops the process. Lifetime: the platform holds an unretained
// pointer to the tap while it runs, so an instance must not be destroyed
// while running (its owner keeps it for the life of the process).
#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string_view>

#include "OrvikKit/MainThread.h"
#include "OrvikKit/SystemServices.h"
#include "TolvaneCore/KeyRouting.h"
#include "TolvaneCore/MediaKeyEvent.h"

namespace tolvane {

// The CoreGraphics event-tap calls, one handle standing for the tap's port
// and, once added, its run-loop source. None of them throws: they are thin
// calls into the system, and `enable` is reached from the tap's callback.
class EventTapSystem {
public:
    using Handle = std::uint64_t;

    virtual ~EventTapSystem() = default;

    // Creates an active tap at the session location, head-inserted, for
    // system-defined events only (mask 1 << 14), whose callback is handed
    // `userInfo` unretained. Nothing when the system refuses.
    virtual std::optional<Handle> createTap(void* userInfo) noexcept = 0;
    // Creates the tap's run-loop source and adds it to the main run loop in
    // the common modes, so events flow during menu and popover tracking.
    // False when the source could not be created (nothing was added).
    virtual bool addToMainRunLoop(Handle tap) noexcept = 0;
    virtual void enable(Handle tap, bool enabled) noexcept = 0;
    virtual bool isEnabled(Handle tap) const noexcept = 0;
    // Invalidates the tap's port: no more events arrive.
    virtual void invalidate(Handle tap) noexcept = 0;
    // Removes the source from the main run loop when it was added, and
    // releases the port and the source; the handle is finished.
    virtual void release(Handle tap) noexcept = 0;
};

// Event type numbers the tap's callback is handed.
namespace TapEventType {
inline constexpr std::uint32_t systemDefined = MediaKeyEvent::systemDefinedEventType;
inline constexpr std::uint32_t disabledByTimeout = 0xFFFFFFFEu;
inline constexpr std::uint32_t disabledByUserInput = 0xFFFFFFFFu;
}  // namespace TapEventType

// The fields of a system-defined event that carry a media key.
struct SystemDefinedFields {
    std::int16_t subtype;
    std::int64_t data1;
};

class MediaKeyTap {
public:
    // The log line of a key whose handling failed (it is passed on).
    static constexpr std::string_view handlingFailedMessage = "a media key could not be handled; the event passes";

    // `logger` (the "tap" category) may be null: a tap that never runs, as
    // in a preview, has nothing to log.
    MediaKeyTap(orvik::MainThread& mainThread, std::shared_ptr<EventTapSystem> system,
                std::shared_ptr<orvik::Logger> logger);

    MediaKeyTap(const MediaKeyTap&) = delete;
    MediaKeyTap& operator=(const MediaKeyTap&) = delete;

    // The key handler: true means the system takes the key and the event is
    // swallowed. Until replaced it answers false, so an unconfigured tap
    // swallows nothing; an empty handler answers false too.
    std::function<bool(MediaKey)> onKey = [](MediaKey) { return false; };

    // Installs the tap; true when it runs (now or already), false when the
    // system refused to create it or its run-loop source (then nothing is
    // left installed).
    bool start();
    // Removes the tap if installed and forgets the gate's memory. Safe when
    // not started.
    void stop();
    bool isRunning() const noexcept { return tap_.has_value(); }

    // Switches the tap back on when the system has switched it off without
    // telling (as after sleep or a user switch); answers whether it did.
    bool reviveIfDisabled();

    // The callback's decision for one delivered event: true to drop it.
    // `readFields` is asked only for system-defined events and answers the
    // event's subtype and data1, or nothing when the event cannot be read.
    //
    // Never throws: it is reached from the window server's C callback. An
    // exception from anything on the way (reading the fields, the handler,
    // the command queue, the change signal's observers) is logged and the
    // event passes, as if the app were not there.
    template <class ReadFields>
    bool dropsEvent(std::uint32_t type, ReadFields&& readFields) noexcept;

    // The same, entered through the platform callback's user data, which may
    // be null (then the event passes).
    template <class ReadFields>
    static bool dropsEvent(void* userInfo, std::uint32_t type, ReadFields&& readFields) noexcept {
        return userInfo != nullptr &&
               static_cast<MediaKeyTap*>(userInfo)->dropsEvent(type, std::forward<ReadFields>(readFields));
    }

    const MediaKeyGate& gate() const noexcept { return gate_; }

private:
    bool decideMediaKey(const SystemDefinedFields& fields);
    void reenableAfterSystemDisabled();
    void handlingFailed() noexcept;

    orvik::MainThread& mainThread_;
    std::shared_ptr<EventTapSystem> system_;
    std::shared_ptr<orvik::Logger> logger_;
    std::optional<EventTapSystem::Handle> tap_;
    MediaKeyGate gate_;
};

template <class ReadFields>
bool MediaKeyTap::dropsEvent(std::uint32_t type, ReadFields&& readFields) noexcept {
    try {
        if (type == TapEventType::disabledByTimeout || type == TapEventType::disabledByUserInput) {
            reenableAfterSystemDisabled();
            return false;
        }
        if (type != TapEventType::systemDefined) {
            return false;
        }
        const std::optional<SystemDefinedFields> fields = readFields();
        return fields.has_value() && decideMediaKey(*fields);
    } catch (...) {
        handlingFailed();
        return false;
    }
}

}  // namespace tolvane
