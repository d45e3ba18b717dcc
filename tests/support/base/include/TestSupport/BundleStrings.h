// The bundle's own strings tables, read from the source tree by the portable
// localiser, as the tests' snapshot platform and layouts look texts up: a
// test sees the texts a Mac would show in that language.
#pragma once

#include <filesystem>
#include <string_view>
#include <vector>

#include "OrvikKit/StringsLocalizer.h"

namespace testsupport {

// The folders holding the app's and the kit's <language>.lproj folders.
std::vector<std::filesystem::path> bundleResourceFolders();

// A localiser over those folders for `language`, made once per language and
// kept for the process (the tests' main thread only).
const orvik::StringsLocalizer& bundleLocalizer(std::string_view language);

}  // namespace testsupport
