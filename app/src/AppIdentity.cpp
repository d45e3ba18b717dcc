#include "Tolvane/AppIdentity.h"

// Set by app/CMakeLists.txt from the identifier the Info.plist is configured
// with.
#ifndef TOLVANE_BUNDLE_IDENTIFIER
#error "TOLVANE_BUNDLE_IDENTIFIER must be defined by the build"
#endif

namespace tolvane {

std::string_view bundleIdentifier() noexcept { return TOLVANE_BUNDLE_IDENTIFIER; }

}  // namespace tolvane
