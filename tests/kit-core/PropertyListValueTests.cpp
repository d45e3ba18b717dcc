#include "OrvikKitCore/PropertyListValue.h"

#include <gtest/gtest.h>

#include <cmath>
#include <cstddef>
#include <cstdint>
#include <limits>
#include <string>
#include <string_view>
#include <type_traits>

namespace orvik {
namespace {

using Kind = PropertyListValue::Kind;

TEST(PropertyListValue, EachConstructorMakesItsKind) {
    EXPECT_EQ(PropertyListValue(true).kind(), Kind::boolean);
    EXPECT_EQ(PropertyListValue(std::int64_t{5}).kind(), Kind::integer);
    EXPECT_EQ(PropertyListValue(5).kind(), Kind::integer);
    EXPECT_EQ(PropertyListValue(std::uint32_t{5}).kind(), Kind::integer);
    EXPECT_EQ(PropertyListValue(2.5).kind(), Kind::real);
    EXPECT_EQ(PropertyListValue("text").kind(), Kind::string);
    EXPECT_EQ(PropertyListValue(std::string("text")).kind(), Kind::string);
    EXPECT_EQ(PropertyListValue(PropertyListValue::Data{1, 2}).kind(), Kind::data);
    EXPECT_EQ(PropertyListValue(PropertyListValue::Dictionary{}).kind(), Kind::dictionary);
}

// Only the intended types convert implicitly; nothing changes kind on the way
// into a store.
static_assert(std::is_convertible_v<bool, PropertyListValue>);
static_assert(std::is_convertible_v<int, PropertyListValue>);
static_assert(std::is_convertible_v<std::int64_t, PropertyListValue>);
static_assert(std::is_convertible_v<std::uint32_t, PropertyListValue>);
static_assert(std::is_convertible_v<double, PropertyListValue>);
static_assert(std::is_convertible_v<float, PropertyListValue>);
static_assert(std::is_convertible_v<const char*, PropertyListValue>);
static_assert(std::is_convertible_v<std::string, PropertyListValue>);
static_assert(std::is_convertible_v<PropertyListValue::Data, PropertyListValue>);
static_assert(std::is_convertible_v<PropertyListValue::Dictionary, PropertyListValue>);

static_assert(!std::is_convertible_v<const char8_t*, PropertyListValue>, "a UTF-8 literal is not a boolean");
static_assert(!std::is_convertible_v<const wchar_t*, PropertyListValue>);
static_assert(!std::is_convertible_v<const void*, PropertyListValue>);
static_assert(!std::is_convertible_v<int*, PropertyListValue>);
static_assert(!std::is_convertible_v<std::nullptr_t, PropertyListValue>);
static_assert(!std::is_convertible_v<char, PropertyListValue>, "a character is not an integer");
static_assert(!std::is_convertible_v<signed char, PropertyListValue>);
static_assert(!std::is_convertible_v<unsigned char, PropertyListValue>);
static_assert(!std::is_convertible_v<char8_t, PropertyListValue>);
static_assert(!std::is_convertible_v<char16_t, PropertyListValue>);
static_assert(!std::is_convertible_v<char32_t, PropertyListValue>);
static_assert(!std::is_convertible_v<wchar_t, PropertyListValue>);
static_assert(!std::is_convertible_v<std::uint64_t, PropertyListValue>, "may not fit a signed 64-bit integer");
static_assert(!std::is_convertible_v<long double, PropertyListValue>);
static_assert(!std::is_convertible_v<std::string_view, PropertyListValue>);

TEST(PropertyListValue, OnlyIntendedTypesConvertAndEachKeepsItsKind) {
    // The static checks above are the test; these show the kinds kept.
    EXPECT_EQ(PropertyListValue(2.5f).kind(), Kind::real);
    EXPECT_EQ(PropertyListValue(short{3}).kind(), Kind::integer);
    EXPECT_EQ(PropertyListValue(false).kind(), Kind::boolean);
}

TEST(PropertyListValue, AccessorsAnswerOnlyForTheirOwnKind) {
    const PropertyListValue integer(std::int64_t{1});
    ASSERT_NE(integer.integer(), nullptr);
    EXPECT_EQ(*integer.integer(), 1);
    EXPECT_EQ(integer.boolean(), nullptr);
    EXPECT_EQ(integer.real(), nullptr);
    EXPECT_EQ(integer.string(), nullptr);
    EXPECT_EQ(integer.data(), nullptr);
    EXPECT_EQ(integer.dictionary(), nullptr);
}

TEST(PropertyListValue, NestedDictionariesCompareDeeply) {
    const PropertyListValue inner(PropertyListValue::Dictionary{{"n", 1}});
    const PropertyListValue a(PropertyListValue::Dictionary{{"inner", inner}, {"s", "x"}});
    const PropertyListValue b(PropertyListValue::Dictionary{{"inner", PropertyListValue::Dictionary{{"n", 1}}}, {"s", "x"}});
    const PropertyListValue c(PropertyListValue::Dictionary{{"inner", PropertyListValue::Dictionary{{"n", 2}}}, {"s", "x"}});
    EXPECT_EQ(a, b);
    EXPECT_NE(a, c);
}

TEST(PropertyListValue, ValuesOfDifferentKindsAreNeverEqual) {
    EXPECT_NE(PropertyListValue(true), PropertyListValue(std::int64_t{1}));
    EXPECT_NE(PropertyListValue(std::int64_t{1}), PropertyListValue(1.0));
    EXPECT_NE(PropertyListValue("1"), PropertyListValue(std::int64_t{1}));
}

TEST(PropertyListValue, NotANumberEqualsNothing) {
    const PropertyListValue nan(std::numeric_limits<double>::quiet_NaN());
    EXPECT_NE(nan, nan);
}

TEST(PropertyListValue, CopiesStayEqualAndIndependentOfTheOriginalDictionary) {
    PropertyListValue::Dictionary dictionary{{"k", "v"}};
    const PropertyListValue value(dictionary);
    dictionary.insert_or_assign("k", "changed");
    const PropertyListValue copy = value;
    EXPECT_EQ(copy, value);
    EXPECT_EQ(*copy.dictionary()->at("k").string(), "v");
}

}  // namespace
}  // namespace orvik
