// The portable lookup of LocalizedText in the very `.strings` and
// `.stringsdict` files a bundle ships, so that the Linux previews and the
// tests show what a Mac shows.
//
// A localiser reads, from each of its resource folders, the `<language>.lproj`
// folder of one language and of the development language "en" (the folders
// of one language from several resource folders merge, as the bundle's
// Resources/<language>.lproj merges the app's and the kit's tables; a built
// bundle's Contents/Resources is one such folder holding them all). A text
// of table T (the main table is "Localizable") is looked up as NSBundle
// does: the language's T.stringsdict, then its T.strings, then the same in
// the development language, and where none has the key, the key itself is
// shown as it is; the arguments are put in by LocalizedText::filledIn.
//
// A strings dictionary entry chooses, for each plural variable of its format
// ("%#@keys@"), the form of the variable's argument's plural category in the
// table's language (PluralRules.h), with Foundation's two additions: a
// "zero" form, where given, is used for 0 in every language, and a category
// without a form uses "other". An argument that is not a whole number takes
// "other". Numbers are put in as the arguments carry them (decimal digits);
// a Mac groups them by the user's region in `localizedStringWithFormat:`.
//
// Tables that cannot be read are left out and reported by `problems`.
// Immutable once made; safe to read from any thread.
#pragma once

#include <filesystem>
#include <map>
#include <string>
#include <string_view>
#include <vector>

#include "OrvikKit/LocalizedText.h"
#include "OrvikKitCore/StringsTable.h"

namespace orvik {

class StringsLocalizer {
public:
    static constexpr std::string_view developmentLanguage = "en";
    static constexpr std::string_view mainTable = "Localizable";

    // The tables of `language` as `preferredLocalization` resolves it among
    // the folders' languages ("de-AT" reads "de"; a language without a
    // folder reads the development language's tables alone).
    StringsLocalizer(std::vector<std::filesystem::path> resourceFolders, std::string_view language);

    // The language whose folder is read first.
    const std::string& language() const { return language_; }

    std::string localized(const LocalizedText& text) const;

    // "de.lproj/Localizable.strings: line 3, column 9: expected ';' after
    // the value", for each table that could not be read.
    const std::vector<std::string>& problems() const { return problems_; }

    // The languages with a `<language>.lproj` folder in any of the folders,
    // sorted.
    static std::vector<std::string> languagesIn(const std::vector<std::filesystem::path>& resourceFolders);

    // The localisation a bundle with `available` localisations uses for a
    // user who prefers `preferred` (most preferred first), as NSBundle
    // chooses: the first preferred language that is available, or failing
    // that whose shorter form is ("de-AT" → "de", "zh-Hant-TW" → "zh-Hant"),
    // else the development language.
    static std::string preferredLocalization(const std::vector<std::string>& available,
                                             const std::vector<std::string>& preferred);

    // The languages of an "-AppleLanguages" argument as macOS takes it on
    // the command line: an old-style property-list array ("(de)", "(de,
    // en)", "(\"pt-BR\")") or one bare language ("de"); empty for anything
    // else.
    static std::vector<std::string> languagesArgument(std::string_view value);

    // The text of a strings dictionary entry for `arguments`: its format with
    // each plural variable replaced by the form chosen for its argument in
    // `language`, not yet filled in.
    static std::string pluralFormat(const StringsDictionaryEntry& entry, std::string_view language,
                                    const std::vector<std::string>& arguments);

private:
    struct Tables {
        std::string language;
        std::map<std::string, std::map<std::string, std::string, std::less<>>, std::less<>> strings;
        std::map<std::string, std::map<std::string, StringsDictionaryEntry, std::less<>>, std::less<>> plurals;
    };

    void load(Tables& tables, const std::vector<std::filesystem::path>& resourceFolders);

    std::string language_;
    std::vector<Tables> chain_;  // the language, then the development language
    std::vector<std::string> problems_;
};

}  // namespace orvik
