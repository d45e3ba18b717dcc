// A point in time as the kit stores it: seconds since 1970-01-01 00:00 UTC,
// held as a double (as preference values carry it).
#pragma once

#include <chrono>

namespace orvik {

using Seconds = std::chrono::duration<double>;
using Date = std::chrono::time_point<std::chrono::system_clock, Seconds>;

constexpr Date dateFromSecondsSince1970(double seconds) noexcept { return Date(Seconds(seconds)); }
constexpr double secondsSince1970(Date date) noexcept { return date.time_since_epoch().count(); }

}  // namespace orvik
