// Who the app is, as the build names it.
//
// The bundle identifier is configured once, in cmake/AppBundle.cmake, and
// reaches both the bundle's Info.plist (CFBundleIdentifier) and this
// function, so the two cannot drift apart (tests/bundle checks that they
// agree). The app logs under it and labels its scripting queue with it even
// when the process's main bundle has no identifier (a test runner, a bare
// executable).
#pragma once

#include <string_view>

namespace tolvane {

// "com.orvikworks.Tolvane" as the build configures it.
std::string_view bundleIdentifier() noexcept;

}  // namespace tolvane
