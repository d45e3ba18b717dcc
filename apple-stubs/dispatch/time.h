// <dispatch/time.h>
#pragma once

typedef uint64_t dispatch_time_t;

#define NSEC_PER_SEC 1000000000ull
#define DISPATCH_TIME_NOW (0ull)
#define DISPATCH_TIME_FOREVER (~0ull)

extern "C" {

API_AVAILABLE(macos(10.6))
dispatch_time_t dispatch_time(dispatch_time_t when, int64_t delta);

}
