// The CLDR cardinal plural rules of the shipped languages, number by number.
#include <gtest/gtest.h>

#include <cstdint>
#include <set>
#include <string>
#include <vector>

#include "OrvikKitCore/PluralRules.h"

namespace {

using orvik::PluralCategory;
using enum orvik::PluralCategory;

struct Expectation {
    const char* language;
    std::vector<std::pair<std::int64_t, PluralCategory>> numbers;
};

// From the CLDR rules' own sample lists (@integer) and the edges of each
// condition.
const std::vector<Expectation> expectations = {
    {"en", {{0, other}, {1, one}, {2, other}, {11, other}, {21, other}, {101, other}, {1000000, other}}},
    {"de", {{0, other}, {1, one}, {2, other}, {21, other}, {1000000, other}}},
    {"nl", {{0, other}, {1, one}, {2, other}, {1000000, other}}},
    {"sv", {{0, other}, {1, one}, {2, other}, {1000000, other}}},
    {"tr", {{0, other}, {1, one}, {2, other}, {1000000, other}}},
    {"fr",
     {{0, one}, {1, one}, {2, other}, {17, other}, {100, other}, {1000, other}, {999999, other}, {1000000, many},
      {2000000, many}, {1000001, other}, {10000000, many}, {100000000, many}, {1500000, other}}},
    {"pt-BR",
     {{0, one}, {1, one}, {2, other}, {17, other}, {1000000, many}, {3000000, many}, {1000001, other}}},
    {"pt-PT", {{0, other}, {1, one}, {2, other}, {1000000, many}}},
    {"es", {{0, other}, {1, one}, {2, other}, {16, other}, {1000000, many}, {1000002, other}, {4000000, many}}},
    {"it", {{0, other}, {1, one}, {2, other}, {16, other}, {1000000, many}, {2000001, other}}},
    {"pl",
     {{0, many}, {1, one}, {2, few}, {3, few}, {4, few}, {5, many}, {10, many}, {11, many}, {12, many}, {13, many},
      {14, many}, {15, many}, {21, many}, {22, few}, {24, few}, {25, many}, {101, many}, {102, few}, {112, many},
      {122, few}, {1000, many}, {1002, few}}},
    {"ru",
     {{0, many}, {1, one}, {2, few}, {4, few}, {5, many}, {11, many}, {12, many}, {14, many}, {20, many}, {21, one},
      {22, few}, {25, many}, {101, one}, {111, many}, {112, many}, {121, one}, {1001, one}, {1011, many}}},
    {"ja", {{0, other}, {1, other}, {2, other}, {1000000, other}}},
    {"ko", {{0, other}, {1, other}, {2, other}}},
    {"zh-Hans", {{0, other}, {1, other}, {2, other}}},
    {"zh-Hant", {{0, other}, {1, other}, {2, other}}},
    {"ar",
     {{0, zero}, {1, one}, {2, two}, {3, few}, {10, few}, {11, many}, {26, many}, {99, many}, {100, other},
      {101, other}, {102, other}, {103, few}, {110, few}, {111, many}, {199, many}, {200, other}, {1000, other},
      {1003, few}, {1011, many}}},
    {"he",
     {{0, other}, {1, one}, {2, two}, {3, other}, {10, other}, {17, other}, {20, other}, {30, other}, {100, other},
      {101, other}, {1000, other}}},
};

TEST(PluralRules, GiveEachShippedLanguageItsCldrCategories) {
    for (const Expectation& expectation : expectations) {
        for (const auto& [number, category] : expectation.numbers) {
            EXPECT_EQ(orvik::pluralCategory(expectation.language, number), category)
                << expectation.language << " " << number << " should be "
                << orvik::pluralCategoryName(category);
        }
    }
}

TEST(PluralRules, TakeTheCategoryOfTheAbsoluteValueForNegativeNumbers) {
    EXPECT_EQ(orvik::pluralCategory("en", -1), one);
    EXPECT_EQ(orvik::pluralCategory("ru", -21), one);
    EXPECT_EQ(orvik::pluralCategory("ar", -2), two);
    EXPECT_EQ(orvik::pluralCategory("fr", INT64_MIN), other);  // not a multiple of a million
}

TEST(PluralRules, ReadTheLanguageFromTagsWithScriptsAndRegions) {
    EXPECT_EQ(orvik::pluralCategory("de-AT", 1), one);
    EXPECT_EQ(orvik::pluralCategory("pt_BR", 0), one);
    EXPECT_EQ(orvik::pluralCategory("pt", 0), one);
    EXPECT_EQ(orvik::pluralCategory("zh-Hant-TW", 1), other);
    EXPECT_EQ(orvik::pluralCategory("RU", 2), few);
    EXPECT_EQ(orvik::pluralCategory("iw", 2), two);
}

TEST(PluralRules, KnowNoLanguageTheyHaveNoRulesFor) {
    EXPECT_FALSE(orvik::hasPluralRules("fi"));
    EXPECT_EQ(orvik::pluralCategory("fi", 1), std::nullopt);
    EXPECT_EQ(orvik::pluralCategoriesForWholeNumbers("cy"), std::nullopt);
    EXPECT_FALSE(orvik::hasPluralRules(""));
    EXPECT_TRUE(orvik::hasPluralRules("en"));
}

// The listed categories are exactly those some whole number takes: every
// number up to 100 000, and around the multiples of a million.
TEST(PluralRules, ListTheCategoriesWholeNumbersTakeInEachLanguage) {
    for (const char* language : {"en", "de", "fr", "es", "it", "pt-BR", "nl", "sv", "pl", "ru", "tr", "ja", "ko",
                                 "zh-Hans", "zh-Hant", "ar", "he"}) {
        std::set<PluralCategory> seen;
        for (std::int64_t n = 0; n <= 100000; ++n) seen.insert(*orvik::pluralCategory(language, n));
        for (std::int64_t million = 1000000; million <= 1000000000000; million *= 10) {
            for (std::int64_t n = million - 200; n <= million + 200; ++n) seen.insert(*orvik::pluralCategory(language, n));
            seen.insert(*orvik::pluralCategory(language, 7 * million));
        }
        const std::vector<PluralCategory> listed = *orvik::pluralCategoriesForWholeNumbers(language);
        EXPECT_EQ(std::vector<PluralCategory>(seen.begin(), seen.end()), listed) << language;
    }
}

TEST(PluralRules, NameTheCategoriesAsStringsDictionariesDo) {
    for (PluralCategory category : orvik::allPluralCategories) {
        EXPECT_EQ(orvik::pluralCategoryNamed(orvik::pluralCategoryName(category)), category);
    }
    EXPECT_EQ(orvik::pluralCategoryName(few), "few");
    EXPECT_EQ(orvik::pluralCategoryNamed("Other"), std::nullopt);
    EXPECT_EQ(orvik::pluralCategoryNamed("plural"), std::nullopt);
}

}  // namespace
