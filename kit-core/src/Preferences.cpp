#include "OrvikKitCore/Preferences.h"

#include <cmath>

namespace orvik {

namespace detail {

namespace {

// 2^63, the first double past the signed 64-bit range.
constexpr double twoToThe63 = 9223372036854775808.0;

}  // namespace

std::optional<bool> castToBoolean(const PropertyListValue& stored) noexcept {
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

std::optional<std::int64_t> castToInteger(const PropertyListValue& stored) noexcept {
    if (const std::int64_t* integer = stored.integer()) {
        return *integer;
    }
    if (const bool* boolean = stored.boolean()) {
        return *boolean ? 1 : 0;
    }
    if (const double* real = stored.real()) {
        // Only integral values inside the range convert; NaN fails every test.
        if (*real >= -twoToThe63 && *real < twoToThe63 && std::trunc(*real) == *real) {
            return static_cast<std::int64_t>(*real);
        }
    }
    return std::nullopt;
}

std::optional<double> castToReal(const PropertyListValue& stored) noexcept {
    if (const double* real = stored.real()) {
        return *real;
    }
    if (const bool* boolean = stored.boolean()) {
        return *boolean ? 1.0 : 0.0;
    }
    if (const std::int64_t* integer = stored.integer()) {
        // Exact only: the double must convert back to the same integer.
        const auto real = static_cast<double>(*integer);
        if (real < twoToThe63 && static_cast<std::int64_t>(real) == *integer) {
            return real;
        }
    }
    return std::nullopt;
}

}  // namespace detail

std::optional<PropertyListValue> InMemoryPreferenceStore::object(std::string_view forKey) const {
    const auto found = values_.find(forKey);
    if (found == values_.end()) {
        return std::nullopt;
    }
    return found->second;
}

void InMemoryPreferenceStore::set(std::optional<PropertyListValue> value, std::string_view forKey) {
    if (!value) {
        if (const auto found = values_.find(forKey); found != values_.end()) {
            values_.erase(found);
        }
        return;
    }
    values_.insert_or_assign(std::string(forKey), std::move(*value));
}

}  // namespace orvik
