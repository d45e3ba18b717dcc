// The user-defaults store against the real NSUserDefaults, in a suite domain
// of the test's own that is removed afterwards. macOS only.
#import <Foundation/Foundation.h>

#include <gtest/gtest.h>

#include <cstdint>
#include <memory>
#include <optional>
#include <string>

#include "OrvikKitMac/BaseAdapters.h"
#include "OrvikKitCore/Preferences.h"

namespace orvik::mac {
namespace {

class UserDefaultsStoreTest : public testing::Test {
protected:
    const std::string suite = "com.orvik.tolvane.tests.defaults";
    std::shared_ptr<PreferenceStore> store;

    void SetUp() override {
        store = makeUserDefaults(suite);
        ASSERT_NE(store, nullptr);
    }

    void TearDown() override {
        [NSUserDefaults.standardUserDefaults removePersistentDomainForName:@"com.orvik.tolvane.tests.defaults"];
    }
};

TEST_F(UserDefaultsStoreTest, EveryKindRoundTrips) {
    const PropertyListValue values[] = {
        PropertyListValue(true),
        PropertyListValue(std::int64_t{-42}),
        PropertyListValue(0.25),
        PropertyListValue("Ich bin ein Éclair"),
        PropertyListValue(PropertyListValue::Data{0, 1, 255}),
        PropertyListValue(PropertyListValue::Dictionary{{"keyCode", PropertyListValue(std::int64_t{40})},
                                                        {"modifiers", PropertyListValue(std::int64_t{6400})}}),
    };
    for (const PropertyListValue& value : values) {
        store->set(value, "value");
        EXPECT_EQ(store->object("value"), value);
    }
}

TEST_F(UserDefaultsStoreTest, NothingRemovesTheKey) {
    store->set(PropertyListValue(true), "enabled");
    store->set(std::nullopt, "enabled");
    EXPECT_EQ(store->object("enabled"), std::nullopt);
}

TEST_F(UserDefaultsStoreTest, TypedPreferencesReadWhatWasWritten) {
    const Preference<bool> enabled{"enabled", true};
    const Preference<std::optional<double>> since{"updateReminderSince", std::nullopt};
    store->write(enabled, false);
    store->write(since, std::optional<double>(1'700'000'000.5));
    EXPECT_FALSE(store->read(enabled));
    EXPECT_EQ(store->read(since), std::optional<double>(1'700'000'000.5));
}

TEST_F(UserDefaultsStoreTest, ADecomposedStringReadsBackComposed) {
    store->set(PropertyListValue("Cafe\xCC\x81"), "title");  // "e" + combining acute accent
    EXPECT_EQ(store->object("title"), PropertyListValue("Caf\xC3\xA9"));  // "é"
}

}  // namespace
}  // namespace orvik::mac
