// Property-list values built from fuzz input, and an equality that treats a
// NaN as equal to itself, shared by the preference and shortcut fuzzers.
//
// Value layout (what `propertyListValue` reads), one selector byte first:
//   selector % 8 == 0  boolean: one byte, low bit
//                  1  integer: one byte c; odd c: 8 bytes little-endian,
//                     even c: interestingIntegers[(c / 2) % size]
//                  2  real: one byte c; odd c: 8 bytes taken as the double's
//                     bits, even c: interestingReals[(c / 2) % size]
//                  3  string: one byte c; odd c: a length byte (at most 32)
//                     and the bytes, even c: stringWords[(c / 2) % size]
//                  4  data: a length byte (at most 32) and the bytes
//                  5-7 dictionary: a count byte (count % 7 entries), then per
//                     entry a key (as a string above, from dictionaryKeys)
//                     and a value; at depth `maximumDepth` no bytes and no
//                     entries
// Where the input runs out every read yields zero, which makes `false`.
#pragma once

#include <array>
#include <bit>
#include <cstddef>
#include <cstdint>
#include <limits>
#include <map>
#include <optional>
#include <string>
#include <string_view>

#include "FuzzInput.h"
#include "OrvikKitCore/PropertyListValue.h"

namespace tolvane::fuzz {

using namespace std::string_view_literals;

// Integers at the edges of what the number readings and the shortcut fields
// accept.
inline constexpr std::array<std::int64_t, 20> interestingIntegers{
    0,
    1,
    -1,
    2,
    std::numeric_limits<std::int64_t>::min(),
    std::numeric_limits<std::int64_t>::min() + 1,
    std::numeric_limits<std::int64_t>::max(),
    std::numeric_limits<std::int64_t>::max() - 1,
    std::int64_t{1} << 53,             // the last of the run of integers a double holds
    (std::int64_t{1} << 53) + 1,       // the first integer a double does not hold
    -(std::int64_t{1} << 53) - 1,
    std::int64_t{1} << 62,             // a power of two: held exactly despite its size
    std::int64_t{4294967295},          // the largest shortcut field
    std::int64_t{4294967296},          // one past it
    256 | 2048 | 4096,                 // command, option and control
    512,                               // shift
    40,                                // key code of K
    53,                                // key code of escape
    -4294967295,
    1000000,
};

// Doubles at the edges of the number readings, and every kind of special value.
inline constexpr std::array<double, 24> interestingReals{
    0.0,
    -0.0,
    1.0,
    -1.0,
    0.5,
    std::numeric_limits<double>::quiet_NaN(),
    -std::numeric_limits<double>::quiet_NaN(),
    std::bit_cast<double>(std::uint64_t{0x7FF0000000000001}),  // a signalling NaN
    std::bit_cast<double>(std::uint64_t{0x7FF8DEADBEEF0000}),  // a NaN with a payload
    std::numeric_limits<double>::infinity(),
    -std::numeric_limits<double>::infinity(),
    9223372036854775808.0,   // 2^63: just past the signed 64-bit range
    -9223372036854775808.0,  // -2^63: the range's lowest value
    9223372036854774784.0,   // the largest double below 2^63
    9007199254740992.0,      // 2^53
    9007199254740994.0,      // 2^53 + 2
    4294967295.0,
    4294967296.0,
    std::numeric_limits<double>::denorm_min(),
    std::numeric_limits<double>::min(),
    std::numeric_limits<double>::max(),
    40.0,
    1.0000000000000002,  // the next double after 1
    2048.5,
};

inline constexpr std::array stringWords{
    ""sv,           "launchMusic"sv, "ignore"sv, "system"sv,  "LaunchMusic"sv,
    "launchMusic\0"sv, "keyCode"sv,   "modifiers"sv, "1"sv,      "true"sv,
};

inline constexpr std::array dictionaryKeys{
    "keyCode"sv, "modifiers"sv, ""sv, "a"sv, "keycode"sv, "keyCode\0"sv, "modifiers "sv, "other"sv,
};

inline constexpr int maximumDepth = 4;

template <std::size_t Size>
std::string stringOrWord(FuzzInput& input, const std::array<std::string_view, Size>& words) {
    const std::uint8_t choice = input.byte();
    if ((choice & 1u) != 0) {
        return input.string(32);
    }
    return std::string(words[std::size_t{choice} / 2 % Size]);
}

inline orvik::PropertyListValue propertyListValue(FuzzInput& input, int depth = 0);

inline orvik::PropertyListValue::Dictionary dictionary(FuzzInput& input, int depth) {
    orvik::PropertyListValue::Dictionary entries;
    if (depth >= maximumDepth) {
        return entries;
    }
    const std::size_t count = input.below(7);
    for (std::size_t index = 0; index < count; ++index) {
        std::string key = stringOrWord(input, dictionaryKeys);
        orvik::PropertyListValue value = propertyListValue(input, depth + 1);
        entries.emplace(std::move(key), std::move(value));  // a repeated key keeps its first value
    }
    return entries;
}

inline orvik::PropertyListValue propertyListValue(FuzzInput& input, int depth) {
    switch (input.below(8)) {
    case 0: return orvik::PropertyListValue(input.boolean());
    case 1: {
        const std::uint8_t choice = input.byte();
        return orvik::PropertyListValue((choice & 1u) != 0 ? input.signedInteger<std::int64_t>()
                                                           : interestingIntegers[std::size_t{choice} / 2 %
                                                                                 interestingIntegers.size()]);
    }
    case 2: {
        const std::uint8_t choice = input.byte();
        return orvik::PropertyListValue((choice & 1u) != 0
                                            ? input.real()
                                            : interestingReals[std::size_t{choice} / 2 % interestingReals.size()]);
    }
    case 3: return orvik::PropertyListValue(stringOrWord(input, stringWords));
    case 4: return orvik::PropertyListValue(input.data(32));
    default: return orvik::PropertyListValue(dictionary(input, depth));
    }
}

// Doubles compare by bit pattern: a NaN equals an identical NaN, and 0.0 and
// -0.0 differ. Everything else compares as usual, dictionaries deeply.
inline bool sameBits(double lhs, double rhs) noexcept {
    return std::bit_cast<std::uint64_t>(lhs) == std::bit_cast<std::uint64_t>(rhs);
}

inline bool sameValue(const orvik::PropertyListValue& lhs, const orvik::PropertyListValue& rhs) {
    if (lhs.kind() != rhs.kind()) {
        return false;
    }
    switch (lhs.kind()) {
    case orvik::PropertyListValue::Kind::boolean: return *lhs.boolean() == *rhs.boolean();
    case orvik::PropertyListValue::Kind::integer: return *lhs.integer() == *rhs.integer();
    case orvik::PropertyListValue::Kind::real: return sameBits(*lhs.real(), *rhs.real());
    case orvik::PropertyListValue::Kind::string: return *lhs.string() == *rhs.string();
    case orvik::PropertyListValue::Kind::data: return *lhs.data() == *rhs.data();
    case orvik::PropertyListValue::Kind::dictionary: {
        const auto& left = *lhs.dictionary();
        const auto& right = *rhs.dictionary();
        if (left.size() != right.size()) {
            return false;
        }
        for (auto l = left.begin(), r = right.begin(); l != left.end(); ++l, ++r) {
            if (l->first != r->first || !sameValue(l->second, r->second)) {
                return false;
            }
        }
        return true;
    }
    }
    return false;
}

// Whether a NaN sits anywhere in the value (which then cannot equal itself).
inline bool holdsNaN(const orvik::PropertyListValue& value) {
    if (const double* real = value.real()) {
        return *real != *real;
    }
    if (const auto* entries = value.dictionary()) {
        for (const auto& [key, element] : *entries) {
            if (holdsNaN(element)) {
                return true;
            }
        }
    }
    return false;
}

}  // namespace tolvane::fuzz
