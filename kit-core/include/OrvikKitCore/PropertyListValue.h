// The dynamically typed value a preference store holds under a key: boolean,
// integer, double, string, byte data, or a string-keyed dictionary of such
// values. "No value" is not a variant; stores say it with std::optional.
//
// An immutable value type; copies share nested dictionaries.
#pragma once

#include <concepts>
#include <cstddef>
#include <cstdint>
#include <map>
#include <memory>
#include <string>
#include <type_traits>
#include <variant>
#include <vector>

namespace orvik {

namespace detail {

// Integer types whose every value a signed 64-bit integer holds; character
// types are text, not numbers, and are left out.
template <class Integer>
concept StorableInteger =
    std::integral<Integer> && !std::same_as<Integer, bool> && !std::same_as<Integer, char> &&
    !std::same_as<Integer, signed char> && !std::same_as<Integer, unsigned char> &&
    !std::same_as<Integer, wchar_t> && !std::same_as<Integer, char8_t> && !std::same_as<Integer, char16_t> &&
    !std::same_as<Integer, char32_t> && (std::is_signed_v<Integer> || sizeof(Integer) < sizeof(std::int64_t));

}  // namespace detail

class PropertyListValue {
public:
    using Data = std::vector<std::uint8_t>;
    using Dictionary = std::map<std::string, PropertyListValue, std::less<>>;

    enum class Kind : std::uint8_t { boolean, integer, real, string, data, dictionary };

    // Only the intended types convert, and each to its own kind: a bool to a
    // boolean (not a pointer or anything else that would decay to bool), an
    // integer to an integer (not a character), a float or double to a
    // double, text to a string, bytes to data.
    template <std::same_as<bool> Boolean>
    PropertyListValue(Boolean value) : storage_(bool{value}) {}
    template <class Integer>
        requires detail::StorableInteger<Integer>
    PropertyListValue(Integer value) : storage_(static_cast<std::int64_t>(value)) {}
    template <class Real>
        requires(std::same_as<Real, double> || std::same_as<Real, float>)
    PropertyListValue(Real value) : storage_(static_cast<double>(value)) {}
    PropertyListValue(std::string value) : storage_(std::move(value)) {}
    PropertyListValue(const char* value) : storage_(std::string(value)) {}
    PropertyListValue(std::nullptr_t) = delete;  // not a string
    PropertyListValue(Data value) : storage_(std::move(value)) {}
    PropertyListValue(Dictionary value);

    Kind kind() const noexcept { return static_cast<Kind>(storage_.index()); }

    // The value when it is of that kind exactly, else null. Readers that want
    // the platform's number bridging use the preference layer instead.
    const bool* boolean() const noexcept { return std::get_if<bool>(&storage_); }
    const std::int64_t* integer() const noexcept { return std::get_if<std::int64_t>(&storage_); }
    const double* real() const noexcept { return std::get_if<double>(&storage_); }
    const std::string* string() const noexcept { return std::get_if<std::string>(&storage_); }
    const Data* data() const noexcept { return std::get_if<Data>(&storage_); }
    const Dictionary* dictionary() const noexcept;

    // Deep equality; doubles compare as doubles (NaN equals nothing).
    friend bool operator==(const PropertyListValue& lhs, const PropertyListValue& rhs);

private:
    // The dictionary sits behind a pointer because the type is recursive.
    std::variant<bool, std::int64_t, double, std::string, Data, std::shared_ptr<const Dictionary>> storage_;
};

}  // namespace orvik
