// Reads arbitrary bytes as a strings dictionary (`.stringsdict`, an XML
// property list): any byte values, broken or deep XML, unknown keys and rule
// types, formats with stray '%'. The whole input is the file.
//
// Checked: reading never fails other than by an error value that names a
// line and column from 1 and what was expected; every entry that reads has
// an "other" form and a number type for each of its variables, and every
// variable its format or a form uses is defined; choosing the forms for any
// count in every shipped language yields text without crashing, and a count
// whose category has a form gets that form; and the plural rules put every
// count in a category they list for the language.

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "FuzzInput.h"
#include "OrvikKit/StringsLocalizer.h"
#include "OrvikKitCore/FormatSpecifiers.h"
#include "OrvikKitCore/PluralRules.h"
#include "OrvikKitCore/StringsTable.h"

namespace {

using tolvane::fuzz::require;

constexpr std::string_view languages[] = {"en", "de", "fr", "es", "it", "pt-BR", "nl", "sv", "pl",
                                          "ru", "tr", "ja", "ko", "zh-Hans", "zh-Hant", "ar", "he"};

// A count taken from the input, so each input tries other numbers.
std::int64_t countFrom(std::string_view bytes) {
    std::uint64_t hash = 14695981039346656037ull;
    for (char c : bytes) hash = (hash ^ static_cast<unsigned char>(c)) * 1099511628211ull;
    return static_cast<std::int64_t>(hash);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string_view bytes(reinterpret_cast<const char*>(data), size);
    const std::int64_t hashed = countFrom(bytes);
    const std::vector<std::int64_t> counts = {0, 1, 2, 3, 5, 11, 21, 101, 1000000, hashed, hashed % 1000};

    for (std::string_view language : languages) {
        const auto listed = orvik::pluralCategoriesForWholeNumbers(language);
        require(listed.has_value(), "every shipped language has plural rules");
        for (std::int64_t count : counts) {
            const auto category = orvik::pluralCategory(language, count);
            require(category && std::find(listed->begin(), listed->end(), *category) != listed->end(),
                    "a count takes a category the language lists");
        }
    }

    const orvik::StringsDictionary dictionary = orvik::parseStringsDictionary(bytes);
    if (dictionary.error) {
        require(dictionary.error->line >= 1 && dictionary.error->column >= 1, "an error names a line and column from 1");
        require(dictionary.error->problem.starts_with("expected "), "an error says what was expected");
        return 0;
    }

    for (const orvik::StringsDictionaryEntry& entry : dictionary.entries) {
        const orvik::FormatParse format = orvik::parseFormat(entry.format);
        require(!format.error, "an entry's format reads");
        for (const orvik::FormatSpecifier& specifier : format.specifiers) {
            if (specifier.variable) require(entry.variables.contains(*specifier.variable), "every variable used is defined");
        }
        for (const auto& [name, variable] : entry.variables) {
            require(variable.forms.contains(orvik::PluralCategory::other), "every variable has an other form");
            require(!variable.valueType.empty(), "every variable has a number type");
        }
        for (std::string_view language : languages) {
            for (std::int64_t count : counts) {
                const std::vector<std::string> arguments = {std::to_string(count), std::to_string(count)};
                const std::string chosen = orvik::StringsLocalizer::pluralFormat(entry, language, arguments);
                (void)orvik::appText(entry.key, arguments).filledIn(chosen);
                if (format.specifiers.size() == 1 && format.specifiers[0].variable && format.specifiers[0].offset == 0 &&
                    format.specifiers[0].text == entry.format) {
                    const orvik::PluralVariable& variable = entry.variables.at(*format.specifiers[0].variable);
                    const orvik::PluralCategory category =
                        count == 0 && variable.forms.contains(orvik::PluralCategory::zero)
                            ? orvik::PluralCategory::zero
                            : *orvik::pluralCategory(language, count);
                    const auto form = variable.forms.find(category);
                    require(chosen == (form != variable.forms.end() ? form->second
                                                                    : variable.forms.at(orvik::PluralCategory::other)),
                            "a format of one variable becomes the form of the count's category, else other");
                }
            }
        }
    }
    return 0;
}
