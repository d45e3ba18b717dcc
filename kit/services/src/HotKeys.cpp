#include "OrvikKit/HotKeys.h"

#include <limits>

#include "OrvikKit/FatalError.h"

namespace orvik {

HotKeyDispatcher::HotKeyDispatcher(HotKeySystem& system, const MainThread& mainThread, std::uint32_t firstNumber)
    : system_(system), mainThread_(mainThread), nextID_(firstNumber) {}

std::optional<std::uint32_t> HotKeyDispatcher::registerHotKey(std::uint32_t keyCode, std::uint32_t modifiers,
                                                              Handler handler) {
    assertOnMainThread(mainThread_);
    if (!handlerInstalled_) handlerInstalled_ = system_.installApplicationEventHandler(*this);

    const std::uint32_t number = nextID_;
    if (nextID_ == std::numeric_limits<std::uint32_t>::max()) {
        // Four billion registrations in one process is a runaway loop, not
        // a use to survive.
        fatalError("hot-key numbers are used up");
    }
    ++nextID_;

    const auto reference =
        system_.registerHotKey(keyCode, modifiers, HotKeyID{.signature = hotKeySignature, .id = number});
    if (!reference) return std::nullopt;
    entries_.insert_or_assign(number, Entry{.reference = *reference, .handler = std::move(handler)});
    return number;
}

void HotKeyDispatcher::unregisterHotKey(std::uint32_t number) {
    assertOnMainThread(mainThread_);
    const auto found = entries_.find(number);
    if (found == entries_.end()) return;
    system_.unregisterHotKey(found->second.reference);
    entries_.erase(found);
}

void HotKeyDispatcher::fire(std::uint32_t number) {
    assertOnMainThread(mainThread_);
    const auto found = entries_.find(number);
    if (found == entries_.end()) return;
    // A copy: the handler may unregister its own hot key.
    const Handler handler = found->second.handler;
    if (handler) handler();
}

std::int32_t handleHotKeyEvent(const std::optional<HotKeyEvent>& event, HotKeyDispatcher& dispatcher) {
    if (!event || !event->hotKeyID || event->hotKeyID->signature != hotKeySignature) {
        return HotKeyStatus::eventNotHandled;
    }
    // The platform delivers hot-key events on the main run loop; anywhere
    // else is a programming fault.
    assertOnMainThread(dispatcher.mainThread());
    dispatcher.fire(event->hotKeyID->id);
    return HotKeyStatus::handled;
}

}  // namespace orvik
