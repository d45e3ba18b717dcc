// Reads an arbitrary stored property-list value as every preference type the
// apps use, through the store and through the conversion alone.
//
// Input layout:
//   byte        low bit set: the value is stored under the key; clear: the
//               key is absent (only the neighbour is stored)
//   string      the key: a length byte (at most 32) and the bytes
//   value       the stored value (layout in PropertyListFuzzing.h)
//   string      a neighbour's key, then its value, stored too (unless its key
//               is the key itself, which keeps the first value)
//   then        the defaults, one per type in the order of the checks below
//
// For each type: the reading follows the rule restated here; reading never
// writes; a failed reading yields the default; a value read and written back
// reads back the same (doubles compared by bit pattern, so a NaN counts).

#include <bit>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <utility>

#include "FuzzInput.h"
#include "OrvikKitCore/Preferences.h"
#include "OrvikKitCore/PropertyListValue.h"
#include "OrvikKitCore/Shortcut.h"
#include "PropertyListFuzzing.h"
#include "ReadingRules.h"
#include "TolvaneCore/KeyRouting.h"

namespace {

using orvik::PropertyListValue;
using orvik::Shortcut;
using tolvane::ClosedBehavior;
using tolvane::fuzz::FuzzInput;
using tolvane::fuzz::expectedBoolean;
using tolvane::fuzz::expectedInteger;
using tolvane::fuzz::expectedReal;
using tolvane::fuzz::expectedString;
using tolvane::fuzz::expectedData;
using tolvane::fuzz::wrapped;
using tolvane::fuzz::expectedMap;
using tolvane::fuzz::expectedClosedBehavior;
using tolvane::fuzz::expectedShortcut;
using tolvane::fuzz::require;
using tolvane::fuzz::sameBits;
using tolvane::fuzz::sameValue;
using Values = orvik::InMemoryPreferenceStore::Values;

// --- Sameness of preference values (NaN equal to itself) --------------------

template <class Value>
bool same(const Value& lhs, const Value& rhs);
bool same(double lhs, double rhs);
bool same(const PropertyListValue& lhs, const PropertyListValue& rhs);
template <class Value>
bool same(const std::optional<Value>& lhs, const std::optional<Value>& rhs);
template <class Value, class Compare>
bool same(const std::map<std::string, Value, Compare>& lhs, const std::map<std::string, Value, Compare>& rhs);

template <class Value>
bool same(const Value& lhs, const Value& rhs) {
    return lhs == rhs;
}

bool same(double lhs, double rhs) { return sameBits(lhs, rhs); }

bool same(const PropertyListValue& lhs, const PropertyListValue& rhs) { return sameValue(lhs, rhs); }

template <class Value>
bool same(const std::optional<Value>& lhs, const std::optional<Value>& rhs) {
    return lhs.has_value() == rhs.has_value() && (!lhs || same(*lhs, *rhs));
}

template <class Value, class Compare>
bool same(const std::map<std::string, Value, Compare>& lhs, const std::map<std::string, Value, Compare>& rhs) {
    if (lhs.size() != rhs.size()) {
        return false;
    }
    for (auto l = lhs.begin(), r = rhs.begin(); l != lhs.end(); ++l, ++r) {
        if (l->first != r->first || !same(l->second, r->second)) {
            return false;
        }
    }
    return true;
}

// --- The checks -----------------------------------------------------------------

// Checks one preference type against the stored values, given the rule's
// reading of the value under `key` (nothing when absent or unreadable).
template <class Value>
void checkPreference(const Values& values, const std::string& key, const Value& defaultValue,
                     const std::optional<Value>& expected) {
    const auto found = values.find(key);
    const std::optional<Value> converted =
        found != values.end() ? orvik::fromPropertyListValue<Value>(found->second) : std::nullopt;
    require(same(converted, expected), "the conversion reads a value as the rule does");

    orvik::InMemoryPreferenceStore store(values);
    const orvik::Preference<Value> preference{key, defaultValue};
    const Value read = store.read(preference);
    require(same(store.values(), values), "reading never writes");
    require(same(read, expected ? *expected : defaultValue), "a read yields the stored value, else the default");
    if (!expected) {
        return;
    }

    const std::optional<PropertyListValue> form = orvik::propertyListValue(read);
    require(form.has_value(), "a value read from the store has a stored form");
    const std::optional<Value> convertedBack = orvik::fromPropertyListValue<Value>(*form);
    require(convertedBack.has_value() && same(*convertedBack, read), "a stored form converts back to its value");

    store.write(preference, read);
    for (const auto& [storedKey, storedValue] : values) {
        if (storedKey != key) {
            const auto kept = store.values().find(storedKey);
            require(kept != store.values().end() && sameValue(kept->second, storedValue),
                    "writing one key leaves the others alone");
        }
    }
    const auto written = store.values().find(key);
    require(written != store.values().end() && sameValue(written->second, *form), "a write stores the value's form");
    require(store.values().size() == values.size(), "a write back adds no key");

    const Value reread = store.read(preference);
    require(same(reread, read), "a value read, written back and read again is unchanged");
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    FuzzInput input(data, size);

    const bool storesKey = input.boolean();
    const std::string key = input.string(32);
    const PropertyListValue value = tolvane::fuzz::propertyListValue(input);
    const std::string neighbourKey = input.string(32);
    const PropertyListValue neighbour = tolvane::fuzz::propertyListValue(input);

    // Deep equality holds for a copy unless a NaN sits somewhere inside.
    const PropertyListValue copy = value;
    require((copy == value) == !tolvane::fuzz::holdsNaN(value), "a value equals its copy unless it holds a NaN");

    Values values;
    if (storesKey) {
        values.emplace(key, value);
    }
    values.emplace(neighbourKey, neighbour);

    const auto stored = values.find(key);
    const PropertyListValue* storedValue = stored != values.end() ? &stored->second : nullptr;
    // The rule's reading of the value under the key; nothing when absent.
    const auto expect = [storedValue](auto reading) -> decltype(reading(*storedValue)) {
        if (storedValue == nullptr) {
            return std::nullopt;
        }
        return reading(*storedValue);
    };

    checkPreference<bool>(values, key, input.boolean(), expect(expectedBoolean));
    checkPreference<std::int64_t>(values, key, input.signedInteger<std::int64_t>(), expect(expectedInteger));
    checkPreference<double>(values, key, input.real(), expect(expectedReal));
    checkPreference<std::string>(values, key, input.string(12), expect(expectedString));
    checkPreference<PropertyListValue::Data>(values, key, input.data(12), expect(expectedData));

    std::optional<std::string> defaultString;
    if (input.boolean()) {
        defaultString = input.string(12);
    }
    checkPreference<std::optional<std::string>>(
        values, key, defaultString, expect([](const PropertyListValue& v) { return wrapped(expectedString(v)); }));

    std::optional<double> defaultReal;
    if (input.boolean()) {
        defaultReal = input.real();
    }
    checkPreference<std::optional<double>>(values, key, defaultReal,
                                           expect([](const PropertyListValue& v) { return wrapped(expectedReal(v)); }));

    std::map<std::string, std::int64_t> defaultIntegers;
    if (input.boolean()) {
        std::string entryKey = input.string(12);
        defaultIntegers.emplace(std::move(entryKey), input.signedInteger<std::int64_t>());
    }
    checkPreference<std::map<std::string, std::int64_t>>(
        values, key, defaultIntegers,
        expect([](const PropertyListValue& v) { return expectedMap<std::int64_t>(v, expectedInteger); }));

    std::map<std::string, std::optional<bool>> defaultFlags;
    if (input.boolean()) {
        std::string entryKey = input.string(12);
        defaultFlags.emplace(std::move(entryKey), input.boolean());
    }
    checkPreference<std::map<std::string, std::optional<bool>>>(
        values, key, defaultFlags, expect([](const PropertyListValue& v) {
            return expectedMap<std::optional<bool>>(
                v, [](const PropertyListValue& element) { return wrapped(expectedBoolean(element)); });
        }));

    checkPreference<ClosedBehavior>(values, key, input.pick(tolvane::allClosedBehaviors),
                                    expect(expectedClosedBehavior));

    const auto defaultKeyCode = input.unsignedInteger<std::uint32_t>();
    const auto defaultModifiers = input.unsignedInteger<std::uint32_t>();
    checkPreference<Shortcut>(values, key, Shortcut{.keyCode = defaultKeyCode, .modifiers = defaultModifiers},
                              expect(expectedShortcut));
    return 0;
}
