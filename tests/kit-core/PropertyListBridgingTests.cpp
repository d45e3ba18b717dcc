#include "OrvikKitCore/PropertyListBridging.h"

#include <gtest/gtest.h>

#include <cmath>
#include <cstdint>
#include <limits>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <variant>
#include <vector>

namespace orvik {
namespace {

// A stand-in for Foundation's object graph. As on the platform, a boolean is
// also a number, an unsigned number may exceed the signed 64-bit range, and
// dictionary keys may be of any kind.
struct FakeObject;
using FakeRef = std::shared_ptr<const FakeObject>;

struct FakeNumber {
    bool isBoolean = false;
    bool isFloat = false;
    double real = 0;
    std::optional<std::int64_t> exact;  // what an exact signed 64-bit reading gives
};
struct FakeString {
    std::optional<std::string> utf8;  // nothing: the string has no UTF-8 form
};
struct FakeData {
    std::vector<std::uint8_t> bytes;
};
struct FakeDictionary {
    std::vector<std::pair<FakeRef, FakeRef>> entries;
};
struct FakeDate {};

struct FakeObject {
    std::variant<FakeNumber, FakeString, FakeData, FakeDictionary, FakeDate> value;
};

FakeRef boolean(bool value) {
    return std::make_shared<FakeObject>(
        FakeObject{FakeNumber{.isBoolean = true, .real = value ? 1.0 : 0.0, .exact = value ? 1 : 0}});
}
FakeRef integer(std::int64_t value) {
    return std::make_shared<FakeObject>(FakeObject{FakeNumber{.real = static_cast<double>(value), .exact = value}});
}
FakeRef unsignedAbove63Bits(double value) {
    return std::make_shared<FakeObject>(FakeObject{FakeNumber{.real = value, .exact = std::nullopt}});
}
FakeRef real(double value) {
    return std::make_shared<FakeObject>(FakeObject{FakeNumber{.isFloat = true, .real = value, .exact = std::nullopt}});
}
FakeRef string(std::optional<std::string> value) {
    return std::make_shared<FakeObject>(FakeObject{FakeString{std::move(value)}});
}
FakeRef data(std::vector<std::uint8_t> bytes) { return std::make_shared<FakeObject>(FakeObject{FakeData{std::move(bytes)}}); }
FakeRef dictionary(std::vector<std::pair<FakeRef, FakeRef>> entries) {
    return std::make_shared<FakeObject>(FakeObject{FakeDictionary{std::move(entries)}});
}
FakeRef date() { return std::make_shared<FakeObject>(FakeObject{FakeDate{}}); }

struct FakeReader {
    using Object = FakeRef;

    mutable std::vector<std::string> questions;

    template <class Kind>
    const Kind* as(const Object& object) const {
        return object ? std::get_if<Kind>(&object->value) : nullptr;
    }

    bool isNull(const Object& object) const { return object == nullptr; }
    bool isBoolean(const Object& object) const {
        const auto* number = as<FakeNumber>(object);
        questions.emplace_back(number != nullptr ? "isBoolean" : "isBoolean of a non-number");
        return number != nullptr && number->isBoolean;
    }
    bool isNumber(const Object& object) const {
        questions.emplace_back("isNumber");
        return as<FakeNumber>(object) != nullptr;
    }
    bool isString(const Object& object) const { return as<FakeString>(object) != nullptr; }
    bool isData(const Object& object) const { return as<FakeData>(object) != nullptr; }
    bool isDictionary(const Object& object) const { return as<FakeDictionary>(object) != nullptr; }
    bool booleanValue(const Object& object) const { return as<FakeNumber>(object)->real != 0; }
    bool isFloatType(const Object& object) const { return as<FakeNumber>(object)->isFloat; }
    std::optional<std::int64_t> exactInteger(const Object& object) const { return as<FakeNumber>(object)->exact; }
    double doubleValue(const Object& object) const { return as<FakeNumber>(object)->real; }
    std::optional<std::string> stringValue(const Object& object) const { return as<FakeString>(object)->utf8; }
    PropertyListValue::Data dataValue(const Object& object) const { return as<FakeData>(object)->bytes; }
    std::vector<std::pair<Object, Object>> entries(const Object& object) const {
        return as<FakeDictionary>(object)->entries;
    }
};

std::optional<PropertyListValue> read(const FakeRef& object) { return readPropertyList(FakeReader{}, object); }

TEST(PropertyListReadingTest, NothingReadsAsAbsent) { EXPECT_EQ(read(nullptr), std::nullopt); }

TEST(PropertyListReadingTest, ANumberIsAskedWhetherItIsABooleanAndABooleanReadsAsOne) {
    FakeReader reader;
    EXPECT_EQ(readPropertyList(reader, boolean(true)), PropertyListValue(true));
    EXPECT_EQ(reader.questions, (std::vector<std::string>{"isNumber", "isBoolean"}));
    EXPECT_EQ(read(boolean(false)), PropertyListValue(false));
}

TEST(PropertyListReadingTest, OnlyNumbersAreAskedWhetherTheyAreBooleans) {
    // The platform answers the boolean question with calls that are only
    // valid for its numbers.
    for (const FakeRef& object : {string("Tolvane"), data({1}), date(), integer(1),
                                  dictionary({{string("Name"), string("Song")}, {string("When"), date()},
                                              {data({2}), string("data key")}})}) {
        FakeReader reader;
        (void)readPropertyList(reader, object);
        for (const std::string& question : reader.questions) EXPECT_NE(question, "isBoolean of a non-number");
    }
}

TEST(PropertyListReadingTest, IntegersReadAsIntegers) {
    EXPECT_EQ(read(integer(42)), PropertyListValue(std::int64_t{42}));
    EXPECT_EQ(read(integer(std::numeric_limits<std::int64_t>::min())),
              PropertyListValue(std::numeric_limits<std::int64_t>::min()));
}

TEST(PropertyListReadingTest, FloatingPointNumbersReadAsDoublesEvenWhenIntegral) {
    EXPECT_EQ(read(real(2.5)), PropertyListValue(2.5));
    const auto integral = read(real(3.0));
    ASSERT_TRUE(integral.has_value());
    EXPECT_EQ(integral->kind(), PropertyListValue::Kind::real);
}

TEST(PropertyListReadingTest, AnUnsignedValueBeyondTheSignedRangeReadsAsADouble) {
    const double big = 18446744073709551615.0;
    EXPECT_EQ(read(unsignedAbove63Bits(big)), PropertyListValue(big));
}

TEST(PropertyListReadingTest, StringsAndDataReadAsThemselves) {
    EXPECT_EQ(read(string("Tolvane")), PropertyListValue("Tolvane"));
    EXPECT_EQ(read(data({1, 2, 3})), PropertyListValue(PropertyListValue::Data{1, 2, 3}));
}

TEST(PropertyListReadingTest, AStringWithoutUTF8FormHasNoValue) { EXPECT_EQ(read(string(std::nullopt)), std::nullopt); }

TEST(PropertyListReadingTest, DatesAndOtherObjectsHaveNoPropertyListForm) { EXPECT_EQ(read(date()), std::nullopt); }

TEST(PropertyListReadingTest, DictionariesKeepStringKeyedEntriesWithAForm) {
    const auto value = read(dictionary({
        {string("Name"), string("Song")},
        {string("Count"), integer(3)},
        {integer(7), string("number key")},
        {string("When"), date()},
        {string(std::nullopt), string("key without UTF-8")},
        {string("Nested"), dictionary({{string("Player State"), string("Playing")}, {string("Date"), date()}})},
    }));
    const PropertyListValue expected(PropertyListValue::Dictionary{
        {"Name", PropertyListValue("Song")},
        {"Count", PropertyListValue(std::int64_t{3})},
        {"Nested", PropertyListValue(PropertyListValue::Dictionary{{"Player State", PropertyListValue("Playing")}})},
    });
    EXPECT_EQ(value, expected);
}

// --- Writing ------------------------------------------------------------------

// Records what the platform was asked to make, as text; a string holding
// the byte 0xFF stands for one the platform cannot hold.
struct FakeWriter {
    using Object = std::string;

    Object makeBoolean(bool value) { return value ? "@YES" : "@NO"; }
    Object makeInteger(std::int64_t value) { return "@(long long)" + std::to_string(value); }
    Object makeReal(double value) { return "@(double)" + std::to_string(value); }
    std::optional<Object> makeString(const std::string& value) {
        if (value.find('\xFF') != std::string::npos) return std::nullopt;
        return "@\"" + value + "\"";
    }
    Object makeData(const PropertyListValue::Data& value) { return "data(" + std::to_string(value.size()) + ")"; }
    Object makeDictionary(std::vector<std::pair<Object, Object>> entries) {
        std::string text = "@{";
        for (const auto& [key, value] : entries) text += key + ":" + value + ",";
        return text + "}";
    }
};

std::optional<std::string> write(const PropertyListValue& value) {
    FakeWriter writer;
    return makePlatformObject(writer, value);
}

TEST(PropertyListWritingTest, EachKindBecomesThePlatformObjectOfItsKind) {
    EXPECT_EQ(write(PropertyListValue(true)), "@YES");
    EXPECT_EQ(write(PropertyListValue(std::int64_t{-5})), "@(long long)-5");
    EXPECT_EQ(write(PropertyListValue(0.5)), "@(double)0.500000");
    EXPECT_EQ(write(PropertyListValue("launchMusic")), "@\"launchMusic\"");
    EXPECT_EQ(write(PropertyListValue(PropertyListValue::Data{1, 2})), "data(2)");
}

TEST(PropertyListWritingTest, AStringThatIsNotUTF8CannotBeWritten) {
    EXPECT_EQ(write(PropertyListValue(std::string("bad\xFF"))), std::nullopt);
}

TEST(PropertyListWritingTest, DictionariesLeaveOutEntriesWithoutAPlatformForm) {
    const PropertyListValue value(PropertyListValue::Dictionary{
        {"keyCode", PropertyListValue(std::int64_t{40})},
        {"bad", PropertyListValue(std::string("\xFF"))},
        {std::string("bad key\xFF"), PropertyListValue(true)},
    });
    EXPECT_EQ(write(value), "@{@\"keyCode\":@(long long)40,}");
}

}  // namespace
}  // namespace orvik
