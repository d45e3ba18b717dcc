// The bundle's English strings tables against the code: every text the code
// can show has its entry in the right table (the app's main table
// Localizable.strings, or the kit's OrvikKit.strings), and the tables hold
// nothing else. Adding a text to the code without adding it to its table
// fails here, on every platform.
//
// Texts are found two ways: by reading every call of kitText and appText in
// the sources (literal keys), and by running the code that builds the menu
// over every state the keys depend on (computed keys, and a check that each
// text lands in the table its call names).
#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>
#include <filesystem>
#include <map>
#include <set>
#include <string>
#include <vector>

#include "AppWorld.h"
#include "BundleFiles.h"
#include "OrvikKitCore/Utf8.h"
#include "OrvikKit/LocalizedText.h"
#include "OrvikKit/MenuChrome.h"
#include "OrvikKit/MissingIcon.h"
#include "OrvikKitCore/StringsTable.h"
#include "Tolvane/MenuContent.h"
#include "TolvaneCore/AppStatus.h"

namespace {

namespace fs = std::filesystem;
using bundlefiles::Table;

const fs::path sourceDirectory = TOLVANE_SOURCE_DIR;

// Where texts are built: the modules' sources and headers, portable and
// macOS alike. LocalizedText.h only defines kitText and appText.
const std::vector<fs::path> scannedFolders = {"core", "kit-core", "kit", "app"};
const fs::path definingHeader = fs::path("kit") / "base" / "include" / "OrvikKit" / "LocalizedText.h";
const std::set<std::string> sourceExtensions = {".h", ".hpp", ".cpp", ".mm", ".m"};

// The calls whose key is computed, each covered below by running the code
// that computes it. A new computed key needs its own coverage here.
const std::set<std::pair<Table, std::string>> reviewedComputedKeys = {
    {Table::app, "std::string(headerText(status))"},  // every AppStatus, below
};

fs::path tablePath(Table table) { return table == Table::kit ? TOLVANE_KIT_STRINGS : TOLVANE_APP_STRINGS; }

struct LoadedTable {
    std::map<std::string, orvik::StringsEntry> entries;
    std::vector<std::string> problems;
};

LoadedTable load(Table table) {
    LoadedTable loaded;
    const std::optional<std::string> text = bundlefiles::readFile(tablePath(table));
    if (!text) {
        loaded.problems.push_back("cannot read " + tablePath(table).string());
        return loaded;
    }
    if (!orvik::isValidUtf8(*text)) loaded.problems.push_back("not valid UTF-8");
    const orvik::StringsTable parse = orvik::parseStringsTable(*text);
    if (parse.error) loaded.problems.push_back(parse.error->description());
    for (const orvik::StringsEntry& entry : parse.entries) {
        if (!loaded.entries.emplace(entry.key, entry).second) {
            loaded.problems.push_back("line " + std::to_string(entry.line) + ": \"" + entry.key + "\" a second time");
        }
    }
    return loaded;
}

bundlefiles::SourceScan scanSources() {
    bundlefiles::SourceScan all;
    for (const fs::path& folder : scannedFolders) {
        for (const auto& item : fs::recursive_directory_iterator(sourceDirectory / folder)) {
            if (!item.is_regular_file() || !sourceExtensions.contains(item.path().extension().string())) continue;
            const fs::path relative = fs::relative(item.path(), sourceDirectory);
            if (relative == definingHeader) continue;
            const std::optional<std::string> text = bundlefiles::readFile(item.path());
            if (!text) {
                all.problems.push_back("cannot read " + relative.string());
                continue;
            }
            bundlefiles::SourceScan scan = bundlefiles::scanSource(*text, relative.generic_string());
            all.texts.insert(all.texts.end(), scan.texts.begin(), scan.texts.end());
            all.computed.insert(all.computed.end(), scan.computed.begin(), scan.computed.end());
            all.problems.insert(all.problems.end(), scan.problems.begin(), scan.problems.end());
        }
    }
    return all;
}

// Every status the header can show: appStatusFor over every combination of
// its facts.
std::set<std::string> everyHeaderText() {
    std::set<std::string> texts;
    for (int bits = 0; bits < 16; ++bits) {
        const tolvane::AppStatus status = tolvane::appStatusFor({
            .isEnabled = (bits & 1) != 0,
            .hasAccessibility = (bits & 2) != 0,
            .tapActive = (bits & 4) != 0,
            .automationDenied = (bits & 8) != 0,
        });
        texts.emplace(tolvane::headerText(status));
    }
    return texts;
}

// The texts reached by running the code, by table.
struct ShownTexts {
    std::vector<std::pair<orvik::LocalizedText, std::string>> texts;  // the text and where it was shown

    void add(const orvik::LocalizedText& text, const std::string& where) { texts.emplace_back(text, where); }
    void add(const tolvane::MenuText& text, const std::string& where) {
        if (const auto* localized = std::get_if<orvik::LocalizedText>(&text)) add(*localized, where);
    }
};

void collect(ShownTexts& shown, const tolvane::MenuContent& menu) {
    shown.add(menu.header.status, "header status");
    shown.add(menu.header.switchHelp, "header switch help");
    if (menu.updateReminder) {
        shown.add(menu.updateReminder->title, "update reminder title");
        shown.add(menu.updateReminder->message, "update reminder message");
        shown.add(menu.updateReminder->check.title, "update reminder check");
        shown.add(menu.updateReminder->notNow.title, "update reminder not now");
    }
    for (const orvik::WarningCard& warning : menu.warnings) {
        shown.add(warning.title, "warning title");
        shown.add(warning.message, "warning message");
        shown.add(warning.button, "warning button");
    }
    shown.add(menu.nowPlaying.title, "now playing title");
    shown.add(menu.nowPlaying.subtitle, "now playing subtitle");
    for (const tolvane::TransportButton& button : menu.nowPlaying.transport) shown.add(button.help, "transport help");
    shown.add(menu.settings.title, "settings title");
    for (const tolvane::ClosedBehaviorOption& option : menu.settings.options) shown.add(option.title, "settings option");
    shown.add(orvik::OpenAtLoginRow::title(), "open at login");
    shown.add(menu.privacy.title, "privacy title");
    for (const orvik::PrivacyItem& item : menu.privacy.items) shown.add(item.text, "privacy item");
    const orvik::MenuFooter::Lines lines = menu.footer.lines();
    if (lines.caption) shown.add(*lines.caption, "footer caption");
    for (const orvik::FooterRow& row : lines.rows) {
        shown.add(row.title, "footer row title");
        shown.add(row.detail, "footer row detail");
    }
    // The footer without an update action shows the version as its caption.
    orvik::MenuFooter withoutUpdates = menu.footer;
    withoutUpdates.caption.reset();
    withoutUpdates.checkForUpdates = nullptr;
    const orvik::MenuFooter::Lines plain = withoutUpdates.lines();
    if (plain.caption) shown.add(*plain.caption, "footer version caption");
}

// The menu in the states its texts depend on.
ShownTexts runTheMenu() {
    using testsupport::AppWorld;
    using testsupport::FakeScriptEngine;
    ShownTexts shown;
    const auto environment = [](AppWorld& world) {
        return tolvane::MenuEnvironment{.loginItem = std::make_shared<testsupport::FakeLoginItemService>(false),
                                        .urlOpener = world.urlOpener,
                                        .version = "1.2",
                                        .quit = [] {}};
    };
    {  // Music closed, both permissions missing, a key sent, the reminder card shown.
        AppWorld world;
        world.accessibility->trusted = false;
        world.music->answer(testsupport::commandSource(tolvane::MusicCommand::playPause),
                            FakeScriptEngine::error(-1743));
        const auto state = world.launch();
        state->perform(tolvane::MusicCommand::playPause);
        world.settle();
        tolvane::MenuContent menu = tolvane::menuContent(state, environment(world));
        menu.updateReminder = orvik::UpdateReminderCard::from(state->updateReminders());
        collect(shown, menu);
    }
    {  // Music running without a track, a key sent; then switched off.
        AppWorld world;
        world.running->setRunning("com.apple.Music", true);
        const auto state = world.launch();
        world.settle();
        world.press(testsupport::nextKey);
        world.settle();
        collect(shown, tolvane::menuContent(state, environment(world)));
        state->setEnabled(false);
        collect(shown, tolvane::menuContent(state, environment(world)));
    }
    {  // A track playing.
        AppWorld world;
        world.musicPlays("So What", "Miles Davis", true);
        const auto state = world.launch();
        world.settle();
        collect(shown, tolvane::menuContent(state, environment(world)));
    }
    return shown;
}

TEST(StringsTables, AreWellFormedEnglishTablesWhoseValuesRepeatTheirKeys) {
    for (Table table : {Table::app, Table::kit}) {
        const LoadedTable loaded = load(table);
        EXPECT_TRUE(loaded.problems.empty()) << bundlefiles::tableName(table) << ": " << loaded.problems.front();
        EXPECT_FALSE(loaded.entries.empty()) << bundlefiles::tableName(table);
        for (const auto& [key, entry] : loaded.entries) {
            EXPECT_EQ(entry.value, key) << bundlefiles::tableName(table) << " line " << entry.line
                                        << ": the English value is the key itself";
        }
    }
}

TEST(StringsTables, HoldEveryTextWrittenInTheCode) {
    const bundlefiles::SourceScan scan = scanSources();
    EXPECT_TRUE(scan.problems.empty()) << scan.problems.front();
    const std::map<Table, LoadedTable> tables = {{Table::app, load(Table::app)}, {Table::kit, load(Table::kit)}};
    std::map<Table, std::size_t> found;
    for (const bundlefiles::SourceText& text : scan.texts) {
        ++found[text.table];
        EXPECT_TRUE(tables.at(text.table).entries.contains(text.key))
            << text.location << ": \"" << text.key << "\" is missing from " << bundlefiles::tableName(text.table)
            << ".strings";
    }
    // The scan itself works: both tables' texts are found.
    EXPECT_GE(found[Table::app], 15u);
    EXPECT_GE(found[Table::kit], 10u);
}

TEST(StringsTables, HoldEveryComputedText) {
    const bundlefiles::SourceScan scan = scanSources();
    std::set<std::pair<Table, std::string>> computed;
    for (const bundlefiles::ComputedText& text : scan.computed) {
        computed.emplace(text.table, text.argument);
        EXPECT_TRUE(reviewedComputedKeys.contains({text.table, text.argument}))
            << text.location << ": the key `" << text.argument
            << "` is computed; cover every value it can take in this test";
    }
    for (const auto& reviewed : reviewedComputedKeys) {
        EXPECT_TRUE(computed.contains(reviewed)) << "`" << reviewed.second << "` is no longer called; update this test";
    }
    const LoadedTable app = load(Table::app);
    for (const std::string& text : everyHeaderText()) {
        EXPECT_TRUE(app.entries.contains(text)) << "header text \"" << text << "\" is missing from Localizable.strings";
    }
}

TEST(StringsTables, HoldEveryTextTheMenuShowsInTheTableItNames) {
    const ShownTexts shown = runTheMenu();
    const std::map<Table, LoadedTable> tables = {{Table::app, load(Table::app)}, {Table::kit, load(Table::kit)}};
    std::set<std::string> places;
    for (const auto& [text, where] : shown.texts) {
        places.insert(where);
        ASSERT_TRUE(!text.table || *text.table == orvik::LocalizedText::kitTable)
            << where << ": \"" << text.key << "\" names the table " << *text.table << ", which the bundle lacks";
        const Table table = text.table ? Table::kit : Table::app;
        EXPECT_TRUE(tables.at(table).entries.contains(text.key))
            << where << ": \"" << text.key << "\" is missing from " << bundlefiles::tableName(table) << ".strings";
    }
    // Every part of the menu was reached.
    EXPECT_EQ(places.size(), 21u);
}

TEST(StringsTables, HoldEveryTextTheMissingIconWindowShowsOnEveryMacOS) {
    const LoadedTable kit = load(Table::kit);
    std::set<std::string> keys;
    for (std::int64_t major : {13, 14, 15, 16, 26, 27}) {
        const orvik::MissingIconHelp help = orvik::missingIconHelp("Tolvane", {major, 0, 0});
        std::vector<orvik::LocalizedText> texts = help.paragraphs;
        texts.push_back(help.title);
        for (const orvik::MissingIconButton& button : help.buttons) texts.push_back(button.title);
        for (const orvik::LocalizedText& text : texts) {
            keys.insert(text.key);
            ASSERT_EQ(text.table, orvik::LocalizedText::kitTable) << "\"" << text.key << "\" on macOS " << major;
            EXPECT_TRUE(kit.entries.contains(text.key))
                << "macOS " << major << ": \"" << text.key << "\" is missing from OrvikKit.strings";
        }
    }
    // Both versions' texts were reached: title, four paragraphs, three buttons.
    EXPECT_EQ(keys.size(), 8u);
}

TEST(StringsTables, HoldNothingTheCodeDoesNotShow) {
    const bundlefiles::SourceScan scan = scanSources();
    std::map<Table, std::set<std::string>> known;
    for (const bundlefiles::SourceText& text : scan.texts) known[text.table].insert(text.key);
    for (const std::string& text : everyHeaderText()) known[Table::app].insert(text);
    for (Table table : {Table::app, Table::kit}) {
        for (const auto& [key, entry] : load(table).entries) {
            EXPECT_TRUE(known[table].contains(key)) << bundlefiles::tableName(table) << ".strings line " << entry.line
                                                    << ": \"" << key << "\" is shown nowhere";
        }
    }
}

// The readers these tests rely on.

TEST(SourceScan, FindsLiteralKeysJoinedAsTheCompilerJoinsThem) {
    const bundlefiles::SourceScan scan = bundlefiles::scanSource(
        "using orvik::appText;\n"
        "// appText(\"in a comment\")\n"
        "auto a = appText(\"Keys sent: %lld\", {std::to_string(n)});\n"
        "auto b = orvik::kitText(\"A new \" /* note */ \"version\\u2026\");\n"
        "auto c = appText(on ? \"Turn off\" : \"Turn on\");\n"
        "auto d = appText(std::string(headerText(status)));\n"
        "const char* e = \"appText(\\\"in a string\\\")\"; char f = '\"';\n"
        "auto g = kitText(\"\\u2318Q\");\n",
        "example.cpp");
    EXPECT_TRUE(scan.problems.empty());
    ASSERT_EQ(scan.texts.size(), 5u);
    EXPECT_EQ(scan.texts[0].key, "Keys sent: %lld");
    EXPECT_EQ(scan.texts[0].table, Table::app);
    EXPECT_EQ(scan.texts[0].location, "example.cpp:3");
    EXPECT_EQ(scan.texts[1].key, "A new version\xE2\x80\xA6");
    EXPECT_EQ(scan.texts[1].table, Table::kit);
    EXPECT_EQ(scan.texts[2].key, "Turn off");
    EXPECT_EQ(scan.texts[3].key, "Turn on");
    EXPECT_EQ(scan.texts[4].key, "\xE2\x8C\x98Q");
    ASSERT_EQ(scan.computed.size(), 1u);
    EXPECT_EQ(scan.computed[0].argument, "std::string(headerText(status))");
    EXPECT_EQ(scan.computed[0].location, "example.cpp:6");
}

TEST(SourceScan, ReadsObjectiveCAndRawLiteralsWithoutTakingThemForCalls) {
    const bundlefiles::SourceScan scan = bundlefiles::scanSource(
        "NSString* s = @\"kitText(\\\"no\\\")\";\n"
        "auto r = R\"x(appText(\"no\"))x\";\n"
        "auto n = 1'000'000;\n"
        "auto t = appText(u8\"Open Music\");\n",
        "example.mm");
    ASSERT_EQ(scan.texts.size(), 1u);
    EXPECT_EQ(scan.texts[0].key, "Open Music");
    EXPECT_EQ(scan.texts[0].location, "example.mm:4");
    EXPECT_TRUE(scan.computed.empty());
}


}  // namespace
