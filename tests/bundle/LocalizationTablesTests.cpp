// Every language folder the bundle ships against the English tables (see
// LocalizationCheck.h for the rules). Each rule has its own test, whose
// failure names the language, the table and the key; one more test lists
// everything each language still lacks in one message, so that adding a
// folder and running the tests tells a translator what to do.
#include <gtest/gtest.h>

#include <algorithm>
#include <atomic>
#include <filesystem>
#include <fstream>
#include <set>
#include <sstream>
#include <string>
#include <unistd.h>
#include <vector>

#include "BundleFiles.h"
#include "LocalizationCheck.h"
#include "OrvikKit/StringsLocalizer.h"

namespace {

namespace fs = std::filesystem;
using bundlefiles::LocalizationProblem;
using Kind = LocalizationProblem::Kind;

const std::vector<fs::path> resourceFolders = {TOLVANE_APP_RESOURCES, TOLVANE_KIT_RESOURCES};

// The bundle's own sources: the folders, the configured Info.plist and the
// resource list CMake made for the bundle.
bundlefiles::LocalizationSources bundleSources() {
    bundlefiles::LocalizationSources sources;
    sources.resourceFolders = resourceFolders;
    const std::optional<std::string> plistText = bundlefiles::readFile(TOLVANE_INFO_PLIST);
    const bundlefiles::PlistParse plist = bundlefiles::parseFlatPlist(plistText.value_or(""));
    for (const auto& [key, value] : plist.values) {
        if (key == "NSAppleEventsUsageDescription") sources.infoPlistStrings.emplace(key, value.string);
        if (key == "CFBundleLocalizations") sources.bundleLocalizations = value.strings;
    }
    std::vector<std::pair<std::string, fs::path>> packed;
    std::istringstream manifest(bundlefiles::readFile(TOLVANE_LOCALIZATION_MANIFEST).value_or(""));
    for (std::string line; std::getline(manifest, line);) {
        const std::size_t tab = line.find('\t');
        if (tab != std::string::npos) packed.emplace_back(line.substr(0, tab), line.substr(tab + 1));
    }
    sources.packedFiles = packed;
    return sources;
}

std::string messagesOf(const std::vector<LocalizationProblem>& problems, Kind kind) {
    std::string text;
    for (const LocalizationProblem& problem : problems) {
        if (problem.kind == kind) text += (problem.language.empty() ? "" : problem.language + ": ") + problem.message + "\n";
    }
    return text;
}

class LocalizationTables : public ::testing::Test {
protected:
    static void SetUpTestSuite() { problems_ = bundlefiles::checkLocalizations(bundleSources()); }
    static void expectNothing(Kind kind) {
        const std::string messages = messagesOf(problems_, kind);
        EXPECT_TRUE(messages.empty()) << messages;
    }
    static inline std::vector<LocalizationProblem> problems_;
};

TEST_F(LocalizationTables, FindTheEnglishFolderAndItsTables) {
    const std::vector<std::string> languages = orvik::StringsLocalizer::languagesIn(resourceFolders);
    ASSERT_NE(std::find(languages.begin(), languages.end(), "en"), languages.end());
    const orvik::StringsLocalizer english(resourceFolders, "en");
    EXPECT_TRUE(english.problems().empty());
    EXPECT_EQ(english.localized(orvik::kitText("Quit")), "Quit");
    EXPECT_EQ(english.localized(orvik::appText("Keys sent: %lld", {"3"})), "Keys sent: 3");
}

TEST_F(LocalizationTables, AreReadableByThePortableReaders) { expectNothing(Kind::unreadable); }

TEST_F(LocalizationTables, GiveEveryLanguageEveryEnglishKeyAndNoOther) { expectNothing(Kind::keys); }

TEST_F(LocalizationTables, KeepEachKeysPlaceholdersInEveryValue) {
    expectNothing(Kind::placeholders);
}

TEST_F(LocalizationTables, HaveNoEmptyValue) { expectNothing(Kind::empty); }

TEST_F(LocalizationTables, CoverThePluralCategoriesEachLanguageNeeds) {
    expectNothing(Kind::plurals);
}

TEST_F(LocalizationTables, MatchTheInfoPlistsListOfLocalizations) {
    expectNothing(Kind::localizationList);
}

TEST_F(LocalizationTables, AreAllPackedIntoTheBundle) {
    expectNothing(Kind::packing);
    // The resource list is CMake's: it holds at least the English tables.
    const bundlefiles::LocalizationSources sources = bundleSources();
    std::set<std::string> destinations;
    for (const auto& [destination, source] : *sources.packedFiles) destinations.insert(destination);
    EXPECT_TRUE(destinations.contains("Resources/en.lproj/Localizable.strings"));
    EXPECT_TRUE(destinations.contains("Resources/en.lproj/OrvikKit.strings"));
}

// What a translator reads after adding a folder: everything missing, by
// language, in one message.
TEST_F(LocalizationTables, LackNothingInAnyLanguage) {
    EXPECT_TRUE(problems_.empty()) << "What each language still needs:\n" << bundlefiles::describe(problems_);
}

// --- The check itself, over made-up folders ------------------------------------------

class LocalizationCheckTest : public ::testing::Test {
protected:
    void SetUp() override {
        static std::atomic<int> counter = 0;
        root_ = fs::temp_directory_path() /
                ("tolvane-localization-check-" + std::to_string(::getpid()) + "-" + std::to_string(counter++));
        write("app/en.lproj/Localizable.strings",
              "\"Quit\" = \"Quit\";\n\"Keys sent: %lld\" = \"Keys sent: %lld\";\n\"%@ of %@\" = \"%@ of %@\";\n");
        write("kit/en.lproj/OrvikKit.strings", "\"Version %@\" = \"Version %@\";\n");
        sources_.resourceFolders = {root_ / "app", root_ / "kit"};
        sources_.infoPlistStrings = {{"NSAppleEventsUsageDescription", "Tolvane sends commands to Music."}};
    }

    void TearDown() override { fs::remove_all(root_); }

    void write(const std::string& relative, const std::string& text) {
        const fs::path path = root_ / relative;
        fs::create_directories(path.parent_path());
        std::ofstream(path, std::ios::binary) << text;
    }

    std::string check(Kind kind) { return messagesOf(bundlefiles::checkLocalizations(sources_), kind); }

    static std::string plural(const std::string& forms, const std::string& valueType = "lld") {
        return "<plist><dict><key>Keys sent: %lld</key><dict>"
               "<key>NSStringLocalizedFormatKey</key><string>%#@keys@</string>"
               "<key>keys</key><dict><key>NSStringFormatSpecTypeKey</key><string>NSStringPluralRuleType</string>"
               "<key>NSStringFormatValueTypeKey</key><string>" +
               valueType + "</string>" + forms + "</dict></dict></dict></plist>";
    }

    fs::path root_;
    bundlefiles::LocalizationSources sources_;
};

TEST_F(LocalizationCheckTest, FindsNothingToDoForCompleteTranslations) {
    write("app/de.lproj/Localizable.strings",
          "\"Quit\" = \"Beenden\";\n\"Keys sent: %lld\" = \"Gesendet: %lld\";\n\"%@ of %@\" = \"%2$@ von %1$@\";\n");
    write("kit/de.lproj/OrvikKit.strings", "\"Version %@\" = \"Version %@\";\n");
    write("app/de.lproj/InfoPlist.strings", "NSAppleEventsUsageDescription = \"Tolvane sendet Befehle an Musik.\";\n");
    write("app/ru.lproj/Localizable.strings",
          "\"Quit\" = \"Завершить\";\n\"Keys sent: %lld\" = \"Отправлено: %lld\";\n\"%@ of %@\" = \"%@ из %@\";\n");
    write("kit/ru.lproj/OrvikKit.strings", "\"Version %@\" = \"Версия %@\";\n");
    write("app/ru.lproj/InfoPlist.strings", "\"NSAppleEventsUsageDescription\" = \"Tolvane отправляет команды.\";\n");
    write("app/ru.lproj/Localizable.stringsdict",
          plural("<key>one</key><string>Отправлена %lld клавиша</string><key>few</key><string>Отправлено %lld клавиши</string>"
                 "<key>many</key><string>Отправлено %lld клавиш</string><key>other</key><string>Отправлено %lld клавиши</string>"));
    write("app/en.lproj/Localizable.stringsdict",
          plural("<key>zero</key><string>No keys sent</string><key>one</key><string>One key sent</string>"
                 "<key>other</key><string>Keys sent: %lld</string>"));
    sources_.bundleLocalizations = std::vector<std::string>{"en", "de", "ru"};
    const auto problems = bundlefiles::checkLocalizations(sources_);
    EXPECT_TRUE(problems.empty()) << bundlefiles::describe(problems);
}

TEST_F(LocalizationCheckTest, NamesMissingAndForeignKeysAndTables) {
    write("app/de.lproj/Localizable.strings", "\"Quit\" = \"Beenden\";\n\"Quit\" = \"Ende\";\n\"Qiut\" = \"x\";\n");
    write("app/de.lproj/Extra.strings", "\"a\" = \"b\";\n");
    EXPECT_EQ(check(Kind::keys),
              "de: InfoPlist.strings is missing: it holds the Info.plist's 1 text, translated\n"
              "de: Localizable.strings: \"Quit\" is given twice (lines 1 and 2)\n"
              "de: Localizable.strings: \"Qiut\" (line 3) is no key of the English table\n"
              "de: Localizable.strings: \"%@ of %@\" is missing\n"
              "de: Localizable.strings: \"Keys sent: %lld\" is missing\n"
              "de: OrvikKit.strings is missing: it holds the 1 text of en.lproj/OrvikKit.strings, translated\n"
              "de: Extra.strings is no table of en.lproj\n");
}

TEST_F(LocalizationCheckTest, NamesValuesThatChangeTheirKeysPlaceholders) {
    write("app/de.lproj/Localizable.strings",
          "\"Quit\" = \"Beenden %@\";\n\"Keys sent: %lld\" = \"Gesendet: %d\";\n\"%@ of %@\" = \"%1$@ von %@\";\n");
    write("kit/de.lproj/OrvikKit.strings", "\"Version %@\" = \"Version 100 %\";\n");
    EXPECT_EQ(check(Kind::placeholders),
              "de: Localizable.strings: \"Quit\" (line 1) reads %@ where the key reads no arguments\n"
              "de: Localizable.strings: \"Keys sent: %lld\" (line 2) reads %d where the key reads %lld\n"
              "de: Localizable.strings: \"%@ of %@\" (line 3) mixes numbered placeholders (%1$@) with unnumbered ones (%@)\n"
              "de: OrvikKit.strings: \"Version %@\" (line 1) has a '%' that starts no placeholder (byte 12: the "
              "specifier '%' has no conversion; write %% for a percent sign)\n");
}

TEST_F(LocalizationCheckTest, NamesEmptyValuesAndForms) {
    write("app/de.lproj/Localizable.strings", "\"Quit\" = \" \";\n");
    write("app/de.lproj/Localizable.stringsdict",
          plural("<key>one</key><string></string><key>other</key><string>%lld</string>"));
    EXPECT_EQ(check(Kind::empty),
              "de: Localizable.strings: \"Quit\" has an empty value\n"
              "de: Localizable.stringsdict: \"Keys sent: %lld\", variable \"keys\", one form is empty\n");
}

TEST_F(LocalizationCheckTest, NamesMissingAndUnusedPluralForms) {
    write("app/pl.lproj/Localizable.stringsdict",
          plural("<key>one</key><string>%lld klawisz</string><key>two</key><string>%lld</string>"
                 "<key>other</key><string>%lld klawisza</string>"));
    write("app/ar.lproj/Localizable.stringsdict", plural("<key>other</key><string>%lld</string>"));
    write("app/xx.lproj/Localizable.stringsdict", plural("<key>other</key><string>%lld</string>"));
    // Hebrew's many form, which macOS 13's rules still use, is no stray form.
    write("app/he.lproj/Localizable.stringsdict",
          plural("<key>one</key><string>%lld</string><key>two</key><string>%lld</string>"
                 "<key>many</key><string>%lld</string><key>other</key><string>%lld</string>"));
    EXPECT_EQ(check(Kind::plurals),
              "ar: Localizable.stringsdict: \"Keys sent: %lld\", variable \"keys\" lacks the zero, one, two, few, "
              "many forms (whole numbers in ar take zero, one, two, few, many, other)\n"
              "pl: Localizable.stringsdict: \"Keys sent: %lld\", variable \"keys\" lacks the few, many forms (whole "
              "numbers in pl take one, few, many)\n"
              "pl: Localizable.stringsdict: \"Keys sent: %lld\", variable \"keys\" has a two form, which no whole "
              "number takes in pl (one, few, many)\n"
              "xx: Localizable.stringsdict needs the plural rules of \"xx\", which kit-core/src/PluralRules.cpp does "
              "not have yet\n");
}

TEST_F(LocalizationCheckTest, LetsAFormForOneNumberLeaveTheNumberOut) {
    // English "one" is 1 alone; French "one" is 0 and 1, so its form must show the number.
    write("app/en.lproj/Localizable.stringsdict",
          plural("<key>one</key><string>One key sent</string><key>other</key><string>Keys sent: %lld</string>"));
    write("app/fr.lproj/Localizable.stringsdict",
          plural("<key>one</key><string>Une touche</string><key>many</key><string>%lld</string>"
                 "<key>other</key><string>%lld touches</string>"));
    write("app/de.lproj/Localizable.stringsdict",
          plural("<key>one</key><string>%lld Taste</string><key>other</key><string>%lld Tasten</string>", "d"));
    EXPECT_EQ(check(Kind::placeholders),
              "de: Localizable.stringsdict: \"Keys sent: %lld\"'s NSStringLocalizedFormatKey reads %d where the key "
              "reads %lld\n"
              "fr: Localizable.stringsdict: \"Keys sent: %lld\", variable \"keys\", one form reads no arguments where "
              "the key reads %lld\n");
}

TEST_F(LocalizationCheckTest, RequiresTheListOfLocalizationsOnceThereIsASecondLanguage) {
    EXPECT_EQ(check(Kind::localizationList), "");  // English alone
    write("app/de.lproj/Localizable.strings", "\"Quit\" = \"Beenden\";\n");
    EXPECT_EQ(check(Kind::localizationList),
              "Info.plist has no CFBundleLocalizations; with more than one language folder it lists them all: de, en\n");
    sources_.bundleLocalizations = std::vector<std::string>{"en", "fr", "en"};
    EXPECT_EQ(check(Kind::localizationList),
              "fr: CFBundleLocalizations lists \"fr\", which has no .lproj folder\n"
              "en: CFBundleLocalizations lists \"en\" twice\n"
              "de: add \"de\" to CFBundleLocalizations in app/bundle/Info.plist.in\n");
}

TEST_F(LocalizationCheckTest, NamesFilesTheBundleDoesNotPack) {
    write("app/de.lproj/Localizable.strings", "\"Quit\" = \"Beenden\";\n");
    write("kit/de.lproj/Localizable.strings", "\"Quit\" = \"Beenden\";\n");
    sources_.packedFiles = std::vector<std::pair<std::string, fs::path>>{
        {"Resources/en.lproj/Localizable.strings", root_ / "app/en.lproj/Localizable.strings"},
        {"Resources/en.lproj/OrvikKit.strings", root_ / "kit/en.lproj/OrvikKit.strings"},
        {"Resources/en.lproj/OrvikKit.strings", root_ / "kit/en.lproj/Gone.strings"},
    };
    const std::string messages = check(Kind::packing);
    EXPECT_NE(messages.find("de: de.lproj/Localizable.strings is in two resource folders"), std::string::npos) << messages;
    EXPECT_NE(messages.find("the bundle's resource list has Resources/en.lproj/OrvikKit.strings twice"), std::string::npos);
    EXPECT_NE(messages.find("Gone.strings, which does not exist"), std::string::npos);
    EXPECT_NE(messages.find("de: de.lproj/Localizable.strings is not in the bundle's resource list (configure the "
                            "build again)"),
              std::string::npos);
}

TEST_F(LocalizationCheckTest, ListsEverythingANewLanguageLacksInOneMessage) {
    write("app/sv.lproj/Localizable.strings", "\"Quit\" = \"Avsluta\";\n");
    EXPECT_EQ(bundlefiles::describe(bundlefiles::checkLocalizations(sources_)),
              "Every language: 1 thing to do\n"
              "  - Info.plist has no CFBundleLocalizations; with more than one language folder it lists them all: en, sv\n"
              "sv.lproj: 4 things to do\n"
              "  - InfoPlist.strings is missing: it holds the Info.plist's 1 text, translated\n"
              "  - Localizable.strings: \"%@ of %@\" is missing\n"
              "  - Localizable.strings: \"Keys sent: %lld\" is missing\n"
              "  - OrvikKit.strings is missing: it holds the 1 text of en.lproj/OrvikKit.strings, translated\n");
}

TEST_F(LocalizationCheckTest, SaysWhereATableCannotBeRead) {
    write("app/de.lproj/Localizable.strings", "\"Quit\" = \"Beenden\"\n");
    write("app/de.lproj/notes.txt", "");
    EXPECT_EQ(check(Kind::unreadable),
              "de: de.lproj/Localizable.strings: line 2, column 1: expected ';' after the value\n"
              "de: de.lproj/notes.txt: only .strings and .stringsdict files belong here\n");
}

}  // namespace
