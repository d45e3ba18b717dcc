// Shortcuts from arbitrary key codes and modifier masks, from arbitrary key
// events, and from arbitrary stored property-list values.
//
// Input layout:
//   byte        even: the key code is keyNameTable()[(byte / 2) % size]'s;
//               odd: the key code is the next 4 bytes (uint32 little-endian)
//   4 bytes     the modifier mask, uint32 little-endian (every bit, not just
//               the four known ones)
//   2 bytes     a key event's key code, uint16 little-endian
//   8 bytes     its modifier flags, uint64 little-endian
//   byte        odd: the stored value is any value, even: a dictionary
//   then        that value (layout in PropertyListFuzzing.h)

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "FuzzInput.h"
#include "OrvikKitCore/Preferences.h"
#include "OrvikKitCore/PropertyListValue.h"
#include "OrvikKitCore/Shortcut.h"
#include "PropertyListFuzzing.h"
#include "ReadingRules.h"

namespace {

using orvik::PropertyListValue;
using orvik::Shortcut;
using tolvane::fuzz::FuzzInput;
using tolvane::fuzz::expectedShortcut;
using tolvane::fuzz::require;

// The name of a key: its entry in the table, or "#" and the decimal code.
std::string expectedKeyName(std::uint32_t keyCode) {
    std::optional<std::string_view> name;
    for (const orvik::KeyNameEntry& entry : orvik::keyNameTable()) {
        if (entry.keyCode == keyCode) {
            require(!name.has_value(), "a key code is named at most once in the table");
            name = entry.name;
        }
    }
    return name ? std::string(*name) : "#" + std::to_string(keyCode);
}

void checkShortcut(const Shortcut& shortcut) {
    const std::string keyName = Shortcut::keyName(shortcut.keyCode);
    require(keyName == expectedKeyName(shortcut.keyCode), "key name from the table, else # and the decimal code");

    std::vector<std::string> expectedSymbols;
    if ((shortcut.modifiers & 4096u) != 0) {
        expectedSymbols.emplace_back("\u2303");  // control
    }
    if ((shortcut.modifiers & 2048u) != 0) {
        expectedSymbols.emplace_back("\u2325");  // option
    }
    if ((shortcut.modifiers & 512u) != 0) {
        expectedSymbols.emplace_back("\u21E7");  // shift
    }
    if ((shortcut.modifiers & 256u) != 0) {
        expectedSymbols.emplace_back("\u2318");  // command
    }
    expectedSymbols.push_back(keyName);
    const std::vector<std::string> symbols = shortcut.symbols();
    require(symbols == expectedSymbols, "symbols: control, option, shift, command, then the key name");

    std::string joined;
    for (const std::string& symbol : symbols) {
        joined += symbol;
    }
    require(shortcut.displayString() == joined, "the display string is the symbols joined");

    require(shortcut.isValid() == ((shortcut.modifiers & (256u | 2048u | 4096u)) != 0),
            "valid exactly with command, option or control");

    const std::optional<PropertyListValue> form = shortcut.propertyListValue();
    require(form.has_value() && form->dictionary() != nullptr && form->dictionary()->size() == 2,
            "stored as a dictionary of two entries");
    const auto keyCodeEntry = form->dictionary()->find("keyCode");
    const auto modifiersEntry = form->dictionary()->find("modifiers");
    require(keyCodeEntry != form->dictionary()->end() && keyCodeEntry->second.integer() != nullptr &&
                *keyCodeEntry->second.integer() == std::int64_t{shortcut.keyCode},
            "the stored key code is the integer key code");
    require(modifiersEntry != form->dictionary()->end() && modifiersEntry->second.integer() != nullptr &&
                *modifiersEntry->second.integer() == std::int64_t{shortcut.modifiers},
            "the stored modifiers are the integer mask");
    require(Shortcut::fromPropertyListValue(*form) == shortcut, "a shortcut reads back from its stored form");
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    FuzzInput input(data, size);

    const std::span<const orvik::KeyNameEntry> table = orvik::keyNameTable();
    const std::uint8_t keyChoice = input.byte();
    const std::uint32_t keyCode = (keyChoice & 1u) != 0 ? input.unsignedInteger<std::uint32_t>()
                                                        : table[std::size_t{keyChoice} / 2 % table.size()].keyCode;
    const auto modifiers = input.unsignedInteger<std::uint32_t>();
    checkShortcut(Shortcut{.keyCode = keyCode, .modifiers = modifiers});

    const auto eventKeyCode = input.unsignedInteger<std::uint16_t>();
    const auto flags = input.unsignedInteger<std::uint64_t>();
    const Shortcut fromEvent = Shortcut::fromEvent({.keyCode = eventKeyCode, .modifierFlags = flags});
    const auto flag = [flags](unsigned bit) { return (flags >> bit & 1u) != 0; };
    const std::uint32_t expectedModifiers = (flag(20) ? 256u : 0u) | (flag(17) ? 512u : 0u) |
                                            (flag(19) ? 2048u : 0u) | (flag(18) ? 4096u : 0u);
    require(fromEvent.keyCode == eventKeyCode, "an event's shortcut keeps its key code");
    require(fromEvent.modifiers == expectedModifiers,
            "flag bits 20, 17, 19 and 18 become command, shift, option and control; no other bit counts");
    checkShortcut(fromEvent);

    const PropertyListValue stored = input.boolean() ? tolvane::fuzz::propertyListValue(input)
                                                     : PropertyListValue(tolvane::fuzz::dictionary(input, 0));
    const std::optional<Shortcut> read = Shortcut::fromPropertyListValue(stored);
    const std::optional<Shortcut> expected = expectedShortcut(stored);
    require(read == expected, "a stored dictionary reads exactly when both fields are integers in range");
    if (read) {
        checkShortcut(*read);
    }
    return 0;
}
