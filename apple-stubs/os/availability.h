// Availability annotations, reduced to the macOS form used in these stubs:
// API_AVAILABLE(macos(13.0)) becomes clang's availability attribute.
#pragma once

// A version far in the future: "to be deprecated", not deprecated yet.
#define API_TO_BE_DEPRECATED 100000
#define __API_AVAILABLE_PLATFORM_macos(version) macos, introduced = version
#define API_AVAILABLE(platform) __attribute__((availability(__API_AVAILABLE_PLATFORM_##platform)))
#define __API_DEPRECATED_PLATFORM_macos(introduced_, deprecated_) macos, introduced = introduced_, deprecated = deprecated_
#define API_DEPRECATED(text, platform) \
    __attribute__((availability(__API_DEPRECATED_PLATFORM_##platform, message = text)))
