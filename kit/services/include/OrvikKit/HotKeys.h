// System-wide hot keys: a centre that registers a set of shortcuts under the
// app's own identifiers and calls back with the identifier pressed, over a
// dispatcher that owns the process's one hot-key event handler and routes
// each hot-key number to its handler.
//
// The platform's hot-key calls (Carbon's event handler installation and
// RegisterEventHotKey / UnregisterEventHotKey) sit behind `HotKeySystem`; the
// platform layer's C event callback reads the event and hands what it found
// to `handleHotKeyEvent`, which holds every decision.
//
// Main thread only: registration, unregistration, dispatch and every
// `onPress` call.
#pragma once

#include <concepts>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <unordered_map>
#include <unordered_set>
#include <utility>

#include "OrvikKit/MainThread.h"
#include "OrvikKitCore/Shortcut.h"

namespace orvik {

// A four-character code as the platform packs it: the first character in the
// most significant byte.
constexpr std::uint32_t fourCharCode(const char (&code)[5]) noexcept {
    return std::uint32_t{static_cast<unsigned char>(code[0])} << 24 |
           std::uint32_t{static_cast<unsigned char>(code[1])} << 16 |
           std::uint32_t{static_cast<unsigned char>(code[2])} << 8 | std::uint32_t{static_cast<unsigned char>(code[3])};
}

// The signature every hot key of the kit carries, so that the event handler
// can tell the kit's hot keys from anyone else's.
inline constexpr std::uint32_t hotKeySignature = fourCharCode("Orhk");

// Event handler statuses (the platform's OSStatus values).
namespace HotKeyStatus {
inline constexpr std::int32_t handled = 0;             // noErr
inline constexpr std::int32_t eventNotHandled = -9874;  // eventNotHandledErr: let the next handler see it
}  // namespace HotKeyStatus

// A hot key's identity as the system carries it (Carbon's EventHotKeyID).
struct HotKeyID {
    std::uint32_t signature = 0;
    std::uint32_t id = 0;

    friend constexpr bool operator==(const HotKeyID&, const HotKeyID&) = default;
};

// The system's handle of one registered hot key (Carbon's EventHotKeyRef,
// carried as a number).
enum class HotKeyReference : std::uintptr_t {};

class HotKeyDispatcher;

// The platform's hot-key service.
class HotKeySystem {
public:
    virtual ~HotKeySystem() = default;

    // Installs one handler for hot-key-pressed events (event class keyboard,
    // kind 5) on the application's event target, whose callback reads each
    // event and passes it to `handleHotKeyEvent` with `dispatcher`. Answers
    // whether the installation succeeded.
    virtual bool installApplicationEventHandler(HotKeyDispatcher& dispatcher) = 0;

    // Registers a hot key on the application's event target, with no
    // options. Nothing when the system reports an error or gives no
    // reference.
    virtual std::optional<HotKeyReference> registerHotKey(std::uint32_t keyCode, std::uint32_t modifiers,
                                                          HotKeyID id) = 0;

    virtual void unregisterHotKey(HotKeyReference reference) = 0;
};

// Owns the event handler and the hot keys registered through it, by hot-key
// number. Numbers start at 1 and are never reused, even when a registration
// fails; a registration that would move the next number past 4294967295
// stops the process (so 4294967294 is the last number ever registered).
//
// Not copyable or movable: the event handler refers to it. It must outlive
// every centre that registers through it.
class HotKeyDispatcher {
public:
    using Handler = std::function<void()>;

    // A dispatcher over `system`; both references must outlive it.
    // `firstNumber` is where numbering starts (1 for every real dispatcher).
    HotKeyDispatcher(HotKeySystem& system, const MainThread& mainThread, std::uint32_t firstNumber = 1);

    HotKeyDispatcher(const HotKeyDispatcher&) = delete;
    HotKeyDispatcher& operator=(const HotKeyDispatcher&) = delete;

    // The process's dispatcher, created on first use over the platform's
    // hot-key service and main thread. Defined by the platform layer; code
    // that brings its own HotKeySystem (tests among it) makes its own
    // dispatcher instead.
    static HotKeyDispatcher& shared();

    // Installs the event handler when it is not in place yet (a failed
    // installation is tried again at the next registration), takes the next
    // number, and registers the hot key under it with the kit's signature.
    // Answers the number, or nothing when the system refused; the number is
    // used up either way.
    std::optional<std::uint32_t> registerHotKey(std::uint32_t keyCode, std::uint32_t modifiers, Handler handler);

    // Unregisters the hot key of `number` from the system and forgets it.
    // Unknown numbers are ignored.
    void unregisterHotKey(std::uint32_t number);

    // Calls the handler of `number`; an unknown number is ignored.
    void fire(std::uint32_t number);

    const MainThread& mainThread() const noexcept { return mainThread_; }
    bool handlerInstalled() const noexcept { return handlerInstalled_; }
    // The number the next registration will take.
    std::uint32_t nextID() const noexcept { return nextID_; }
    bool contains(std::uint32_t number) const { return entries_.contains(number); }
    std::size_t entryCount() const noexcept { return entries_.size(); }

private:
    struct Entry {
        HotKeyReference reference;
        Handler handler;
    };

    HotKeySystem& system_;
    const MainThread& mainThread_;
    std::map<std::uint32_t, Entry> entries_;
    std::uint32_t nextID_;
    bool handlerInstalled_ = false;
};

// What the platform's callback could learn from its event.
struct HotKeyEvent {
    // The event's direct object read as a hot-key id; nothing when it could
    // not be read as one.
    std::optional<HotKeyID> hotKeyID;
};

// The decisions of the event callback. No event, an unreadable one, or a hot
// key with another signature answers `eventNotHandled`, so that other
// handlers see hot keys that are not the kit's. Otherwise the dispatcher
// fires the number (on the main thread: any other thread stops the process)
// and the answer is `handled`.
std::int32_t handleHotKeyEvent(const std::optional<HotKeyEvent>& event, HotKeyDispatcher& dispatcher);

// An identifier type for hot keys: hashable and comparable.
template <class ID>
concept HotKeyIdentifier = std::copy_constructible<ID> && std::equality_comparable<ID> && requires(const ID& id) {
    { std::hash<ID>{}(id) } -> std::convertible_to<std::size_t>;
};

// A set of shortcuts registered under the app's identifiers.
//
// Made by `create` and held by std::shared_ptr: the dispatcher's handlers
// hold the centre weakly. Releasing a centre does not unregister its hot
// keys, by design: they stay registered with the system but call nothing.
// Owners call `unregister()` before releasing.
template <HotKeyIdentifier ID>
class HotKeyCenter : public std::enable_shared_from_this<HotKeyCenter<ID>> {
public:
    using Shortcuts = std::unordered_map<ID, Shortcut>;

    // A centre over the process's dispatcher.
    static std::shared_ptr<HotKeyCenter> create() { return create(HotKeyDispatcher::shared()); }
    // A centre over `dispatcher`, which must outlive it.
    static std::shared_ptr<HotKeyCenter> create(HotKeyDispatcher& dispatcher) {
        return std::shared_ptr<HotKeyCenter>(new HotKeyCenter(dispatcher));
    }

    HotKeyCenter(const HotKeyCenter&) = delete;
    HotKeyCenter& operator=(const HotKeyCenter&) = delete;

    // Called with the identifier of the shortcut pressed.
    std::function<void(const ID&)> onPress;

    // The identifiers the system refused at the last registration.
    const std::unordered_set<ID>& failed() const noexcept { return failed_; }
    // The hot-key number of every identifier registered.
    const std::unordered_map<ID, std::uint32_t>& ids() const noexcept { return ids_; }
    bool isRegistered() const noexcept { return !ids_.empty(); }

    // Replaces every registration of this centre by `shortcuts` (named with
    // a trailing underscore: `register` is a C++ keyword). A shortcut that is
    // not valid is skipped silently: neither registered nor failed.
    void register_(const Shortcuts& shortcuts) {
        unregister();
        for (const auto& [id, shortcut] : shortcuts) {
            if (!shortcut.isValid()) continue;
            auto handler = [weak = this->weak_from_this(), id = id] {
                const auto center = weak.lock();
                if (center && center->onPress) center->onPress(id);
            };
            const auto number = dispatcher_.registerHotKey(shortcut.keyCode, shortcut.modifiers, std::move(handler));
            if (number) {
                ids_.emplace(id, *number);
            } else {
                failed_.insert(id);
            }
        }
    }

    // Removes every registration of this centre; `ids` and `failed` become
    // empty.
    void unregister() {
        for (const auto& entry : ids_) dispatcher_.unregisterHotKey(entry.second);
        ids_.clear();
        failed_.clear();
    }

private:
    explicit HotKeyCenter(HotKeyDispatcher& dispatcher) : dispatcher_(dispatcher) {}

    HotKeyDispatcher& dispatcher_;
    std::unordered_map<ID, std::uint32_t> ids_;
    std::unordered_set<ID> failed_;
};

}  // namespace orvik
