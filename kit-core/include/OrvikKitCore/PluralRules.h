// CLDR cardinal plural rules for whole numbers, for the languages the apps
// ship, as Foundation applies them to a strings dictionary's plural
// variables.
//
// A language is named as the `.lproj` folders name it ("de", "pt-BR",
// "zh-Hans"); the rule is the language's own, or the one of the region where
// CLDR gives the region one of its own (Portuguese in Portugal). Whole
// numbers only: the visible fraction digits (v, f, t) of the CLDR operands
// are 0 for them, so the rules below are the CLDR rules with those terms
// evaluated; negative numbers take the category of their absolute value.
//
// Pure functions; safe on any thread.
#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <string_view>
#include <vector>

namespace orvik {

enum class PluralCategory : std::uint8_t { zero, one, two, few, many, other };

inline constexpr std::array<PluralCategory, 6> allPluralCategories = {
    PluralCategory::zero, PluralCategory::one,  PluralCategory::two,
    PluralCategory::few,  PluralCategory::many, PluralCategory::other};

// "zero", "one", "two", "few", "many", "other": the keys of a strings
// dictionary's plural variable.
std::string_view pluralCategoryName(PluralCategory category);
std::optional<PluralCategory> pluralCategoryNamed(std::string_view name);

// Whether the rules below know `language`.
bool hasPluralRules(std::string_view language);

// The category of the whole number `n` in `language`; nothing for a
// language without rules here.
std::optional<PluralCategory> pluralCategory(std::string_view language, std::int64_t n);

// The categories whole numbers fall into in `language`, in the order of
// PluralCategory ("other" is listed only where some whole number takes it:
// not in Polish or Russian, whose "other" holds fractions); nothing for a
// language without rules here.
std::optional<std::vector<PluralCategory>> pluralCategoriesForWholeNumbers(std::string_view language);

}  // namespace orvik
