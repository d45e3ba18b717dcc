#include "OrvikKitCore/PluralRules.h"

#include <cstdint>
#include <string>

namespace orvik {

namespace {

using enum PluralCategory;

// The rule families of the shipped languages, each CLDR's cardinal rule for
// whole numbers (operands with v = 0).
enum class Rule : std::uint8_t {
    otherOnly,          // ja, ko, zh: other
    oneForOne,          // en, de, nl, sv, tr: one: n = 1 (i = 1 and v = 0)
    oneOrManyMillions,  // es, it, pt-PT: one: n = 1; many: n != 0 and n % 1000000 = 0
    zeroOrOneOrManyMillions,  // fr, pt: one: i = 0,1; many: n != 0 and n % 1000000 = 0
    polish,             // pl
    russian,            // ru
    arabic,             // ar
    hebrew,             // he
};

bool isSeparator(char c) { return c == '-' || c == '_'; }

std::string lowercase(std::string_view text) {
    std::string lower(text);
    for (char& c : lower) {
        if (c >= 'A' && c <= 'Z') c = static_cast<char>(c - 'A' + 'a');
    }
    return lower;
}

// The language subtag and, when present, the region subtag ("pt-BR" → "pt"
// and "br"; "zh-Hans" → "zh" and "").
std::pair<std::string, std::string> languageAndRegion(std::string_view tag) {
    std::size_t end = 0;
    while (end < tag.size() && !isSeparator(tag[end])) ++end;
    const std::string language = lowercase(tag.substr(0, end));
    std::string region;
    std::size_t start = end;
    while (start < tag.size()) {
        ++start;
        std::size_t stop = start;
        while (stop < tag.size() && !isSeparator(tag[stop])) ++stop;
        const std::string_view subtag = tag.substr(start, stop - start);
        if (subtag.size() == 2 || (subtag.size() == 3 && subtag[0] >= '0' && subtag[0] <= '9')) {
            region = lowercase(subtag);
            break;
        }
        start = stop;
    }
    return {language, region};
}

std::optional<Rule> ruleFor(std::string_view tag) {
    const auto [language, region] = languageAndRegion(tag);
    if (language == "ja" || language == "ko" || language == "zh") return Rule::otherOnly;
    if (language == "en" || language == "de" || language == "nl" || language == "sv" || language == "tr") {
        return Rule::oneForOne;
    }
    if (language == "es" || language == "it") return Rule::oneOrManyMillions;
    if (language == "pt") return region == "pt" ? Rule::oneOrManyMillions : Rule::zeroOrOneOrManyMillions;
    if (language == "fr") return Rule::zeroOrOneOrManyMillions;
    if (language == "pl") return Rule::polish;
    if (language == "ru") return Rule::russian;
    if (language == "ar") return Rule::arabic;
    if (language == "he" || language == "iw") return Rule::hebrew;
    return std::nullopt;
}

PluralCategory apply(Rule rule, std::uint64_t n) {
    const std::uint64_t mod10 = n % 10;
    const std::uint64_t mod100 = n % 100;
    const bool manyMillions = n != 0 && n % 1000000 == 0;
    switch (rule) {
    case Rule::otherOnly: return other;
    case Rule::oneForOne: return n == 1 ? one : other;
    case Rule::oneOrManyMillions: return n == 1 ? one : manyMillions ? many : other;
    case Rule::zeroOrOneOrManyMillions: return n <= 1 ? one : manyMillions ? many : other;
    case Rule::polish:
        // one: i = 1 and v = 0
        // few: v = 0 and i % 10 = 2..4 and i % 100 != 12..14
        // many: v = 0 and i != 1 and i % 10 = 0..1 or v = 0 and i % 10 = 5..9 or v = 0 and i % 100 = 12..14
        if (n == 1) return one;
        if (mod10 >= 2 && mod10 <= 4 && !(mod100 >= 12 && mod100 <= 14)) return few;
        return many;
    case Rule::russian:
        // one: v = 0 and i % 10 = 1 and i % 100 != 11
        // few: v = 0 and i % 10 = 2..4 and i % 100 != 12..14
        // many: v = 0 and i % 10 = 0 or v = 0 and i % 10 = 5..9 or v = 0 and i % 100 = 11..14
        if (mod10 == 1 && mod100 != 11) return one;
        if (mod10 >= 2 && mod10 <= 4 && !(mod100 >= 12 && mod100 <= 14)) return few;
        return many;
    case Rule::arabic:
        // zero: n = 0; one: n = 1; two: n = 2; few: n % 100 = 3..10; many: n % 100 = 11..99
        if (n == 0) return zero;
        if (n == 1) return one;
        if (n == 2) return two;
        if (mod100 >= 3 && mod100 <= 10) return few;
        if (mod100 >= 11) return many;
        return other;
    case Rule::hebrew:
        // one: i = 1 and v = 0 or i = 0 and v != 0; two: i = 2 and v = 0
        if (n == 1) return one;
        if (n == 2) return two;
        return other;
    }
    return other;
}

}  // namespace

std::string_view pluralCategoryName(PluralCategory category) {
    switch (category) {
    case zero: return "zero";
    case one: return "one";
    case two: return "two";
    case few: return "few";
    case many: return "many";
    case other: return "other";
    }
    return "other";
}

std::optional<PluralCategory> pluralCategoryNamed(std::string_view name) {
    for (PluralCategory category : allPluralCategories) {
        if (pluralCategoryName(category) == name) return category;
    }
    return std::nullopt;
}

bool hasPluralRules(std::string_view language) { return ruleFor(language).has_value(); }

std::optional<PluralCategory> pluralCategory(std::string_view language, std::int64_t n) {
    const std::optional<Rule> rule = ruleFor(language);
    if (!rule) return std::nullopt;
    const std::uint64_t magnitude =
        n < 0 ? static_cast<std::uint64_t>(-(n + 1)) + 1u : static_cast<std::uint64_t>(n);
    return apply(*rule, magnitude);
}

std::optional<std::vector<PluralCategory>> pluralCategoriesForWholeNumbers(std::string_view language) {
    const std::optional<Rule> rule = ruleFor(language);
    if (!rule) return std::nullopt;
    switch (*rule) {
    case Rule::otherOnly: return std::vector{other};
    case Rule::oneForOne: return std::vector{one, other};
    case Rule::oneOrManyMillions:
    case Rule::zeroOrOneOrManyMillions: return std::vector{one, many, other};
    case Rule::polish:
    case Rule::russian: return std::vector{one, few, many};
    case Rule::arabic: return std::vector{zero, one, two, few, many, other};
    case Rule::hebrew: return std::vector{one, two, other};
    }
    return std::nullopt;
}

}  // namespace orvik
