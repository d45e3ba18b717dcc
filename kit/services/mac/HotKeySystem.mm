// HotKeySystem over Carbon's application event target, the C callback that
// reads each hot-key event for the dispatcher, and the process's dispatcher.
#include <Carbon/Carbon.h>

#include <cstdint>
#include <memory>
#include <optional>

#include "OrvikKitCore/Shortcut.h"
#include "OrvikKit/HotKeys.h"
#include "OrvikKitMac/BaseAdapters.h"

namespace orvik::mac {

// The portable hot-key code carries these platform values as its own.
static_assert(static_cast<std::int32_t>(eventNotHandledErr) == HotKeyStatus::eventNotHandled);
static_assert(static_cast<std::int32_t>(noErr) == HotKeyStatus::handled);
static_assert(static_cast<std::uint32_t>(kEventClassKeyboard) == fourCharCode("keyb"));
static_assert(static_cast<std::uint32_t>(kEventParamDirectObject) == fourCharCode("----"));
static_assert(static_cast<std::uint32_t>(typeEventHotKeyID) == fourCharCode("hkid"));
static_assert(sizeof(EventHotKeyID) == 2 * sizeof(std::uint32_t));
static_assert(static_cast<std::uint32_t>(cmdKey) == Shortcut::command);
static_assert(static_cast<std::uint32_t>(shiftKey) == Shortcut::shift);
static_assert(static_cast<std::uint32_t>(optionKey) == Shortcut::option);
static_assert(static_cast<std::uint32_t>(controlKey) == Shortcut::control);

namespace {

// Carbon's handler for hot-key-pressed events; `userData` is the
// dispatcher. It reads the event's hot-key ID and leaves every decision to
// handleHotKeyEvent.
OSStatus hotKeyCallback(EventHandlerCallRef, EventRef event, void* userData) {
    std::optional<HotKeyEvent> read;
    if (event != nullptr) {
        EventHotKeyID hotKeyID{};
        const OSStatus status = GetEventParameter(event, kEventParamDirectObject, typeEventHotKeyID, nullptr,
                                                  sizeof(hotKeyID), nullptr, &hotKeyID);
        read = HotKeyEvent{.hotKeyID = status == noErr ? std::optional<HotKeyID>(HotKeyID{
                                                             .signature = hotKeyID.signature, .id = hotKeyID.id})
                                                       : std::nullopt};
    }
    return handleHotKeyEvent(read, *static_cast<HotKeyDispatcher*>(userData));
}

class CarbonHotKeySystem final : public HotKeySystem {
public:
    bool installApplicationEventHandler(HotKeyDispatcher& dispatcher) override {
        const EventTypeSpec pressed{.eventClass = kEventClassKeyboard, .eventKind = kEventHotKeyPressed};
        EventHandlerRef handler = nullptr;
        return InstallEventHandler(GetApplicationEventTarget(), NewEventHandlerUPP(hotKeyCallback), 1, &pressed,
                                   &dispatcher, &handler) == noErr;
    }

    std::optional<HotKeyReference> registerHotKey(std::uint32_t keyCode, std::uint32_t modifiers,
                                                  HotKeyID id) override {
        EventHotKeyRef reference = nullptr;
        const OSStatus status = RegisterEventHotKey(keyCode, modifiers,
                                                    EventHotKeyID{.signature = id.signature, .id = id.id},
                                                    GetApplicationEventTarget(), 0, &reference);
        if (status != noErr || reference == nullptr) return std::nullopt;
        return static_cast<HotKeyReference>(reinterpret_cast<std::uintptr_t>(reference));
    }

    void unregisterHotKey(HotKeyReference reference) override {
        UnregisterEventHotKey(reinterpret_cast<EventHotKeyRef>(static_cast<std::uintptr_t>(reference)));
    }
};

}  // namespace

}  // namespace orvik::mac

namespace orvik {

HotKeyDispatcher& HotKeyDispatcher::shared() {
    static mac::CarbonHotKeySystem system;
    static const std::shared_ptr<MainThread> mainThread = mac::makeMainQueue();
    static HotKeyDispatcher dispatcher(system, *mainThread);
    return dispatcher;
}

}  // namespace orvik
