// The preference readings restated plainly, as the fuzz targets expect them:
// numbers bridge when the value is held exactly, strings and data read only
// as themselves, a shortcut is a dictionary of two integers in the unsigned
// 32-bit range. Shared by the preference and shortcut fuzz targets.
#pragma once

#include <cmath>
#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <string_view>

#include "OrvikKitCore/PropertyListValue.h"
#include "OrvikKitCore/Shortcut.h"
#include "TolvaneCore/KeyRouting.h"

namespace tolvane::fuzz {

using orvik::PropertyListValue;
using orvik::Shortcut;

// Numbers bridge when the value is held exactly: 0 and 1 (as integers or
// doubles) are booleans, integral doubles in the signed 64-bit range are
// integers, integers whose significant bits fit a double's 53 are doubles, and
// a boolean is the number 0 or 1. Strings and data read only as themselves.

inline std::optional<bool> expectedBoolean(const PropertyListValue& stored) {
    if (const bool* boolean = stored.boolean()) {
        return *boolean;
    }
    if (const std::int64_t* integer = stored.integer()) {
        if (*integer == 0 || *integer == 1) {
            return *integer == 1;
        }
    }
    if (const double* real = stored.real()) {
        if (*real == 0.0 || *real == 1.0) {
            return *real == 1.0;
        }
    }
    return std::nullopt;
}

inline std::optional<std::int64_t> expectedInteger(const PropertyListValue& stored) {
    if (const std::int64_t* integer = stored.integer()) {
        return *integer;
    }
    if (const bool* boolean = stored.boolean()) {
        return *boolean ? 1 : 0;
    }
    if (const double* real = stored.real()) {
        if (std::isfinite(*real) && std::floor(*real) == *real && *real >= -0x1p63 && *real < 0x1p63) {
            return static_cast<std::int64_t>(*real);
        }
    }
    return std::nullopt;
}

inline std::optional<double> expectedReal(const PropertyListValue& stored) {
    if (const double* real = stored.real()) {
        return *real;
    }
    if (const bool* boolean = stored.boolean()) {
        return *boolean ? 1.0 : 0.0;
    }
    if (const std::int64_t* integer = stored.integer()) {
        // Two's complement negation in unsigned arithmetic, so that the lowest
        // value has a magnitude too (2^63, which a double holds).
        const auto bits = static_cast<std::uint64_t>(*integer);
        const std::uint64_t magnitude = *integer < 0 ? std::uint64_t{0} - bits : bits;
        const bool fits = magnitude == 0 || (magnitude >> std::countr_zero(magnitude)) < (std::uint64_t{1} << 53);
        if (fits) {
            return static_cast<double>(*integer);
        }
    }
    return std::nullopt;
}

inline std::optional<std::string> expectedString(const PropertyListValue& stored) {
    if (const std::string* string = stored.string()) {
        return *string;
    }
    return std::nullopt;
}

inline std::optional<PropertyListValue::Data> expectedData(const PropertyListValue& stored) {
    if (const PropertyListValue::Data* data = stored.data()) {
        return *data;
    }
    return std::nullopt;
}

// An optional reads as its wrapped type, and fails when that fails.
template <class Value>
inline std::optional<std::optional<Value>> wrapped(const std::optional<Value>& reading) {
    if (!reading) {
        return std::nullopt;
    }
    return std::optional<std::optional<Value>>(std::in_place, *reading);
}

// A dictionary reads as a map of the entries that read; anything else fails.
template <class Element, class Reading>
inline std::optional<std::map<std::string, Element>> expectedMap(const PropertyListValue& stored, Reading reading) {
    const PropertyListValue::Dictionary* dictionary = stored.dictionary();
    if (dictionary == nullptr) {
        return std::nullopt;
    }
    std::map<std::string, Element> map;
    for (const auto& [key, element] : *dictionary) {
        if (auto read = reading(element)) {
            map.emplace(key, *read);
        }
    }
    return map;
}

// A behaviour is stored as the string of its case name, compared exactly.
inline std::optional<ClosedBehavior> expectedClosedBehavior(const PropertyListValue& stored) {
    const std::optional<std::string> raw = expectedString(stored);
    if (raw == "launchMusic") {
        return ClosedBehavior::launchMusic;
    }
    if (raw == "ignore") {
        return ClosedBehavior::ignore;
    }
    if (raw == "system") {
        return ClosedBehavior::system;
    }
    return std::nullopt;
}

// A shortcut is a dictionary whose "keyCode" and "modifiers" read as integers
// from 0 to 2^32 - 1.
inline std::optional<Shortcut> expectedShortcut(const PropertyListValue& stored) {
    const PropertyListValue::Dictionary* dictionary = stored.dictionary();
    if (dictionary == nullptr) {
        return std::nullopt;
    }
    const auto field = [dictionary](std::string_view name) -> std::optional<std::uint32_t> {
        const auto found = dictionary->find(name);
        if (found == dictionary->end()) {
            return std::nullopt;
        }
        const std::optional<std::int64_t> integer = expectedInteger(found->second);
        if (!integer || *integer < 0 || *integer > 4294967295) {
            return std::nullopt;
        }
        return static_cast<std::uint32_t>(*integer);
    };
    const auto keyCode = field("keyCode");
    const auto modifiers = field("modifiers");
    if (!keyCode || !modifiers) {
        return std::nullopt;
    }
    return Shortcut{.keyCode = *keyCode, .modifiers = *modifiers};
}

}  // namespace tolvane::fuzz
