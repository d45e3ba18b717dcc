#include "OrvikKitCore/Shortcut.h"

#include <algorithm>
#include <array>
#include <limits>

#include "OrvikKitCore/Preferences.h"

namespace orvik {

namespace {

// Sorted by key code so that lookups can bisect.
constexpr auto sortedKeyNames = [] {
    std::array<KeyNameEntry, 68> table{{
        {0, "A"},    {11, "B"},   {8, "C"},    {2, "D"},    {14, "E"},   {3, "F"},    {5, "G"},
        {4, "H"},    {34, "I"},   {38, "J"},   {40, "K"},   {37, "L"},   {46, "M"},   {45, "N"},
        {31, "O"},   {35, "P"},   {12, "Q"},   {15, "R"},   {1, "S"},    {17, "T"},   {32, "U"},
        {9, "V"},    {13, "W"},   {7, "X"},    {16, "Y"},   {6, "Z"},

        {29, "0"},   {18, "1"},   {19, "2"},   {20, "3"},   {21, "4"},   {23, "5"},   {22, "6"},
        {26, "7"},   {28, "8"},   {25, "9"},

        {122, "F1"}, {120, "F2"}, {99, "F3"},  {118, "F4"}, {96, "F5"},  {97, "F6"},  {98, "F7"},
        {100, "F8"}, {101, "F9"}, {109, "F10"}, {103, "F11"}, {111, "F12"},

        {123, "\u2190"}, {124, "\u2192"}, {125, "\u2193"}, {126, "\u2191"},  // ← → ↓ ↑
        {49, "Space"},
        {36, "\u21A9"},  // ↩ return
        {48, "\u21E5"},  // ⇥ tab
        {51, "\u232B"},  // ⌫ delete
        {53, "\u238B"},  // ⎋ escape
        {27, "-"},   {24, "="},   {33, "["},   {30, "]"},   {41, ";"},   {39, "'"},   {43, ","},
        {47, "."},   {44, "/"},   {42, "\\"},  {50, "`"},
    }};
    std::sort(table.begin(), table.end(),
              [](const KeyNameEntry& lhs, const KeyNameEntry& rhs) { return lhs.keyCode < rhs.keyCode; });
    return table;
}();

static_assert(std::adjacent_find(sortedKeyNames.begin(), sortedKeyNames.end(),
                                 [](const KeyNameEntry& lhs, const KeyNameEntry& rhs) {
                                     return lhs.keyCode == rhs.keyCode;
                                 }) == sortedKeyNames.end(),
              "every key code is named once");

constexpr std::uint32_t maximumField = std::numeric_limits<std::uint32_t>::max();

std::optional<std::uint32_t> readField(const PropertyListValue::Dictionary& dictionary, std::string_view key) {
    const auto found = dictionary.find(key);
    if (found == dictionary.end()) {
        return std::nullopt;
    }
    const auto integer = fromPropertyListValue<std::int64_t>(found->second);
    if (!integer || *integer < 0 || *integer > std::int64_t{maximumField}) {
        return std::nullopt;
    }
    return static_cast<std::uint32_t>(*integer);
}

}  // namespace

std::span<const KeyNameEntry> keyNameTable() noexcept { return sortedKeyNames; }

std::string Shortcut::keyName(std::uint32_t keyCode) {
    const auto found = std::lower_bound(sortedKeyNames.begin(), sortedKeyNames.end(), keyCode,
                                        [](const KeyNameEntry& entry, std::uint32_t code) { return entry.keyCode < code; });
    if (found != sortedKeyNames.end() && found->keyCode == keyCode) {
        return std::string(found->name);
    }
    std::string name = std::to_string(keyCode);
    name.insert(name.begin(), '#');
    return name;
}

std::vector<std::string> Shortcut::symbols() const {
    std::vector<std::string> symbols;
    if ((modifiers & control) != 0) symbols.emplace_back("\u2303");  // ⌃
    if ((modifiers & option) != 0) symbols.emplace_back("\u2325");   // ⌥
    if ((modifiers & shift) != 0) symbols.emplace_back("\u21E7");    // ⇧
    if ((modifiers & command) != 0) symbols.emplace_back("\u2318");  // ⌘
    symbols.push_back(keyName(keyCode));
    return symbols;
}

std::string Shortcut::displayString() const {
    std::string display;
    for (const std::string& symbol : symbols()) {
        display += symbol;
    }
    return display;
}

std::optional<PropertyListValue> Shortcut::propertyListValue() const {
    return PropertyListValue(PropertyListValue::Dictionary{
        {"keyCode", PropertyListValue(std::int64_t{keyCode})},
        {"modifiers", PropertyListValue(std::int64_t{modifiers})},
    });
}

std::optional<Shortcut> Shortcut::fromPropertyListValue(const PropertyListValue& stored) {
    const auto* dictionary = stored.dictionary();
    if (dictionary == nullptr) {
        return std::nullopt;
    }
    const auto keyCode = readField(*dictionary, "keyCode");
    const auto modifiers = readField(*dictionary, "modifiers");
    if (!keyCode || !modifiers) {
        return std::nullopt;
    }
    return Shortcut{.keyCode = *keyCode, .modifiers = *modifiers};
}

}  // namespace orvik
