// EventTapSystem over CoreGraphics event taps, and the tap's C callback.
#import <AppKit/AppKit.h>
#include <CoreGraphics/CoreGraphics.h>

#include <cstdint>
#include <map>
#include <memory>
#include <optional>

#include "OrvikKitMac/CFRef.h"
#include "TolvaneMac/Adapters.h"

namespace tolvane::mac {

namespace {

using orvik::mac::CFRef;

// The portable tap code carries these platform values as its own.
static_assert(static_cast<std::uint32_t>(NSEventTypeSystemDefined) == TapEventType::systemDefined);
static_assert(static_cast<std::uint32_t>(kCGEventTapDisabledByTimeout) == TapEventType::disabledByTimeout);
static_assert(static_cast<std::uint32_t>(kCGEventTapDisabledByUserInput) == TapEventType::disabledByUserInput);

// System-defined events only: the mask 1 << 14.
constexpr CGEventMask systemDefinedEvents = CGEventMask{1} << TapEventType::systemDefined;
static_assert(systemDefinedEvents == 0x4000);

// The callback the window server calls for every event of the tap. It reads
// the event's type and, for system-defined events only (MediaKeyTap asks
// for the fields only then), their subtype and data1 through NSEvent; every
// decision is MediaKeyTap's. NULL drops the event; the event itself passes
// it on unchanged.
CGEventRef _Nullable mediaKeyTapCallback(CGEventTapProxy, CGEventType type, CGEventRef event,
                                         void* _Nullable userInfo) {
    const bool drops = MediaKeyTap::dropsEvent(
        userInfo, static_cast<std::uint32_t>(type), [event]() -> std::optional<SystemDefinedFields> {
            @autoreleasepool {
                NSEvent* systemEvent = [NSEvent eventWithCGEvent:event];
                if (systemEvent == nil) return std::nullopt;
                return SystemDefinedFields{.subtype = systemEvent.subtype,
                                           .data1 = static_cast<std::int64_t>(systemEvent.data1)};
            }
        });
    return drops ? nullptr : event;
}

class CoreGraphicsEventTaps final : public EventTapSystem {
public:
    std::optional<Handle> createTap(void* userInfo) noexcept override {
        CFRef<CFMachPortRef> port = CFRef<CFMachPortRef>::adopt(
            CGEventTapCreate(kCGSessionEventTap, kCGHeadInsertEventTap, kCGEventTapOptionDefault, systemDefinedEvents,
                             mediaKeyTapCallback, userInfo));
        if (!port) return std::nullopt;
        const Handle handle = nextHandle_++;
        taps_.emplace(handle, Tap{.port = std::move(port), .source = {}});
        return handle;
    }

    bool addToMainRunLoop(Handle tap) noexcept override {
        Tap* found = find(tap);
        if (found == nullptr) return false;
        CFRef<CFRunLoopSourceRef> source =
            CFRef<CFRunLoopSourceRef>::adopt(CFMachPortCreateRunLoopSource(kCFAllocatorDefault, found->port.get(), 0));
        if (!source) return false;
        CFRunLoopAddSource(CFRunLoopGetMain(), source.get(), kCFRunLoopCommonModes);
        found->source = std::move(source);
        return true;
    }

    void enable(Handle tap, bool enabled) noexcept override {
        if (Tap* found = find(tap)) CGEventTapEnable(found->port.get(), enabled);
    }

    bool isEnabled(Handle tap) const noexcept override {
        const auto found = taps_.find(tap);
        return found != taps_.end() && CGEventTapIsEnabled(found->second.port.get());
    }

    void invalidate(Handle tap) noexcept override {
        if (Tap* found = find(tap)) CFMachPortInvalidate(found->port.get());
    }

    void release(Handle tap) noexcept override {
        Tap* found = find(tap);
        if (found == nullptr) return;
        if (found->source) CFRunLoopRemoveSource(CFRunLoopGetMain(), found->source.get(), kCFRunLoopCommonModes);
        taps_.erase(tap);  // releases the source and the port
    }

private:
    struct Tap {
        CFRef<CFMachPortRef> port;
        CFRef<CFRunLoopSourceRef> source;  // empty until added to the run loop
    };

    Tap* find(Handle tap) noexcept {
        const auto found = taps_.find(tap);
        return found == taps_.end() ? nullptr : &found->second;
    }

    std::map<Handle, Tap> taps_;
    Handle nextHandle_ = 1;
};

}  // namespace

std::shared_ptr<EventTapSystem> makeEventTapSystem() { return std::make_shared<CoreGraphicsEventTaps>(); }

}  // namespace tolvane::mac
