// Checks every language folder (`<language>.lproj`) of the bundle's
// resource folders against the English ones, and says what each language
// lacks in words a translator can act on.
//
// The English tables are the reference: each language has each of their
// strings tables (Localizable, OrvikKit, InfoPlist), with every key and no
// other; every value keeps its key's placeholders (the same types read from
// the same arguments; numbered placeholders may reorder them) and is not
// empty; a strings dictionary holds only keys of its table and covers, for
// every plural variable, the categories its language's whole numbers take
// (plus "other"); the Info.plist's CFBundleLocalizations lists exactly the
// folders; and the bundle's resource list packs every file of every folder.
#pragma once

#include <filesystem>
#include <map>
#include <optional>
#include <string>
#include <vector>

namespace bundlefiles {

struct LocalizationProblem {
    enum class Kind { unreadable, keys, placeholders, empty, plurals, localizationList, packing };
    Kind kind;
    std::string language;  // "" for what concerns no one language
    std::string message;   // names the language, the table and the key
};

struct LocalizationSources {
    std::vector<std::filesystem::path> resourceFolders;
    // The Info.plist's values: its NSAppleEventsUsageDescription (the
    // English text of InfoPlist.strings where English has no such table),
    // and CFBundleLocalizations when it has the key.
    std::map<std::string, std::string> infoPlistStrings;
    std::optional<std::vector<std::string>> bundleLocalizations;
    // The bundle's resource list: destination below Contents/ → source
    // file; nothing to leave packing unchecked.
    std::optional<std::vector<std::pair<std::string, std::filesystem::path>>> packedFiles;
};

std::vector<LocalizationProblem> checkLocalizations(const LocalizationSources& sources);

// Every problem, grouped by language, in one text: for each language a
// heading and one line per thing to do.
std::string describe(const std::vector<LocalizationProblem>& problems);

}  // namespace bundlefiles
