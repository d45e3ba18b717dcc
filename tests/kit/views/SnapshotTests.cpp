// Snapshot rendering: the flag, file names, the appearance table, scale 2,
// and silent failures, on the recording snapshot platform (whose "PNG" is
// the bitmap's size as text) and a real temporary directory.
#include "OrvikKit/Snapshot.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <chrono>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>

#include "TestSupport/RecordingCanvas.h"
#include "TestSupport/SnapshotFlag.h"

namespace orvik {
namespace {

using testsupport::DrawOperation;
using testsupport::RecordingSnapshotPlatform;
using testsupport::ScopedSnapshotFlag;

// A fresh directory under the system's temporary directory, removed afterwards.
class TemporaryDirectory {
public:
    TemporaryDirectory() {
        const auto stamp = std::chrono::steady_clock::now().time_since_epoch().count();
        path_ = std::filesystem::temp_directory_path() / ("tolvane-snapshot-" + std::to_string(stamp));
        std::filesystem::create_directories(path_);
    }
    ~TemporaryDirectory() { std::filesystem::remove_all(path_); }
    TemporaryDirectory(const TemporaryDirectory&) = delete;
    TemporaryDirectory& operator=(const TemporaryDirectory&) = delete;

    std::string path() const { return path_.string(); }
    std::vector<std::string> files() const {
        std::vector<std::string> names;
        for (const auto& entry : std::filesystem::directory_iterator(path_)) names.push_back(entry.path().filename());
        std::sort(names.begin(), names.end());
        return names;
    }
    std::string contents(const std::string& name) const {
        std::ifstream file(path_ / name, std::ios::binary);
        return std::string(std::istreambuf_iterator<char>(file), {});
    }

private:
    std::filesystem::path path_;
};

View menuSized(double width, double height) {
    return shape(Shape::rectangle(), Fill::solid(Color::primary())).frame(width, height);
}

TEST(SnapshotTest, FileNamesJoinMenuLanguageVariantAndAppearanceWithHyphens) {
    EXPECT_EQ(Snapshot::fileName("en", std::nullopt, "light"), "menu-en-light.png");
    EXPECT_EQ(Snapshot::fileName("en", std::nullopt, "dark"), "menu-en-dark.png");
    EXPECT_EQ(Snapshot::fileName("en", "wide", "light"), "menu-en-wide-light.png");
    EXPECT_EQ(Snapshot::fileName("de", "wide", "dark"), "menu-de-wide-dark.png");
}

TEST(SnapshotTest, TheLanguageIsTheFirstPreferredLocalisationOrEnglish) {
    EXPECT_EQ(Snapshot::language({}), "en");
    EXPECT_EQ(Snapshot::language({"de", "en"}), "de");
}

TEST(SnapshotTest, TheAppearancesAreLightOnGrey093ThenDarkOnGrey016) {
    const auto& table = Snapshot::appearances();
    ASSERT_EQ(table.size(), 2u);
    EXPECT_EQ(table[0].name, "light");
    EXPECT_EQ(table[0].appearance, Appearance::light);
    EXPECT_EQ(table[0].background, (Rgba{0.93, 0.93, 0.93, 1}));
    EXPECT_EQ(table[1].name, "dark");
    EXPECT_EQ(table[1].appearance, Appearance::dark);
    EXPECT_EQ(table[1].background, (Rgba{0.16, 0.16, 0.16, 1}));
}

TEST(SnapshotTest, RenderMenuSetsTheFlagBeforeBuildingAndWritesOneFilePerAppearance) {
    const ScopedSnapshotFlag restore(false);
    const TemporaryDirectory directory;
    RecordingSnapshotPlatform platform;
    std::vector<bool> flagWhileBuilding;
    Snapshot::renderMenu(directory.path(), std::nullopt, [&] {
        flagWhileBuilding.push_back(Snapshot::isActive());
        return menuSized(330, 100);
    }, platform);
    EXPECT_EQ(flagWhileBuilding, (std::vector<bool>{true, true}));
    EXPECT_TRUE(Snapshot::isActive()) << "never reset by the rendering";
    EXPECT_EQ(directory.files(), (std::vector<std::string>{"menu-en-dark.png", "menu-en-light.png"}));
    EXPECT_EQ(directory.contents("menu-en-light.png"), "660x200");
}

TEST(SnapshotTest, AVariantGoesIntoBothFileNames) {
    const ScopedSnapshotFlag restore(false);
    const TemporaryDirectory directory;
    RecordingSnapshotPlatform platform;
    Snapshot::renderMenu(directory.path(), "wide", [] { return menuSized(10, 10); }, platform);
    EXPECT_EQ(directory.files(), (std::vector<std::string>{"menu-en-wide-dark.png", "menu-en-wide-light.png"}));
}

TEST(SnapshotTest, TheFirstPreferredLocalisationNamesTheFilesAndLooksTheTextsUp) {
    const ScopedSnapshotFlag restore(false);
    const TemporaryDirectory directory;
    RecordingSnapshotPlatform platform;
    platform.localizations = {"de", "en"};
    Snapshot::renderMenu(directory.path(), std::nullopt, [] { return text(kitText("Quit"), Font{12}); }, platform);
    EXPECT_EQ(directory.files(), (std::vector<std::string>{"menu-de-dark.png", "menu-de-light.png"}));
    EXPECT_EQ(platform.languagesAsked, (std::vector<std::string>{"de", "de"}));
}

TEST(SnapshotTest, TheImageIsTwoPixelsPerPointOnTheAppearancesBackground) {
    const ScopedSnapshotFlag restore(false);
    const TemporaryDirectory directory;
    RecordingSnapshotPlatform platform;
    Snapshot::renderMenu(directory.path(), std::nullopt, [] { return menuSized(330, 123.5); }, platform);
    ASSERT_EQ(platform.bitmaps.size(), 2u);
    for (const auto& bitmap : platform.bitmaps) {
        EXPECT_EQ(bitmap.pixelWidth, 660);
        // A whole number of points: 123.5 rounded up, no half-covered row.
        EXPECT_EQ(bitmap.pixelHeight, 248);
        EXPECT_DOUBLE_EQ(bitmap.scale, 2);
        ASSERT_FALSE(bitmap.operations.empty());
        EXPECT_EQ(bitmap.operations[0].kind, DrawOperation::Kind::fill);
        EXPECT_EQ(bitmap.operations[0].frame, (Rect{0, 0, 330, 124}));
    }
    EXPECT_EQ(platform.bitmaps[0].appearance, Appearance::light);
    EXPECT_EQ(platform.bitmaps[0].operations[0].paint.color(), (Rgba{0.93, 0.93, 0.93, 1}));
    EXPECT_EQ(platform.bitmaps[1].appearance, Appearance::dark);
    EXPECT_EQ(platform.bitmaps[1].operations[0].paint.color(), (Rgba{0.16, 0.16, 0.16, 1}));
    EXPECT_EQ(platform.bitmaps[1].operations[1].paint.color(), standardColor(Color::primary(), Appearance::dark));
}

TEST(SnapshotTest, ADirectoryThatDoesNotExistGetsNoFilesAndIsNotCreated) {
    const ScopedSnapshotFlag restore(false);
    const TemporaryDirectory parent;
    const std::string missing = parent.path() + "/missing";
    RecordingSnapshotPlatform platform;
    Snapshot::renderMenu(missing, std::nullopt, [] { return menuSized(10, 10); }, platform);
    EXPECT_FALSE(std::filesystem::exists(missing));
    EXPECT_EQ(platform.bitmaps.size(), 2u) << "the failure of the first file does not stop the second";
}

TEST(SnapshotTest, AnImageThatCannotBeEncodedLeavesItsFileMissing) {
    const ScopedSnapshotFlag restore(false);
    const TemporaryDirectory directory;
    RecordingSnapshotPlatform platform;
    platform.failsToEncode = true;
    Snapshot::renderMenu(directory.path(), std::nullopt, [] { return menuSized(10, 10); }, platform);
    EXPECT_TRUE(directory.files().empty());
}

TEST(SnapshotTest, AnEmptyViewWritesNothing) {
    const ScopedSnapshotFlag restore(false);
    const TemporaryDirectory directory;
    RecordingSnapshotPlatform platform;
    Snapshot::renderMenu(directory.path(), std::nullopt, [] { return menuSized(0, 0); }, platform);
    EXPECT_TRUE(directory.files().empty());
    EXPECT_TRUE(platform.bitmaps.empty());
}

TEST(SnapshotTest, APictureInHebrewIsLaidOutFromTheRightAndOneInGermanFromTheLeft) {
    const ScopedSnapshotFlag restore(false);
    const TemporaryDirectory directory;
    const auto firstBoxX = [&](std::vector<std::string> localizations) {
        RecordingSnapshotPlatform platform;
        platform.localizations = std::move(localizations);
        Snapshot::renderMenu(directory.path(), std::nullopt, [] {
            std::vector<View> boxes;
            boxes.push_back(menuSized(10, 10));
            boxes.push_back(menuSized(30, 10));
            return hStack(VerticalAlignment::center, 0, std::move(boxes));
        }, platform);
        // After the background: the first box.
        return platform.bitmaps.at(0).operations.at(1).frame.x;
    };
    EXPECT_DOUBLE_EQ(firstBoxX({"he"}), 30);
    EXPECT_DOUBLE_EQ(firstBoxX({"ar", "en"}), 30);
    EXPECT_DOUBLE_EQ(firstBoxX({"de"}), 0);
    EXPECT_DOUBLE_EQ(firstBoxX({}), 0);
}

}  // namespace
}  // namespace orvik
