// The bundle's Info.plist (as CMake configures it for Tolvane.app) and its
// entitlements hold what the app needs: an agent app without a Dock icon,
// for macOS 13 and later, that the system never quits behind the user's
// back, and that may ask to send Apple Events to Music under the hardened
// runtime. On a Mac, scripts/check-app-bundle checks the same
// keys in the built bundle with plutil.
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "BundleFiles.h"

namespace {

using bundlefiles::PlistParse;
using bundlefiles::PlistValue;

PlistParse read(const char* path) {
    const std::optional<std::string> text = bundlefiles::readFile(path);
    if (!text) return PlistParse{.values = {}, .error = std::string("cannot read ") + path};
    return bundlefiles::parseFlatPlist(*text);
}

::testing::AssertionResult hasString(const PlistParse& plist, const std::string& key, const std::string& expected) {
    const auto found = plist.values.find(key);
    if (found == plist.values.end()) return ::testing::AssertionFailure() << key << " is missing";
    if (found->second.kind != PlistValue::Kind::string) return ::testing::AssertionFailure() << key << " is no string";
    if (found->second.string != expected) {
        return ::testing::AssertionFailure() << key << " is \"" << found->second.string << "\", not \"" << expected
                                             << "\"";
    }
    return ::testing::AssertionSuccess();
}

::testing::AssertionResult isTrue(const PlistParse& plist, const std::string& key) {
    const auto found = plist.values.find(key);
    if (found == plist.values.end()) return ::testing::AssertionFailure() << key << " is missing";
    if (found->second.kind != PlistValue::Kind::boolean || !found->second.boolean) {
        return ::testing::AssertionFailure() << key << " is not <true/>";
    }
    return ::testing::AssertionSuccess();
}

::testing::AssertionResult isFalse(const PlistParse& plist, const std::string& key) {
    const auto found = plist.values.find(key);
    if (found == plist.values.end()) return ::testing::AssertionFailure() << key << " is missing";
    if (found->second.kind != PlistValue::Kind::boolean || found->second.boolean) {
        return ::testing::AssertionFailure() << key << " is not <false/>";
    }
    return ::testing::AssertionSuccess();
}

TEST(InfoPlist, NamesTheAppItsIdentifierVersionAndExecutable) {
    const PlistParse plist = read(TOLVANE_INFO_PLIST);
    ASSERT_FALSE(plist.error.has_value()) << *plist.error;
    EXPECT_TRUE(hasString(plist, "CFBundleIdentifier", TOLVANE_BUNDLE_IDENTIFIER));
    EXPECT_TRUE(hasString(plist, "CFBundleName", "Tolvane"));
    EXPECT_TRUE(hasString(plist, "CFBundleExecutable", "Tolvane"));
    EXPECT_TRUE(hasString(plist, "CFBundlePackageType", "APPL"));
    EXPECT_TRUE(hasString(plist, "CFBundleShortVersionString", TOLVANE_VERSION));
    EXPECT_TRUE(hasString(plist, "CFBundleVersion", TOLVANE_VERSION));
    EXPECT_TRUE(hasString(plist, "CFBundleDevelopmentRegion", "en"));
}

TEST(InfoPlist, IsAnAgentAppForMacOS13AndLater) {
    const PlistParse plist = read(TOLVANE_INFO_PLIST);
    ASSERT_FALSE(plist.error.has_value()) << *plist.error;
    EXPECT_TRUE(isTrue(plist, "LSUIElement")) << "a menu-bar utility shows no Dock icon";
    EXPECT_TRUE(hasString(plist, "LSMinimumSystemVersion", "13.0"));
}

TEST(InfoPlist, OptsOutOfAutomaticAndSuddenTermination) {
    const PlistParse plist = read(TOLVANE_INFO_PLIST);
    ASSERT_FALSE(plist.error.has_value()) << *plist.error;
    EXPECT_TRUE(isFalse(plist, "NSSupportsAutomaticTermination"))
        << "a windowless agent looks idle; quitting it would silently stop the media keys";
    EXPECT_TRUE(isFalse(plist, "NSSupportsSuddenTermination"))
        << "at logout the app quits through the normal quit event, not by being killed";
}

TEST(InfoPlist, SaysWhyTheAppSendsAppleEventsToMusic) {
    const PlistParse plist = read(TOLVANE_INFO_PLIST);
    ASSERT_FALSE(plist.error.has_value()) << *plist.error;
    const auto found = plist.values.find("NSAppleEventsUsageDescription");
    ASSERT_NE(found, plist.values.end()) << "without it macOS never asks the user and every command fails";
    const std::string& reason = found->second.string;
    for (const char* word : {"Music", "play", "pause", "track"}) {
        EXPECT_NE(reason.find(word), std::string::npos) << "\"" << reason << "\" lacks \"" << word << "\"";
    }
    EXPECT_EQ(reason.back(), '.') << "one sentence";
}

TEST(Entitlements, AllowAskingToSendAppleEventsAndNothingElse) {
    const PlistParse entitlements = read(TOLVANE_ENTITLEMENTS);
    ASSERT_FALSE(entitlements.error.has_value()) << *entitlements.error;
    EXPECT_TRUE(isTrue(entitlements, "com.apple.security.automation.apple-events"));
    EXPECT_EQ(entitlements.values.size(), 1u) << "the app needs no other exception from the hardened runtime";
}

TEST(FlatPlist, ReadsStringsBooleansAndStringArraysAndRejectsTheRest) {
    const PlistParse plist = bundlefiles::parseFlatPlist(
        "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<!DOCTYPE plist>\n<plist version=\"1.0\">\n<dict>\n"
        "\t<key>A</key>\n\t<string>Tom &amp; Jerry</string>\n\t<key>B</key>\n\t<false/>\n"
        "\t<key>C</key>\n\t<array>\n\t\t<string>en</string>\n\t\t<string>zh-Hans</string>\n\t</array>\n"
        "\t<key>D</key>\n\t<array/>\n</dict>\n</plist>\n");
    ASSERT_FALSE(plist.error.has_value()) << *plist.error;
    EXPECT_EQ(plist.values.at("A").string, "Tom & Jerry");
    EXPECT_EQ(plist.values.at("B").kind, PlistValue::Kind::boolean);
    EXPECT_FALSE(plist.values.at("B").boolean);
    EXPECT_EQ(plist.values.at("C").kind, PlistValue::Kind::stringArray);
    EXPECT_EQ(plist.values.at("C").strings, (std::vector<std::string>{"en", "zh-Hans"}));
    EXPECT_EQ(plist.values.at("D").kind, PlistValue::Kind::stringArray);
    EXPECT_TRUE(plist.values.at("D").strings.empty());
    EXPECT_TRUE(bundlefiles::parseFlatPlist("<plist><dict><key>A</key><integer>1</integer></dict></plist>").error);
    EXPECT_TRUE(bundlefiles::parseFlatPlist("<plist><dict><key>A</key><array><true/></array></dict></plist>").error);
    EXPECT_TRUE(bundlefiles::parseFlatPlist("<plist><dict><key>A</key><array><string>en</string></dict></plist>").error);
    EXPECT_TRUE(bundlefiles::parseFlatPlist("<plist><dict><key>A</key><true/>").error);
    EXPECT_TRUE(
        bundlefiles::parseFlatPlist("<plist><dict><key>A</key><true/><key>A</key><true/></dict></plist>").error);
}

}  // namespace
