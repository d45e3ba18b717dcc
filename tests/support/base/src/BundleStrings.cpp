#include "TestSupport/BundleStrings.h"

#include <map>
#include <memory>
#include <string>

namespace testsupport {

std::vector<std::filesystem::path> bundleResourceFolders() { return {TOLVANE_APP_RESOURCES, TOLVANE_KIT_RESOURCES}; }

const orvik::StringsLocalizer& bundleLocalizer(std::string_view language) {
    static std::map<std::string, std::unique_ptr<orvik::StringsLocalizer>, std::less<>> localizers;
    auto found = localizers.find(language);
    if (found == localizers.end()) {
        found = localizers
                    .emplace(std::string(language),
                             std::make_unique<orvik::StringsLocalizer>(bundleResourceFolders(), language))
                    .first;
    }
    return *found->second;
}

}  // namespace testsupport
