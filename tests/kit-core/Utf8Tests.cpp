#include "OrvikKitCore/Utf8.h"

#include <gtest/gtest.h>

#include <string>

namespace orvik {
namespace {

TEST(Utf8, EachLengthEncodesAsTheStandardSays) {
    std::string out;
    EXPECT_TRUE(appendUtf8(out, 0x41));
    EXPECT_TRUE(appendUtf8(out, 0xE3));     // ã
    EXPECT_TRUE(appendUtf8(out, 0x23EF));   // ⏯
    EXPECT_TRUE(appendUtf8(out, 0x1F3B5));  // 🎵
    EXPECT_EQ(out, "A\xC3\xA3\xE2\x8F\xAF\xF0\x9F\x8E\xB5");
}

TEST(Utf8, TheEndsOfEachLengthStayInTheirLength) {
    const auto encoded = [](std::uint32_t codePoint) {
        std::string out;
        appendUtf8(out, codePoint);
        return out;
    };
    EXPECT_EQ(encoded(0x7F).size(), 1u);
    EXPECT_EQ(encoded(0x80).size(), 2u);
    EXPECT_EQ(encoded(0x7FF).size(), 2u);
    EXPECT_EQ(encoded(0x800).size(), 3u);
    EXPECT_EQ(encoded(0xFFFF).size(), 3u);
    EXPECT_EQ(encoded(0x10000).size(), 4u);
    EXPECT_EQ(encoded(0x10FFFF), "\xF4\x8F\xBF\xBF");
}

TEST(Utf8, SurrogatesAndValuesBeyondUnicodeAppendNothing) {
    std::string out = "x";
    EXPECT_FALSE(appendUtf8(out, 0xD800));
    EXPECT_FALSE(appendUtf8(out, 0xDFFF));
    EXPECT_FALSE(appendUtf8(out, 0x110000));
    EXPECT_EQ(out, "x");
}

TEST(Utf8, AcceptsWellFormedTextOnly) {
    EXPECT_TRUE(isValidUtf8("Active \xC2\xB7 \xE2\x8F\xAE \xF0\x9F\x8E\xB5"));
    EXPECT_FALSE(isValidUtf8("\xC2"));
    EXPECT_FALSE(isValidUtf8("\xC0\xAF"));          // overlong
    EXPECT_FALSE(isValidUtf8("\xED\xA0\x80"));      // a surrogate
    EXPECT_FALSE(isValidUtf8("caf\xE9"));           // Latin-1
}

}  // namespace
}  // namespace orvik
