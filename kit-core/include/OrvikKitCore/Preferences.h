// Typed preferences over a small storage interface.
//
// A `Preference<Value>` is a key with a default. A `PreferenceStore` holds
// property-list values by key; `read` and `write` convert through the value
// type's `PreferenceTraits`. A stored value of the wrong form is never an
// error: it reads as the preference's default and stays untouched until the
// next write of that key.
//
// Stores are reference objects shared through std::shared_ptr and used from
// the main thread only; none of this allocates on any hot path.
#pragma once

#include <concepts>
#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <type_traits>
#include <utility>

#include "OrvikKitCore/PropertyListValue.h"

namespace orvik {

// How a value type becomes a property-list value and is read back. Specialised
// below for the primitive types, optionals, string-keyed dictionaries,
// raw-representable types, and types that carry the two operations as members.
template <class Value>
struct PreferenceTraits;

template <class Value>
concept PreferenceValue = requires(const Value& value, const PropertyListValue& stored) {
    { PreferenceTraits<Value>::propertyListValue(value) } -> std::same_as<std::optional<PropertyListValue>>;
    { PreferenceTraits<Value>::fromPropertyListValue(stored) } -> std::same_as<std::optional<Value>>;
};

// The value as a property-list value, or nothing (an empty optional).
template <PreferenceValue Value>
std::optional<PropertyListValue> propertyListValue(const Value& value) {
    return PreferenceTraits<Value>::propertyListValue(value);
}

// The value read back from a stored property-list value, or nothing when the
// stored value does not have the required form.
template <PreferenceValue Value>
std::optional<Value> fromPropertyListValue(const PropertyListValue& stored) {
    return PreferenceTraits<Value>::fromPropertyListValue(stored);
}

// --- Primitives -------------------------------------------------------------
//
// The conditional casts follow the platform's number bridging, as a number
// read from the user defaults would: booleans, integers and doubles are all
// numbers, and a number reads as another numeric type when its value is
// represented exactly (0 and 1 as booleans, integral doubles as integers,
// integers a double holds exactly as doubles). A string never reads as a
// number and a number never as a string.

template <class Value>
concept PropertyListPrimitive = std::same_as<Value, bool> || std::same_as<Value, std::int64_t> ||
                                std::same_as<Value, double> || std::same_as<Value, std::string> ||
                                std::same_as<Value, PropertyListValue::Data>;

namespace detail {

std::optional<bool> castToBoolean(const PropertyListValue& stored) noexcept;
std::optional<std::int64_t> castToInteger(const PropertyListValue& stored) noexcept;
std::optional<double> castToReal(const PropertyListValue& stored) noexcept;

}  // namespace detail

template <PropertyListPrimitive Value>
struct PreferenceTraits<Value> {
    static std::optional<PropertyListValue> propertyListValue(const Value& value) { return PropertyListValue(value); }

    static std::optional<Value> fromPropertyListValue(const PropertyListValue& stored) {
        if constexpr (std::same_as<Value, bool>) {
            return detail::castToBoolean(stored);
        } else if constexpr (std::same_as<Value, std::int64_t>) {
            return detail::castToInteger(stored);
        } else if constexpr (std::same_as<Value, double>) {
            return detail::castToReal(stored);
        } else if constexpr (std::same_as<Value, std::string>) {
            return stored.string() != nullptr ? std::optional<Value>(*stored.string()) : std::nullopt;
        } else {
            return stored.data() != nullptr ? std::optional<Value>(*stored.data()) : std::nullopt;
        }
    }
};

// --- Optionals: the wrapped value's form, absent when empty -----------------

template <PreferenceValue Wrapped>
struct PreferenceTraits<std::optional<Wrapped>> {
    static std::optional<PropertyListValue> propertyListValue(const std::optional<Wrapped>& value) {
        return value ? PreferenceTraits<Wrapped>::propertyListValue(*value) : std::nullopt;
    }
    // The wrapped type's reading; when that fails the whole reading fails.
    static std::optional<std::optional<Wrapped>> fromPropertyListValue(const PropertyListValue& stored) {
        auto wrapped = PreferenceTraits<Wrapped>::fromPropertyListValue(stored);
        if (!wrapped) {
            return std::nullopt;
        }
        return std::optional<std::optional<Wrapped>>(std::in_place, std::move(*wrapped));
    }
};

// --- String-keyed dictionaries ------------------------------------------------

template <PreferenceValue Element>
struct PreferenceTraits<std::map<std::string, Element>> {
    using Value = std::map<std::string, Element>;

    // Entries whose form is absent are left out.
    static std::optional<PropertyListValue> propertyListValue(const Value& value) {
        PropertyListValue::Dictionary dictionary;
        for (const auto& [key, element] : value) {
            if (auto form = PreferenceTraits<Element>::propertyListValue(element)) {
                dictionary.emplace(key, std::move(*form));
            }
        }
        return PropertyListValue(std::move(dictionary));
    }
    // Fails unless the stored value is a dictionary; entries that do not read
    // are dropped and the rest kept.
    static std::optional<Value> fromPropertyListValue(const PropertyListValue& stored) {
        const auto* dictionary = stored.dictionary();
        if (dictionary == nullptr) {
            return std::nullopt;
        }
        Value value;
        for (const auto& [key, element] : *dictionary) {
            if (auto read = PreferenceTraits<Element>::fromPropertyListValue(element)) {
                value.emplace(key, std::move(*read));
            }
        }
        return value;
    }
};

// --- Raw-representable types -------------------------------------------------
//
// A type is raw-representable when `rawValue(value)` and
// `fromRawValue(std::type_identity<Type>{}, raw)` are found for it by
// argument-dependent lookup (beside the type, in its own namespace). It is
// stored as its raw value's form; a raw value that builds no value fails.

namespace detail {

// Raw values handed out as string views are stored as strings.
template <class Raw>
using StoredRawValue = std::conditional_t<std::is_convertible_v<Raw, std::string_view>, std::string, std::remove_cvref_t<Raw>>;

template <class Value>
using RawValueOf = StoredRawValue<decltype(rawValue(std::declval<const Value&>()))>;

}  // namespace detail

template <class Value>
concept RawRepresentable = requires(const Value& value) {
    rawValue(value);
    requires PreferenceValue<detail::RawValueOf<Value>>;
    {
        fromRawValue(std::type_identity<Value>{}, std::declval<const detail::RawValueOf<Value>&>())
    } -> std::same_as<std::optional<Value>>;
};

template <RawRepresentable Value>
struct PreferenceTraits<Value> {
    using Raw = detail::RawValueOf<Value>;

    static std::optional<PropertyListValue> propertyListValue(const Value& value) {
        return PreferenceTraits<Raw>::propertyListValue(Raw(rawValue(value)));
    }
    static std::optional<Value> fromPropertyListValue(const PropertyListValue& stored) {
        auto raw = PreferenceTraits<Raw>::fromPropertyListValue(stored);
        if (!raw) {
            return std::nullopt;
        }
        return fromRawValue(std::type_identity<Value>{}, *raw);
    }
};

// --- Types that carry the conversion as members --------------------------------

template <class Value>
concept HasPropertyListMembers = requires(const Value& value, const PropertyListValue& stored) {
    { value.propertyListValue() } -> std::same_as<std::optional<PropertyListValue>>;
    { Value::fromPropertyListValue(stored) } -> std::same_as<std::optional<Value>>;
};

template <HasPropertyListMembers Value>
struct PreferenceTraits<Value> {
    static std::optional<PropertyListValue> propertyListValue(const Value& value) { return value.propertyListValue(); }
    static std::optional<Value> fromPropertyListValue(const PropertyListValue& stored) {
        return Value::fromPropertyListValue(stored);
    }
};

// --- Preferences and stores ------------------------------------------------------

// A setting: its storage key (used verbatim) and the value read whenever the
// store has no usable value under it. Declared once, as a constant, by the
// code that owns the setting.
//
// The key is a compile-time constant that the preference does not own, so a
// preference declared at namespace or class scope is initialised before any
// code runs, whatever the order of static initialisation.
template <PreferenceValue Value>
struct Preference {
    std::string_view key;
    Value defaultValue;
};

class PreferenceStore {
public:
    virtual ~PreferenceStore() = default;

    // The property-list value stored under `key`, or nothing.
    virtual std::optional<PropertyListValue> object(std::string_view forKey) const = 0;
    // Stores `value` under `key`; nothing removes the key.
    virtual void set(std::optional<PropertyListValue> value, std::string_view forKey) = 0;

    // The stored value when it reads as `Value`, else the preference's
    // default. Never writes.
    template <PreferenceValue Value>
    Value read(const Preference<Value>& preference) const {
        if (auto stored = object(preference.key)) {
            if (auto value = PreferenceTraits<Value>::fromPropertyListValue(*stored)) {
                return std::move(*value);
            }
        }
        return preference.defaultValue;
    }

    // Stores the value's property-list form. Writing an empty optional
    // removes the key, so the next read yields the default. The value's type
    // comes from the preference alone, so literals convert to it
    // (`write(count, 5)`, `write(optionalName, "x")`).
    template <PreferenceValue Value>
    void write(const Preference<Value>& preference, const std::type_identity_t<Value>& value) {
        set(PreferenceTraits<Value>::propertyListValue(value), preference.key);
    }

protected:
    PreferenceStore() = default;
    // Stores are shared by reference, never copied.
    PreferenceStore(const PreferenceStore&) = delete;
    PreferenceStore& operator=(const PreferenceStore&) = delete;
};

// A store that keeps its values in memory: for previews, snapshots and tests.
class InMemoryPreferenceStore final : public PreferenceStore {
public:
    using Values = std::map<std::string, PropertyListValue, std::less<>>;

    explicit InMemoryPreferenceStore(Values values = {}) : values_(std::move(values)) {}

    std::optional<PropertyListValue> object(std::string_view forKey) const override;
    void set(std::optional<PropertyListValue> value, std::string_view forKey) override;

    const Values& values() const noexcept { return values_; }

private:
    Values values_;
};

}  // namespace orvik
