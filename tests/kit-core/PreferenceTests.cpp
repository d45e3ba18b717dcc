#include "OrvikKitCore/Preferences.h"

#include <gtest/gtest.h>

#include <limits>
#include <optional>
#include <string>
#include <string_view>
#include <type_traits>

#include "OrvikKitCore/Shortcut.h"
#include "TolvaneCore/KeyRouting.h"

namespace orvik {
namespace {

using Data = PropertyListValue::Data;
using Dictionary = PropertyListValue::Dictionary;
using tolvane::ClosedBehavior;

const Preference<bool> enabled{"enabled", true};
const Preference<std::int64_t> count{"count", 7};
const Preference<double> ratio{"ratio", 0.5};
const Preference<std::string> name{"name", "default name"};
const Preference<Data> blob{"blob", Data{9}};
const Preference<std::optional<std::string>> maybeName{"maybeName", std::nullopt};
const Preference<std::optional<std::string>> maybeNameWithDefault{"maybeNameWithDefault", "fallback"};
const Preference<std::map<std::string, std::int64_t>> counts{"counts", {{"default", 1}}};
const Preference<ClosedBehavior> closedBehavior{"closedBehavior", ClosedBehavior::launchMusic};
const Preference<Shortcut> shortcut{"shortcut", Shortcut{.keyCode = 8, .modifiers = Shortcut::command}};

InMemoryPreferenceStore storeWith(std::string key, PropertyListValue value) {
    return InMemoryPreferenceStore({{std::move(key), std::move(value)}});
}

TEST(InMemoryPreferenceStore, EmptyStoreYieldsEveryDefault) {
    const InMemoryPreferenceStore store;
    EXPECT_EQ(store.read(enabled), true);
    EXPECT_EQ(store.read(count), 7);
    EXPECT_EQ(store.read(ratio), 0.5);
    EXPECT_EQ(store.read(name), "default name");
    EXPECT_EQ(store.read(blob), Data{9});
    EXPECT_EQ(store.read(maybeName), std::nullopt);
    EXPECT_EQ(store.read(maybeNameWithDefault), "fallback");
    EXPECT_EQ(store.read(counts), (std::map<std::string, std::int64_t>{{"default", 1}}));
    EXPECT_EQ(store.read(closedBehavior), ClosedBehavior::launchMusic);
    EXPECT_EQ(store.read(shortcut), (Shortcut{.keyCode = 8, .modifiers = Shortcut::command}));
}

TEST(InMemoryPreferenceStore, ObjectAndSetWorkOnRawValues) {
    InMemoryPreferenceStore store;
    EXPECT_EQ(store.object("k"), std::nullopt);
    store.set(PropertyListValue("v"), "k");
    EXPECT_EQ(store.object("k"), PropertyListValue("v"));
    store.set(std::nullopt, "k");
    EXPECT_EQ(store.object("k"), std::nullopt);
    store.set(std::nullopt, "never stored");
    EXPECT_TRUE(store.values().empty());
}

TEST(InMemoryPreferenceStore, InitialValuesAreKept) {
    const InMemoryPreferenceStore store({{"enabled", false}});
    EXPECT_EQ(store.read(enabled), false);
    EXPECT_EQ(store.values().size(), 1u);
}

TEST(Preferences, WrittenValuesReadBackForEveryType) {
    InMemoryPreferenceStore store;
    store.write(enabled, false);
    store.write(count, std::int64_t{-3});
    store.write(ratio, 2.25);
    store.write(name, std::string("Tolvane"));
    store.write(blob, Data{1, 2, 3});
    store.write(maybeName, std::optional<std::string>("set"));
    store.write(counts, std::map<std::string, std::int64_t>{{"a", 1}, {"b", 2}});
    store.write(closedBehavior, ClosedBehavior::system);
    store.write(shortcut, Shortcut{.keyCode = 40, .modifiers = Shortcut::control | Shortcut::option});

    EXPECT_EQ(store.read(enabled), false);
    EXPECT_EQ(store.read(count), -3);
    EXPECT_EQ(store.read(ratio), 2.25);
    EXPECT_EQ(store.read(name), "Tolvane");
    EXPECT_EQ(store.read(blob), (Data{1, 2, 3}));
    EXPECT_EQ(store.read(maybeName), "set");
    EXPECT_EQ(store.read(counts), (std::map<std::string, std::int64_t>{{"a", 1}, {"b", 2}}));
    EXPECT_EQ(store.read(closedBehavior), ClosedBehavior::system);
    EXPECT_EQ(store.read(shortcut), (Shortcut{.keyCode = 40, .modifiers = Shortcut::control | Shortcut::option}));
}

TEST(Preferences, WritingAnEmptyOptionalRemovesTheKey) {
    InMemoryPreferenceStore store;
    store.write(maybeName, std::optional<std::string>("set"));
    ASSERT_TRUE(store.object("maybeName").has_value());
    store.write(maybeName, std::optional<std::string>());
    EXPECT_EQ(store.object("maybeName"), std::nullopt);
    EXPECT_EQ(store.read(maybeName), std::nullopt);
}

TEST(Preferences, AfterRemovalTheDefaultIsReadEvenWhenItIsNotEmpty) {
    InMemoryPreferenceStore store;
    store.write(maybeNameWithDefault, std::optional<std::string>("set"));
    store.write(maybeNameWithDefault, std::optional<std::string>());
    EXPECT_EQ(store.read(maybeNameWithDefault), "fallback");
}

TEST(Preferences, BooleanStoredAsStringTrueYieldsTheDefault) {
    const auto store = storeWith("enabled", "true");
    EXPECT_EQ(store.read(Preference<bool>{"enabled", false}), false);
    EXPECT_EQ(store.read(Preference<bool>{"enabled", true}), true);
}

TEST(Preferences, RawRepresentableWithUnknownRawValueYieldsTheDefault) {
    EXPECT_EQ(storeWith("closedBehavior", "Ignore").read(closedBehavior), ClosedBehavior::launchMusic);
    EXPECT_EQ(storeWith("closedBehavior", "sometimes").read(closedBehavior), ClosedBehavior::launchMusic);
    EXPECT_EQ(storeWith("closedBehavior", std::int64_t{1}).read(closedBehavior), ClosedBehavior::launchMusic);
}

TEST(Preferences, ClosedBehaviorIsStoredAsItsRawValueString) {
    InMemoryPreferenceStore store;
    for (ClosedBehavior behavior : tolvane::allClosedBehaviors) {
        store.write(closedBehavior, behavior);
        EXPECT_EQ(store.object("closedBehavior"), PropertyListValue(std::string(rawValue(behavior))));
        EXPECT_EQ(store.read(closedBehavior), behavior);
    }
}

TEST(Preferences, DictionaryWithOneBadEntryYieldsTheGoodEntriesOnly) {
    const auto store = storeWith("counts", Dictionary{{"a", 1}, {"bad", "one"}, {"c", 3}});
    EXPECT_EQ(store.read(counts), (std::map<std::string, std::int64_t>{{"a", 1}, {"c", 3}}));
}

TEST(Preferences, DictionaryPreferenceOverANonDictionaryYieldsTheDefault) {
    EXPECT_EQ(storeWith("counts", std::int64_t{1}).read(counts), (std::map<std::string, std::int64_t>{{"default", 1}}));
}

TEST(Preferences, DictionaryEntriesWithoutAFormAreLeftOutWhenWriting) {
    const Preference<std::map<std::string, std::optional<std::int64_t>>> sparse{"sparse", {}};
    InMemoryPreferenceStore store;
    store.write(sparse, {{"kept", 4}, {"dropped", std::nullopt}});
    EXPECT_EQ(store.object("sparse"), PropertyListValue(Dictionary{{"kept", 4}}));
}

TEST(Preferences, NestedDictionariesReadEntryByEntry) {
    const Preference<std::map<std::string, std::map<std::string, bool>>> nested{"nested", {}};
    const auto store = storeWith("nested", Dictionary{
                                               {"inner", Dictionary{{"yes", true}, {"no", "false"}}},
                                               {"notADictionary", true},
                                           });
    EXPECT_EQ(store.read(nested), (std::map<std::string, std::map<std::string, bool>>{{"inner", {{"yes", true}}}}));
}

TEST(Preferences, OptionalOfTheWrongTypeYieldsTheDefault) {
    EXPECT_EQ(storeWith("maybeNameWithDefault", std::int64_t{3}).read(maybeNameWithDefault), "fallback");
}

TEST(Preferences, ShortcutWithNegativeModifiersYieldsTheDefault) {
    const auto store = storeWith("shortcut", Dictionary{{"keyCode", 40}, {"modifiers", -1}});
    EXPECT_EQ(store.read(shortcut), shortcut.defaultValue);
}

TEST(Preferences, ShortcutWithModifiersAbove32BitsYieldsTheDefault) {
    const auto store = storeWith("shortcut", Dictionary{{"keyCode", 40}, {"modifiers", std::int64_t{4294967296}}});
    EXPECT_EQ(store.read(shortcut), shortcut.defaultValue);
}

TEST(Preferences, ShortcutAtThe32BitLimitsReads) {
    const auto store = storeWith("shortcut", Dictionary{{"keyCode", 0}, {"modifiers", std::int64_t{4294967295}}});
    EXPECT_EQ(store.read(shortcut), (Shortcut{.keyCode = 0, .modifiers = 4294967295u}));
}

TEST(Preferences, ShortcutWithoutKeyCodeYieldsTheDefault) {
    EXPECT_EQ(storeWith("shortcut", Dictionary{{"modifiers", 256}}).read(shortcut), shortcut.defaultValue);
}

TEST(Preferences, ShortcutWithStringFieldsOrNotADictionaryYieldsTheDefault) {
    EXPECT_EQ(storeWith("shortcut", Dictionary{{"keyCode", "40"}, {"modifiers", 256}}).read(shortcut),
              shortcut.defaultValue);
    EXPECT_EQ(storeWith("shortcut", std::int64_t{40}).read(shortcut), shortcut.defaultValue);
}

TEST(Preferences, ShortcutIsStoredAsTwoIntegers) {
    InMemoryPreferenceStore store;
    store.write(shortcut, Shortcut{.keyCode = 40, .modifiers = 6400});
    EXPECT_EQ(store.object("shortcut"), PropertyListValue(Dictionary{{"keyCode", 40}, {"modifiers", 6400}}));
}

TEST(Preferences, ReadingNeverWritesAndLeavesABadValueInPlace) {
    auto store = storeWith("enabled", "true");
    EXPECT_EQ(store.read(enabled), true);
    EXPECT_EQ(store.object("enabled"), PropertyListValue("true"));
    store.write(enabled, false);
    EXPECT_EQ(store.object("enabled"), PropertyListValue(false));
}

TEST(Preferences, KeysAreUsedVerbatim) {
    InMemoryPreferenceStore store;
    store.write(Preference<bool>{" Enabled.x ", true}, false);
    EXPECT_TRUE(store.object(" Enabled.x ").has_value());
    EXPECT_FALSE(store.object("enabled").has_value());
}

// Numbers follow the platform's bridging: a number reads as another numeric
// type when its value is represented exactly.

TEST(NumberBridging, IntegersZeroAndOneReadAsBooleansOtherIntegersDoNot) {
    EXPECT_EQ(storeWith("enabled", 0).read(enabled), false);
    EXPECT_EQ(storeWith("enabled", 1).read(Preference<bool>{"enabled", false}), true);
    EXPECT_EQ(storeWith("enabled", 2).read(Preference<bool>{"enabled", false}), false);
    EXPECT_EQ(storeWith("enabled", 0.5).read(Preference<bool>{"enabled", false}), false);
    EXPECT_EQ(storeWith("enabled", 1.0).read(Preference<bool>{"enabled", false}), true);
}

TEST(NumberBridging, BooleansAndIntegralDoublesReadAsIntegers) {
    EXPECT_EQ(storeWith("count", true).read(count), 1);
    EXPECT_EQ(storeWith("count", 42.0).read(count), 42);
    EXPECT_EQ(storeWith("count", -0.0).read(count), 0);
    EXPECT_EQ(storeWith("count", 42.5).read(count), 7);
    EXPECT_EQ(storeWith("count", 9.3e18).read(count), 7);
    EXPECT_EQ(storeWith("count", -9223372036854775808.0).read(count), std::numeric_limits<std::int64_t>::min());
    EXPECT_EQ(storeWith("count", std::numeric_limits<double>::quiet_NaN()).read(count), 7);
    EXPECT_EQ(storeWith("count", std::numeric_limits<double>::infinity()).read(count), 7);
}

TEST(NumberBridging, ExactIntegersAndBooleansReadAsDoubles) {
    EXPECT_EQ(storeWith("ratio", 3).read(ratio), 3.0);
    EXPECT_EQ(storeWith("ratio", false).read(ratio), 0.0);
    EXPECT_EQ(storeWith("ratio", std::int64_t{9007199254740993}).read(ratio), 0.5);
    EXPECT_EQ(storeWith("ratio", std::numeric_limits<std::int64_t>::max()).read(ratio), 0.5);
    EXPECT_EQ(storeWith("ratio", std::numeric_limits<std::int64_t>::min()).read(ratio), -9223372036854775808.0);
}

// The in-memory store reads numbers exactly as the user defaults would, so
// previews and tests read what the app reads; this is a choice, and these
// cases pin it.
TEST(NumberBridging, TheInMemoryStoreBridgesNumbersAsTheUserDefaultsDo) {
    // `defaults write … enabled -int 0` stores an integer; the app reads false.
    EXPECT_EQ(storeWith("enabled", 0).read(enabled), false);
    // A whole-number double reads as an integer, an integer as a double.
    EXPECT_EQ(storeWith("count", 3.0).read(count), 3);
    EXPECT_EQ(storeWith("ratio", 3).read(ratio), 3.0);
    // Booleans are numbers 0 and 1.
    EXPECT_EQ(storeWith("count", false).read(count), 0);
    EXPECT_EQ(storeWith("ratio", true).read(ratio), 1.0);
}

TEST(NumberBridging, ShortcutFieldsAcceptWholeNumberDoublesAndBooleans) {
    EXPECT_EQ(storeWith("shortcut", Dictionary{{"keyCode", 40.0}, {"modifiers", 2304.0}}).read(shortcut),
              (Shortcut{.keyCode = 40, .modifiers = 2304}));
    EXPECT_EQ(storeWith("shortcut", Dictionary{{"keyCode", true}, {"modifiers", false}}).read(shortcut),
              (Shortcut{.keyCode = 1, .modifiers = 0}));
    // A fraction is not a key code: the default stays.
    EXPECT_EQ(storeWith("shortcut", Dictionary{{"keyCode", 40.5}, {"modifiers", 256}}).read(shortcut),
              shortcut.defaultValue);
    EXPECT_EQ(storeWith("shortcut", Dictionary{{"keyCode", 40}, {"modifiers", 4294967296.0}}).read(shortcut),
              shortcut.defaultValue);
}

TEST(Preferences, WriteTakesLiteralsOfThePreferencesType) {
    InMemoryPreferenceStore store;
    store.write(count, 5);
    store.write(maybeName, "x");
    store.write(name, "literal");
    store.write(ratio, 2);
    EXPECT_EQ(store.read(count), 5);
    EXPECT_EQ(store.read(maybeName), std::optional<std::string>("x"));
    EXPECT_EQ(store.read(name), "literal");
    EXPECT_EQ(store.read(ratio), 2.0);
    EXPECT_EQ(store.object("ratio")->kind(), PropertyListValue::Kind::real);
}

// Preference keys are constants fixed at compile time, so a preference
// declared at namespace scope is ready before any code runs.
static_assert(std::is_same_v<decltype(Preference<bool>{}.key), std::string_view>);
constinit const Preference<std::int64_t> constantPreference{"constant", 3};
constinit const Preference<std::optional<std::string>> constantOptional{"constantOptional", std::nullopt};

TEST(Preferences, KeysAreCompileTimeConstants) {
    EXPECT_EQ(constantPreference.key, "constant");
    EXPECT_EQ(InMemoryPreferenceStore().read(constantPreference), 3);
    EXPECT_EQ(InMemoryPreferenceStore().read(constantOptional), std::nullopt);
}

TEST(NumberBridging, StringsAndNumbersNeverCrossOver) {
    EXPECT_EQ(storeWith("count", "42").read(count), 7);
    EXPECT_EQ(storeWith("name", 42).read(name), "default name");
    EXPECT_EQ(storeWith("blob", "bytes").read(blob), Data{9});
}

}  // namespace
}  // namespace orvik
