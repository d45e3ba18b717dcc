// Reading strings tables and strings dictionaries from their bytes: the
// format's features, its encodings, and a clear error, never a crash, for
// what is not a table.
#include <gtest/gtest.h>

#include <string>
#include <string_view>

#include "OrvikKitCore/FormatSpecifiers.h"
#include "OrvikKitCore/StringsTable.h"

namespace {

using orvik::PluralCategory;
using orvik::TableError;

std::string errorOf(std::string_view bytes) {
    const orvik::StringsTable table = orvik::parseStringsTable(bytes);
    return table.error ? table.error->description() : "no error";
}

// UTF-16 bytes of ASCII text with a byte-order mark.
std::string utf16(std::string_view ascii, bool littleEndian) {
    std::string bytes = littleEndian ? "\xFF\xFE" : "\xFE\xFF";
    for (char c : ascii) {
        if (littleEndian) {
            bytes += c;
            bytes += '\0';
        } else {
            bytes += '\0';
            bytes += c;
        }
    }
    return bytes;
}

// --- Strings tables -------------------------------------------------------------------

TEST(StringsTable, ReadsQuotedEntriesBetweenBothKindsOfComment) {
    const orvik::StringsTable table = orvik::parseStringsTable(
        "/* A comment\n   over lines */\n"
        "\"Quit\" = \"Beenden\";\n"
        "// a line comment\n"
        "\"Keys sent: %lld\"=\"Gesendete Tasten: %lld\" ; /* after */\n");
    ASSERT_FALSE(table.error.has_value()) << table.error->description();
    ASSERT_EQ(table.entries.size(), 2u);
    EXPECT_EQ(table.entries[0].key, "Quit");
    EXPECT_EQ(table.entries[0].value, "Beenden");
    EXPECT_EQ(table.entries[0].line, 3);
    EXPECT_EQ(table.entries[1].key, "Keys sent: %lld");
    EXPECT_EQ(table.entries[1].value, "Gesendete Tasten: %lld");
    EXPECT_EQ(table.entries[1].line, 5);
}

TEST(StringsTable, ResolvesEveryEscape) {
    const orvik::StringsTable table = orvik::parseStringsTable(
        "\"Say \\\"hi\\\"\" = \"a\\\\b\\nc\\td\\re\";\n"
        "\"cmd\" = \"\\U2318Q\";\n"
        "\"note\" = \"\\UD83C\\UDFB5\";\n");
    ASSERT_FALSE(table.error.has_value()) << table.error->description();
    ASSERT_EQ(table.entries.size(), 3u);
    EXPECT_EQ(table.entries[0].key, "Say \"hi\"");
    EXPECT_EQ(table.entries[0].value, "a\\b\nc\td\re");
    EXPECT_EQ(table.entries[1].value, "\xE2\x8C\x98Q");
    EXPECT_EQ(table.entries[2].value, "\xF0\x9F\x8E\xB5");  // U+1F3B5 from its surrogate pair
}

TEST(StringsTable, KeepsUtf8TextAsItIs) {
    const orvik::StringsTable table =
        orvik::parseStringsTable("\"Active · ⏮ ⏯ ⏭ → Music only\" = \"مفعّل · ⏮ ⏯ ⏭\";");
    ASSERT_FALSE(table.error.has_value());
    EXPECT_EQ(table.entries[0].key, "Active · ⏮ ⏯ ⏭ → Music only");
    EXPECT_EQ(table.entries[0].value, "مفعّل · ⏮ ⏯ ⏭");
}

TEST(StringsTable, ReadsUnquotedWordsAndKeysWithoutValues) {
    const orvik::StringsTable table =
        orvik::parseStringsTable("NSAppleEventsUsageDescription = \"Text\";\nCFBundle.Name-2 = Tolvane_2;\n\"Same\";");
    ASSERT_FALSE(table.error.has_value()) << table.error->description();
    ASSERT_EQ(table.entries.size(), 3u);
    EXPECT_EQ(table.entries[0].key, "NSAppleEventsUsageDescription");
    EXPECT_EQ(table.entries[1].key, "CFBundle.Name-2");
    EXPECT_EQ(table.entries[1].value, "Tolvane_2");
    EXPECT_EQ(table.entries[2].key, "Same");
    EXPECT_EQ(table.entries[2].value, "Same");
}

TEST(StringsTable, ListsRepeatedKeysInTheFilesOrder) {
    const orvik::StringsTable table = orvik::parseStringsTable("\"a\" = \"1\";\n\"a\" = \"2\";");
    ASSERT_EQ(table.entries.size(), 2u);
    EXPECT_EQ(table.entries[1].value, "2");
    EXPECT_EQ(table.entries[1].line, 2);
}

TEST(StringsTable, ReadsUtf16InBothByteOrdersAfterItsMark) {
    for (bool littleEndian : {true, false}) {
        const orvik::StringsTable table = orvik::parseStringsTable(utf16("\"Quit\" = \"Stop\";\n", littleEndian));
        ASSERT_FALSE(table.error.has_value()) << table.error->description();
        ASSERT_EQ(table.entries.size(), 1u);
        EXPECT_EQ(table.entries[0].key, "Quit");
        EXPECT_EQ(table.entries[0].value, "Stop");
    }
    // "⌘" (U+2318) and U+1F3B5 as a surrogate pair, little-endian.
    const std::string bytes = std::string("\xFF\xFE\"\0\x18\x23\"\0=\0\"\0\x3C\xD8\xB5\xDF\"\0;\0", 20);
    const orvik::StringsTable table = orvik::parseStringsTable(bytes);
    ASSERT_FALSE(table.error.has_value()) << table.error->description();
    EXPECT_EQ(table.entries[0].key, "\xE2\x8C\x98");
    EXPECT_EQ(table.entries[0].value, "\xF0\x9F\x8E\xB5");
}

TEST(StringsTable, SkipsAUtf8ByteOrderMark) {
    const orvik::StringsTable table = orvik::parseStringsTable("\xEF\xBB\xBF\"a\" = \"b\";");
    ASSERT_FALSE(table.error.has_value());
    EXPECT_EQ(table.entries[0].key, "a");
}

TEST(StringsTable, SaysWhereAndWhatWasExpected) {
    EXPECT_EQ(errorOf("\"Quit\" = \"Quit\"\n\"Check\" = \"Check\";"), "line 2, column 1: expected ';' after the value");
    EXPECT_EQ(errorOf("\"Quit\" \"Quit\";"), "line 1, column 8: expected '=' or ';' after the key");
    EXPECT_EQ(errorOf("\"a\" = ;"), "line 1, column 7: expected a value (a quoted string) after '='");
    EXPECT_EQ(errorOf("= \"a\";"), "line 1, column 1: expected a key (a quoted string)");
    EXPECT_EQ(errorOf("\"a\" = \"b\\q\";"),
              "line 1, column 9: expected an escape: \\\" \\\\ \\n \\t \\r or \\U and four hex digits");
    EXPECT_EQ(errorOf("\"a\" = \"\\U12\";"), "line 1, column 8: expected four hex digits after \\U");
    EXPECT_EQ(errorOf("\"a\" = \"\\UD83C\";"),
              "line 1, column 8: expected a high surrogate \\UD800-\\UDBFF followed by a low surrogate \\UDC00-\\UDFFF");
    EXPECT_EQ(errorOf("\"a\" = \"\\UDFB5\";"),
              "line 1, column 8: expected a low surrogate \\UDC00-\\UDFFF only after a high surrogate");
    EXPECT_EQ(errorOf("\"a\" = \"\\U0000\";"), "line 1, column 8: expected a character other than NUL");
    EXPECT_EQ(errorOf("\"a\" = \"b;\n"), "line 1, column 7: expected '\"' to close the string that starts here");
    EXPECT_EQ(errorOf("\"a\" = \"b\";\n  /* open"), "line 2, column 3: expected '*/' to close the comment that starts here");
    // Columns count characters, not bytes.
    EXPECT_EQ(errorOf("\"ä→\" = \"ö\" x"), "line 1, column 12: expected ';' after the value");
}

TEST(StringsTable, RejectsTextThatIsNotUtf8OrMarkedUtf16) {
    EXPECT_EQ(errorOf("\"caf\xE9\" = \"x\";"), "line 1, column 5: expected UTF-8 text (or UTF-16 after a byte-order mark)");
    EXPECT_EQ(errorOf(std::string("\"\0a\0\"\0", 6)),
              "line 1, column 2: expected a character, not NUL (a UTF-16 file needs its byte-order mark)");
    EXPECT_EQ(errorOf("\xFF\xFE\"\0a"), "line 1, column 1: expected UTF-16 text of an even number of bytes");
    EXPECT_EQ(errorOf(std::string("\xFF\xFE\"\0\x3C\xD8\"\0", 8)),
              "line 1, column 2: expected UTF-16 text, not an unpaired surrogate");
}

TEST(StringsTable, ReadsAnEmptyTable) {
    const orvik::StringsTable table = orvik::parseStringsTable("  /* nothing */\n// here\n");
    EXPECT_FALSE(table.error.has_value());
    EXPECT_TRUE(table.entries.empty());
}

// --- Strings dictionaries -------------------------------------------------------------

std::string plist(std::string_view body) {
    return "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
           "<!DOCTYPE plist PUBLIC \"-//Apple//DTD PLIST 1.0//EN\" \"http://www.apple.com/DTDs/PropertyList-1.0.dtd\">\n"
           "<plist version=\"1.0\">\n" +
           std::string(body) + "\n</plist>\n";
}

const std::string keysSent = plist(R"(<dict>
	<key>Keys sent: %lld</key>
	<dict>
		<key>NSStringLocalizedFormatKey</key>
		<string>%#@keys@</string>
		<key>keys</key>
		<dict>
			<key>NSStringFormatSpecTypeKey</key>
			<string>NSStringPluralRuleType</string>
			<key>NSStringFormatValueTypeKey</key>
			<string>lld</string>
			<key>one</key>
			<string>Wysłano %lld klawisz</string>
			<key>few</key>
			<string>Wysłano %lld klawisze</string>
			<key>many</key>
			<string>Wysłano %lld klawiszy</string>
			<key>other</key>
			<string>Wysłano %lld klawisza &amp; &#x2318;</string>
		</dict>
	</dict>
</dict>)");

std::string dictionaryError(std::string_view bytes) {
    const orvik::StringsDictionary dictionary = orvik::parseStringsDictionary(bytes);
    return dictionary.error ? dictionary.error->description() : "no error";
}

TEST(StringsDictionary, ReadsAPluralEntry) {
    const orvik::StringsDictionary dictionary = orvik::parseStringsDictionary(keysSent);
    ASSERT_FALSE(dictionary.error.has_value()) << dictionary.error->description();
    ASSERT_EQ(dictionary.entries.size(), 1u);
    const orvik::StringsDictionaryEntry& entry = dictionary.entries[0];
    EXPECT_EQ(entry.key, "Keys sent: %lld");
    EXPECT_EQ(entry.line, 5);
    EXPECT_EQ(entry.format, "%#@keys@");
    ASSERT_EQ(entry.variables.size(), 1u);
    const orvik::PluralVariable& keys = entry.variables.at("keys");
    EXPECT_EQ(keys.valueType, "lld");
    EXPECT_EQ(keys.forms.size(), 4u);
    EXPECT_EQ(keys.forms.at(PluralCategory::one), "Wysłano %lld klawisz");
    EXPECT_EQ(keys.forms.at(PluralCategory::other), "Wysłano %lld klawisza & \xE2\x8C\x98");
}

TEST(StringsDictionary, ReadsSeveralVariablesCommentsAndEmptyForms) {
    const orvik::StringsDictionary dictionary = orvik::parseStringsDictionary(plist(R"(<dict>
<!-- two counts -->
<key>%lld of %lld</key><dict>
<key>NSStringLocalizedFormatKey</key><string>%1$#@done@ / %2$#@all@</string>
<key>done</key><dict><key>NSStringFormatSpecTypeKey</key><string>NSStringPluralRuleType</string>
<key>NSStringFormatValueTypeKey</key><string>lld</string><key>zero</key><string/><key>other</key><string>%1$lld</string></dict>
<key>all</key><dict><key>NSStringFormatSpecTypeKey</key><string>NSStringPluralRuleType</string>
<key>NSStringFormatValueTypeKey</key><string>lld</string><key>other</key><string>%2$lld</string></dict>
</dict>
<key>empty</key><dict><key>NSStringLocalizedFormatKey</key><string>no variables</string></dict>
</dict>)"));
    ASSERT_FALSE(dictionary.error.has_value()) << dictionary.error->description();
    ASSERT_EQ(dictionary.entries.size(), 2u);
    EXPECT_EQ(dictionary.entries[0].variables.at("done").forms.at(PluralCategory::zero), "");
    EXPECT_EQ(dictionary.entries[0].variables.size(), 2u);
    EXPECT_TRUE(dictionary.entries[1].variables.empty());
}

TEST(StringsDictionary, SaysWhereAndWhatWasExpected) {
    EXPECT_EQ(dictionaryError("<plist><array/></plist>"), "line 1, column 8: expected <string> or <dict>");
    EXPECT_EQ(dictionaryError("<plist><string>x</string></plist>"), "line 1, column 8: expected a <dict> at the root");
    EXPECT_EQ(dictionaryError("<dict/>"), "line 1, column 1: expected <plist>");
    EXPECT_EQ(dictionaryError("<plist><dict><key>a</key><string>b</string></dict></plist>"),
              "line 1, column 26: expected a <dict> with NSStringLocalizedFormatKey for \"a\"");
    EXPECT_EQ(dictionaryError("<plist><dict><key>a</key><dict></dict></dict></plist>"),
              "line 1, column 26: expected a <string> under NSStringLocalizedFormatKey for \"a\"");
    EXPECT_EQ(dictionaryError("<plist><dict>\n<key>a</key><dict><key>NSStringLocalizedFormatKey</key>"
                              "<string>%#@n@</string></dict></dict></plist>"),
              "line 2, column 13: expected a <dict> for the variable \"n\" that \"a\" uses");
    EXPECT_EQ(dictionaryError("<plist><dict><key>a</key><dict><key>NSStringLocalizedFormatKey</key>"
                              "<string>%#@n@</string><key>n</key><dict><key>NSStringFormatSpecTypeKey</key>"
                              "<string>NSStringPluralRuleType</string><key>NSStringFormatValueTypeKey</key>"
                              "<string>lld</string><key>one</key><string>x</string></dict></dict></dict></plist>"),
              "line 1, column 103: expected an \"other\" form for \"n\"");
    EXPECT_EQ(dictionaryError("<plist><dict><key>a</key><dict><key>NSStringLocalizedFormatKey</key>"
                              "<string>%#@n@</string><key>n</key><dict><key>NSStringFormatSpecTypeKey</key>"
                              "<string>NSStringVariableWidthRuleType</string></dict></dict></dict></plist>"),
              "line 1, column 145: expected NSStringPluralRuleType, the only rule type read");
    EXPECT_EQ(dictionaryError("<plist><dict><key>a</key><dict><key>NSStringLocalizedFormatKey</key>"
                              "<string>%#@n@</string><key>n</key><dict><key>NSStringFormatSpecTypeKey</key>"
                              "<string>NSStringPluralRuleType</string><key>NSStringFormatValueTypeKey</key>"
                              "<string>lld</string><key>several</key><string>x</string></dict></dict></dict></plist>"),
              "line 1, column 241: expected NSStringFormatSpecTypeKey, NSStringFormatValueTypeKey or a plural "
              "category (zero, one, two, few, many, other), not \"several\"");
    EXPECT_EQ(dictionaryError("<plist><dict><key>a</key><dict><key>NSStringLocalizedFormatKey</key>"
                              "<string>%#@n@</string><key>n</key><dict><key>NSStringFormatSpecTypeKey</key>"
                              "<string>NSStringPluralRuleType</string><key>NSStringFormatValueTypeKey</key>"
                              "<string>q!</string></dict></dict></dict></plist>"),
              "line 1, column 221: expected a conversion such as lld under NSStringFormatValueTypeKey");
    EXPECT_EQ(dictionaryError("<plist><dict><key>a</key><dict><key>NSStringLocalizedFormatKey</key>"
                              "<string>plain</string><key>n</key><dict/></dict></dict></plist>"),
              "line 1, column 103: expected NSStringFormatSpecTypeKey = NSStringPluralRuleType for \"n\"");
    EXPECT_EQ(dictionaryError("<plist><dict><key>a</key><dict><key>NSStringLocalizedFormatKey</key>"
                              "<string>50 %! off</string></dict></dict></plist>"),
              "line 1, column 69: expected a format string (byte 3: '%!' is no conversion) under "
              "NSStringLocalizedFormatKey");
    EXPECT_EQ(dictionaryError("<plist><dict><key>a</key><dict/><key>a</key><dict/></dict></plist>"),
              "line 1, column 33: expected no second <key>a</key> in one dictionary");
    EXPECT_EQ(dictionaryError("<plist><dict><key>a &nbsp;</key></dict></plist>"),
              "line 1, column 21: expected a character reference (&amp; &lt; &gt; &quot; &apos; or &#…;)");
    EXPECT_EQ(dictionaryError("<plist><dict><key>a</key><dict/></dict></plist>trailing"),
              "line 1, column 48: expected nothing after </plist>");
    EXPECT_EQ(dictionaryError("<plist><dict><!-- never closed"),
              "line 1, column 14: expected '-->' to close the comment that starts here");
    EXPECT_EQ(dictionaryError("<plist><dict><key>unclosed"), "line 1, column 27: expected a closing tag");
}

TEST(StringsDictionary, RejectsDictionariesNestedBeyondWhatTablesUse) {
    std::string deep = "<plist>";
    for (int level = 0; level < 20; ++level) deep += "<dict><key>k</key>";
    EXPECT_NE(dictionaryError(deep).find("expected dictionaries nested at most 8 deep"), std::string::npos);
}

// --- Format specifiers ----------------------------------------------------------------

TEST(FormatSpecifiers, ReadTheConversionsArgumentNumbersAndVariables) {
    const orvik::FormatParse parse = orvik::parseFormat("%lld keys, %@ and 100%% of %2$@; %#@n@ %3$#@m@ %qd %i %5.2f");
    ASSERT_FALSE(parse.error.has_value()) << *parse.error;
    ASSERT_EQ(parse.specifiers.size(), 8u);
    EXPECT_EQ(parse.specifiers[0].text, "%lld");
    EXPECT_EQ(parse.specifiers[0].type, "lld");
    EXPECT_EQ(parse.specifiers[0].argument, 1);
    EXPECT_EQ(parse.specifiers[1].type, "@");
    EXPECT_EQ(parse.specifiers[1].argument, 2);
    EXPECT_EQ(parse.specifiers[2].text, "%2$@");
    EXPECT_EQ(parse.specifiers[2].position, 2);
    EXPECT_EQ(parse.specifiers[2].argument, 2);
    EXPECT_EQ(parse.specifiers[3].variable, "n");
    EXPECT_EQ(parse.specifiers[3].argument, 3);
    EXPECT_EQ(parse.specifiers[4].variable, "m");
    EXPECT_EQ(parse.specifiers[4].argument, 3);
    EXPECT_EQ(parse.specifiers[5].type, "lld");  // %qd
    EXPECT_EQ(parse.specifiers[6].type, "d");    // %i
    EXPECT_EQ(parse.specifiers[7].type, "f");
}

TEST(FormatSpecifiers, SayWhatIsNoSpecifier) {
    EXPECT_EQ(orvik::parseFormat("100 %").error, "byte 4: the specifier '%' has no conversion");
    EXPECT_EQ(orvik::parseFormat("%k").error, "byte 0: '%k' is no conversion");
    EXPECT_EQ(orvik::parseFormat("%#@open").error, "byte 0: a variable \"%#@name@\" needs a name and a closing '@'");
    EXPECT_EQ(orvik::parseFormat("%*d").error, "byte 0: a width taken from an argument ('*') is not supported");
    EXPECT_EQ(orvik::parseFormat("%0$@").error, "byte 0: the argument number 0 is out of range");
}

TEST(FormatSpecifiers, GiveEachArgumentItsType) {
    const auto types = orvik::argumentTypes(orvik::parseFormat("%2$@ has %1$lld, %3$#@n@").specifiers, {{"n", "ld"}});
    ASSERT_TRUE(types.has_value());
    EXPECT_EQ(*types, (std::map<int, std::string>{{1, "lld"}, {2, "@"}, {3, "ld"}}));
    EXPECT_EQ(orvik::describeArguments(*types), "%lld, %@, %ld");
    EXPECT_EQ(orvik::describeArguments({{2, "@"}}), "argument 2 %@");
    EXPECT_EQ(orvik::describeArguments({}), "no arguments");
    std::string problem;
    EXPECT_FALSE(orvik::argumentTypes(orvik::parseFormat("%1$@ %1$lld").specifiers, {}, &problem).has_value());
    EXPECT_EQ(problem, "argument 1 is read as %@ and as %lld");
}

}  // namespace
