// A keyboard shortcut: a macOS virtual key code and a Carbon modifier mask,
// storable as a preference and shown as key-cap symbols (⌃⌥⇧⌘ then the key).
//
// Pure value type; safe on any thread.
#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "OrvikKitCore/PropertyListValue.h"

namespace orvik {

// Named virtual key codes.
namespace KeyCode {
inline constexpr std::uint32_t escape = 53;
inline constexpr std::uint32_t delete_ = 51;  // `delete` is a C++ keyword
inline constexpr std::uint32_t leftArrow = 123;
inline constexpr std::uint32_t rightArrow = 124;
inline constexpr std::uint32_t downArrow = 125;
inline constexpr std::uint32_t upArrow = 126;
inline constexpr std::uint32_t c = 8;
inline constexpr std::uint32_t d = 2;
}  // namespace KeyCode

struct Shortcut {
    std::uint32_t keyCode = 0;
    std::uint32_t modifiers = 0;

    // Carbon modifier masks.
    static constexpr std::uint32_t command = 256;
    static constexpr std::uint32_t shift = 512;
    static constexpr std::uint32_t option = 2048;
    static constexpr std::uint32_t control = 4096;

    // Key code 0 with no modifiers.
    static const Shortcut none;

    struct ModifierFlags {
        bool command = false;
        bool shift = false;
        bool option = false;
        bool control = false;
    };
    // The OR of the masks whose flags are set.
    static constexpr std::uint32_t modifierMask(ModifierFlags flags) noexcept {
        return (flags.command ? command : 0u) | (flags.shift ? shift : 0u) | (flags.option ? option : 0u) |
               (flags.control ? control : 0u);
    }

    // A key event as the platform reports it: the key code and the event's
    // device-independent modifier flags.
    struct KeyEvent {
        std::uint16_t keyCode = 0;
        std::uint64_t modifierFlags = 0;
    };
    // The shortcut a key event stands for: its key code, and command (flag
    // bit 20), shift (17), option (19) and control (18) as Carbon masks; every
    // other flag is ignored.
    static constexpr Shortcut fromEvent(KeyEvent event) noexcept {
        const auto flag = [&](unsigned bit) { return (event.modifierFlags >> bit & 1u) != 0; };
        return Shortcut{
            .keyCode = event.keyCode,
            .modifiers = modifierMask({.command = flag(20), .shift = flag(17), .option = flag(19), .control = flag(18)}),
        };
    }

    // A shortcut needs command, option or control; shift alone is not enough.
    constexpr bool isValid() const noexcept { return (modifiers & (command | option | control)) != 0; }

    // One symbol per modifier present, in the order ⌃ ⌥ ⇧ ⌘, then the key name.
    std::vector<std::string> symbols() const;
    // The symbols joined with no separator, as ⌃⌥⌘K.
    std::string displayString() const;
    // The key's display name, or "#" and the decimal key code when it has none.
    static std::string keyName(std::uint32_t keyCode);

    // Stored as a dictionary of two integers, "keyCode" and "modifiers".
    std::optional<PropertyListValue> propertyListValue() const;
    // Reads that dictionary back; fails unless both entries are integers in
    // 0 to 4294967295.
    static std::optional<Shortcut> fromPropertyListValue(const PropertyListValue& stored);

    friend constexpr bool operator==(const Shortcut&, const Shortcut&) = default;
};

inline constexpr Shortcut Shortcut::none{};

struct KeyNameEntry {
    std::uint32_t keyCode;
    std::string_view name;
};

// Every named key: letters, digits, F1 to F12, arrows and punctuation.
std::span<const KeyNameEntry> keyNameTable() noexcept;

}  // namespace orvik

template <>
struct std::hash<orvik::Shortcut> {
    std::size_t operator()(const orvik::Shortcut& shortcut) const noexcept {
        return std::hash<std::uint64_t>{}(std::uint64_t{shortcut.keyCode} << 32 | shortcut.modifiers);
    }
};
