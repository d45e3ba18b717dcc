// The portable lookup of texts in `.lproj` folders: NSBundle's order
// (the language's strings dictionary and table, then the development
// language's, then the key), plural forms by the language's rules, and the
// choice of a localisation from the user's preferred languages.
#include <gtest/gtest.h>

#include <atomic>
#include <filesystem>
#include <fstream>
#include <string>
#include <unistd.h>

#include "OrvikKit/LocalizedText.h"
#include "OrvikKit/StringsLocalizer.h"

namespace {

namespace fs = std::filesystem;
using orvik::appText;
using orvik::kitText;
using orvik::StringsLocalizer;

std::string pluralDictionary(const std::string& key, const std::string& forms) {
    return "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<plist version=\"1.0\">\n<dict>\n<key>" + key +
           "</key>\n<dict>\n<key>NSStringLocalizedFormatKey</key><string>%#@keys@</string>\n"
           "<key>keys</key>\n<dict>\n"
           "<key>NSStringFormatSpecTypeKey</key><string>NSStringPluralRuleType</string>\n"
           "<key>NSStringFormatValueTypeKey</key><string>lld</string>\n" +
           forms + "</dict>\n</dict>\n</dict>\n</plist>\n";
}

// Two resource folders, as the app's and the kit's, in a fresh directory.
class StringsLocalizerTest : public ::testing::Test {
protected:
    void SetUp() override {
        static std::atomic<int> counter = 0;
        root_ = fs::temp_directory_path() /
                ("tolvane-localizer-" + std::to_string(::getpid()) + "-" + std::to_string(counter++));
        fs::create_directories(root_);
        write("app/en.lproj/Localizable.strings",
              "\"Quit app\" = \"Quit app\";\n\"Keys sent: %lld\" = \"Keys sent: %lld\";\n\"Only English\" = \"Only English\";\n");
        write("kit/en.lproj/OrvikKit.strings", "\"Version %@\" = \"Version %@\";\n");
        write("app/de.lproj/Localizable.strings",
              "\"Quit app\" = \"App beenden\";\n\"Keys sent: %lld\" = \"Gesendete Tasten: %lld\";\n");
        write("kit/de.lproj/OrvikKit.strings", "\"Version %@\" = \"Version %@ (de)\";\n");
        write("app/pl.lproj/Localizable.strings", "\"Keys sent: %lld\" = \"Wysłane klawisze: %lld\";\n");
        write("app/pl.lproj/Localizable.stringsdict",
              pluralDictionary("Keys sent: %lld", "<key>one</key><string>Wysłano %lld klawisz</string>\n"
                                                  "<key>few</key><string>Wysłano %lld klawisze</string>\n"
                                                  "<key>many</key><string>Wysłano %lld klawiszy</string>\n"
                                                  "<key>other</key><string>Wysłano %lld klawisza</string>\n"));
        write("app/ar.lproj/Localizable.stringsdict",
              pluralDictionary("Keys sent: %lld", "<key>zero</key><string>zero %lld</string>\n"
                                                  "<key>one</key><string>one %lld</string>\n"
                                                  "<key>two</key><string>two %lld</string>\n"
                                                  "<key>few</key><string>few %lld</string>\n"
                                                  "<key>many</key><string>many %lld</string>\n"
                                                  "<key>other</key><string>other %lld</string>\n"));
        write("app/en.lproj/Localizable.stringsdict",
              pluralDictionary("Keys sent: %lld", "<key>zero</key><string>No keys sent yet</string>\n"
                                                  "<key>one</key><string>One key sent</string>\n"
                                                  "<key>other</key><string>Keys sent: %lld</string>\n"));
        write("app/zh-Hans.lproj/Localizable.strings", "\"Quit app\" = \"退出应用\";\n");
        write("app/broken.lproj/Localizable.strings", "\"Quit app\" = \"x\"\n\"b\" = \"c\";\n");
        write("app/broken.lproj/Localizable.stringsdict", "<plist><dict>");
    }

    void TearDown() override { fs::remove_all(root_); }

    void write(const std::string& relative, const std::string& text) {
        const fs::path path = root_ / relative;
        fs::create_directories(path.parent_path());
        std::ofstream(path, std::ios::binary) << text;
    }

    StringsLocalizer localizer(std::string_view language) const {
        return StringsLocalizer({root_ / "app", root_ / "kit"}, language);
    }

    fs::path root_;
};

TEST_F(StringsLocalizerTest, LooksTextsUpInTheTableTheyName) {
    const StringsLocalizer german = localizer("de");
    EXPECT_EQ(german.language(), "de");
    EXPECT_EQ(german.localized(appText("Quit app")), "App beenden");
    EXPECT_EQ(german.localized(kitText("Version %@", {"1.2"})), "Version 1.2 (de)");
    EXPECT_EQ(german.localized(appText("Keys sent: %lld", {"3"})), "Gesendete Tasten: 3");
    EXPECT_TRUE(german.problems().empty());
}

TEST_F(StringsLocalizerTest, FallsBackToTheDevelopmentLanguageAndThenToTheKey) {
    const StringsLocalizer german = localizer("de");
    EXPECT_EQ(german.localized(appText("Only English")), "Only English");
    EXPECT_EQ(german.localized(appText("Nowhere %@", {"x"})), "Nowhere x");
    // A text of a table that is not the one holding its key is not found there.
    EXPECT_EQ(german.localized(kitText("Quit app")), "Quit app");
    // The development language's strings dictionary answers for a language
    // without one of its own.
    EXPECT_EQ(localizer("zh-Hans").localized(appText("Keys sent: %lld", {"1"})), "One key sent");
}

TEST_F(StringsLocalizerTest, ChoosesPluralFormsByTheLanguagesRules) {
    const StringsLocalizer polish = localizer("pl");
    EXPECT_EQ(polish.localized(appText("Keys sent: %lld", {"1"})), "Wysłano 1 klawisz");
    EXPECT_EQ(polish.localized(appText("Keys sent: %lld", {"3"})), "Wysłano 3 klawisze");
    EXPECT_EQ(polish.localized(appText("Keys sent: %lld", {"5"})), "Wysłano 5 klawiszy");
    EXPECT_EQ(polish.localized(appText("Keys sent: %lld", {"22"})), "Wysłano 22 klawisze");
    EXPECT_EQ(polish.localized(appText("Keys sent: %lld", {"112"})), "Wysłano 112 klawiszy");
    // An argument that is no whole number takes "other".
    EXPECT_EQ(polish.localized(appText("Keys sent: %lld", {"many"})), "Wysłano many klawisza");

    const StringsLocalizer arabic = localizer("ar");
    EXPECT_EQ(arabic.localized(appText("Keys sent: %lld", {"0"})), "zero 0");
    EXPECT_EQ(arabic.localized(appText("Keys sent: %lld", {"2"})), "two 2");
    EXPECT_EQ(arabic.localized(appText("Keys sent: %lld", {"105"})), "few 105");
    EXPECT_EQ(arabic.localized(appText("Keys sent: %lld", {"111"})), "many 111");
    EXPECT_EQ(arabic.localized(appText("Keys sent: %lld", {"100"})), "other 100");
}

TEST_F(StringsLocalizerTest, UsesAZeroFormForZeroInEveryLanguageAndOtherForMissingForms) {
    const StringsLocalizer english = localizer("en");
    EXPECT_EQ(english.localized(appText("Keys sent: %lld", {"0"})), "No keys sent yet");
    EXPECT_EQ(english.localized(appText("Keys sent: %lld", {"1"})), "One key sent");
    EXPECT_EQ(english.localized(appText("Keys sent: %lld", {"2"})), "Keys sent: 2");

    orvik::StringsDictionaryEntry entry;
    entry.format = "[%#@n@]";
    entry.variables["n"].forms = {{orvik::PluralCategory::other, "%lld things"}};
    EXPECT_EQ(StringsLocalizer::pluralFormat(entry, "ru", {"1"}), "[%lld things]");
    EXPECT_EQ(StringsLocalizer::pluralFormat(entry, "xx", {"1"}), "[%lld things]");  // a language without rules
    EXPECT_EQ(StringsLocalizer::pluralFormat(entry, "ru", {}), "[%lld things]");      // no argument
}

TEST_F(StringsLocalizerTest, ChoosesTheFolderOfTheClosestLanguage) {
    EXPECT_EQ(localizer("de-AT").language(), "de");
    EXPECT_EQ(localizer("zh-Hans-CN").language(), "zh-Hans");
    EXPECT_EQ(localizer("fi").language(), "en");
    EXPECT_EQ(localizer("fi").localized(appText("Quit app")), "Quit app");
}

TEST_F(StringsLocalizerTest, ReportsTablesItCannotReadAndLeavesThemOut) {
    const StringsLocalizer broken = localizer("broken");
    ASSERT_EQ(broken.problems().size(), 2u);
    EXPECT_EQ(broken.problems()[0], "broken.lproj/Localizable.strings: line 2, column 1: expected ';' after the value");
    EXPECT_EQ(broken.problems()[1], "broken.lproj/Localizable.stringsdict: line 1, column 14: expected <key> or </dict>");
    EXPECT_EQ(broken.localized(appText("Quit app")), "Quit app");
}

TEST_F(StringsLocalizerTest, ListsTheLanguageFoldersOfEveryResourceFolder) {
    EXPECT_EQ(StringsLocalizer::languagesIn({root_ / "app", root_ / "kit", root_ / "missing"}),
              (std::vector<std::string>{"ar", "broken", "de", "en", "pl", "zh-Hans"}));
}

TEST(StringsLocalizerChoice, TakesTheFirstPreferredLanguageTheBundleHas) {
    const std::vector<std::string> available = {"de", "en", "pt-BR", "zh-Hans", "zh-Hant"};
    EXPECT_EQ(StringsLocalizer::preferredLocalization(available, {"fi", "de", "en"}), "de");
    EXPECT_EQ(StringsLocalizer::preferredLocalization(available, {"pt-BR"}), "pt-BR");
    EXPECT_EQ(StringsLocalizer::preferredLocalization(available, {"pt_BR"}), "pt-BR");
    EXPECT_EQ(StringsLocalizer::preferredLocalization(available, {"zh-Hant-HK"}), "zh-Hant");
    EXPECT_EQ(StringsLocalizer::preferredLocalization(available, {"pt"}), "en");
    EXPECT_EQ(StringsLocalizer::preferredLocalization(available, {}), "en");
}

TEST(StringsLocalizerChoice, ReadsTheLanguagesOfAnAppleLanguagesArgument) {
    EXPECT_EQ(StringsLocalizer::languagesArgument("(de)"), (std::vector<std::string>{"de"}));
    EXPECT_EQ(StringsLocalizer::languagesArgument(" (de, \"pt-BR\" ,en) "),
              (std::vector<std::string>{"de", "pt-BR", "en"}));
    EXPECT_EQ(StringsLocalizer::languagesArgument("zh-Hans"), (std::vector<std::string>{"zh-Hans"}));
    EXPECT_TRUE(StringsLocalizer::languagesArgument("()").empty());
    EXPECT_TRUE(StringsLocalizer::languagesArgument("").empty());
    EXPECT_TRUE(StringsLocalizer::languagesArgument("(de; fr)").empty());
    EXPECT_TRUE(StringsLocalizer::languagesArgument("(de").empty());
}

}  // namespace
