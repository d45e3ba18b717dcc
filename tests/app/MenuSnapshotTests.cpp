// Snapshot mode end to end: the entry's "--snapshot" check, the sample menu
// rendered into a real directory through the recording snapshot platform
// (whose "PNG" is the bitmap's size as text), and no system work at all.
#include "Tolvane/MenuSnapshot.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <chrono>
#include <cmath>
#include <filesystem>
#include <fstream>
#include <iterator>

#include "AppWorld.h"
#include "TestSupport/FakeArtwork.h"
#include "TestSupport/RecordingCanvas.h"
#include "TestSupport/SnapshotFlag.h"
#include "Tolvane/Entry.h"

namespace tolvane {
namespace {

using testsupport::AppWorld;
using testsupport::DrawOperation;
using testsupport::FakeLoginItemService;
using testsupport::RecordingSnapshotPlatform;
using testsupport::ScopedSnapshotFlag;
using Kind = DrawOperation::Kind;

class SnapshotModeTest : public testing::Test {
protected:
    SnapshotModeTest() {
        const auto stamp = std::chrono::steady_clock::now().time_since_epoch().count();
        directory = std::filesystem::temp_directory_path() / ("tolvane-shots-" + std::to_string(stamp));
        std::filesystem::create_directories(directory);
    }
    ~SnapshotModeTest() override { std::filesystem::remove_all(directory); }

    // Snapshot rendering sets the process-wide flag for good; the tests of
    // live views that share this process get it back.
    ScopedSnapshotFlag restore{false};
    std::filesystem::path directory;
    AppWorld world;
    std::shared_ptr<FakeLoginItemService> loginItem = std::make_shared<FakeLoginItemService>(true);
    RecordingSnapshotPlatform rendering;
    struct ArtworkCall {
        double size;
        double angle;
    };
    std::vector<ArtworkCall> artworkCalls;
    std::vector<std::string> rendered;

    MenuSnapshot::Platform platform() {
        return MenuSnapshot::Platform{
            .rendering = rendering,
            .services = world.services(),
            .loginItem = loginItem,
            .version = "1.2",
            .makeArtwork =
                [this](const MenuSnapshot::SampleArtwork& sample) {
                    artworkCalls.push_back({sample.sizeInPoints, sample.angleInDegrees});
                    return std::optional<ArtworkImage>(
                        testsupport::drawableArtwork("sample", sample.sizeInPoints, sample.sizeInPoints));
                },
        };
    }

    std::optional<int> run(std::vector<std::string> arguments) {
        return runSnapshotIfAsked(arguments, [this](const std::string& to) {
            rendered.push_back(to);
            MenuSnapshot::Platform sample = platform();
            MenuSnapshot::render(to, sample);
        });
    }

    std::vector<std::string> files(const std::filesystem::path& in) const {
        std::vector<std::string> names;
        if (!std::filesystem::exists(in)) return names;
        for (const auto& entry : std::filesystem::directory_iterator(in)) names.push_back(entry.path().filename());
        std::sort(names.begin(), names.end());
        return names;
    }
};

TEST_F(SnapshotModeTest, TheArgumentsSnapshotDirectoryWriteTheLightAndDarkMenuAndExitWithStatus0) {
    const auto status = run({"Tolvane", "--snapshot", directory.string()});
    EXPECT_EQ(status, 0);
    EXPECT_EQ(files(directory), (std::vector<std::string>{"menu-en-dark.png", "menu-en-light.png"}));
}

TEST_F(SnapshotModeTest, TwoSnapshotOptionsUseTheFirstDirectory) {
    const std::filesystem::path second = directory / "b";
    std::filesystem::create_directories(second);
    run({"Tolvane", "--snapshot", directory.string(), "--snapshot", second.string()});
    EXPECT_EQ(rendered, std::vector<std::string>{directory.string()});
    EXPECT_TRUE(files(second).empty());
}

TEST_F(SnapshotModeTest, SnapshotAsTheLastArgumentStartsTheAppNormally) {
    EXPECT_EQ(run({"Tolvane", "--snapshot"}), std::nullopt);
    EXPECT_EQ(run({"Tolvane"}), std::nullopt);
    EXPECT_TRUE(rendered.empty());
    EXPECT_TRUE(rendering.bitmaps.empty());
}

TEST_F(SnapshotModeTest, ADirectoryThatDoesNotExistYieldsNoFilesAndStillExitStatus0) {
    const std::filesystem::path missing = directory / "missing";
    EXPECT_EQ(run({"Tolvane", "--snapshot", missing.string()}), 0);
    EXPECT_FALSE(std::filesystem::exists(missing));
    EXPECT_EQ(rendering.bitmaps.size(), 2u);
}

TEST_F(SnapshotModeTest, TheImagesAreTwoPixelsPerPointOfTheMenu660Wide) {
    run({"Tolvane", "--snapshot", directory.string()});
    ASSERT_EQ(rendering.bitmaps.size(), 2u);
    for (const auto& bitmap : rendering.bitmaps) {
        EXPECT_EQ(bitmap.pixelWidth, 660);
        EXPECT_DOUBLE_EQ(bitmap.scale, 2);
        EXPECT_DOUBLE_EQ(bitmap.operations[0].frame.width, 330);
        EXPECT_EQ(bitmap.pixelHeight, static_cast<int>(std::ceil(bitmap.operations[0].frame.height * 2)));
    }
    std::ifstream light(directory / "menu-en-light.png");
    std::string contents((std::istreambuf_iterator<char>(light)), {});
    EXPECT_TRUE(contents.starts_with("660x"));
}

TEST_F(SnapshotModeTest, TheSnapshotShowsTheSampleStateInStaticForms) {
    run({"Tolvane", "--snapshot", directory.string()});
    ASSERT_EQ(rendering.bitmaps.size(), 2u);
    ASSERT_EQ(artworkCalls.size(), 1u);
    EXPECT_DOUBLE_EQ(artworkCalls[0].size, 88);
    EXPECT_DOUBLE_EQ(artworkCalls[0].angle, -60);
    for (const auto& bitmap : rendering.bitmaps) {
        std::vector<std::string> texts;
        std::size_t images = 0;
        std::size_t capsules = 0;
        for (const auto& operation : bitmap.operations) {
            if (operation.kind == Kind::text) texts.push_back(operation.text);
            if (operation.kind == Kind::image) ++images;
            if (operation.kind == Kind::fill && operation.shape == orvik::Shape::capsule()) ++capsules;
        }
        const auto shows = [&](const std::string& text) {
            return std::find(texts.begin(), texts.end(), text) != texts.end();
        };
        EXPECT_TRUE(shows("Tolvane"));
        EXPECT_TRUE(shows("Manh\u00E3 de N\u00E9voa"));
        EXPECT_TRUE(shows("Lia Moreno & Davi Sato"));
        EXPECT_TRUE(shows("Keys sent: 12"));
        EXPECT_TRUE(shows("Open Music"));
        EXPECT_TRUE(shows("Version 1.2"));
        EXPECT_FALSE(shows("A new version may be out")) << "the sample reminder is not due";
        EXPECT_FALSE(shows("Allow Accessibility access")) << "the sample has Accessibility";
        EXPECT_EQ(images, 1u);
        EXPECT_EQ(capsules, 2u) << "both switches drawn";
    }
}

TEST_F(SnapshotModeTest, TheSnapshotRunTouchesNoSystemService) {
    run({"Tolvane", "--snapshot", directory.string()});
    EXPECT_EQ(world.accessibility->requestCalls + world.accessibility->isTrustedCalls, 0u);
    EXPECT_EQ(world.accessibility->promptsShown, 0u);
    EXPECT_EQ(world.taps->tapsCreated(), 0u);
    EXPECT_TRUE(world.running->questions().empty());
    EXPECT_TRUE(world.music->runs().empty());
    EXPECT_TRUE(world.standardDefaults->values().empty());
    EXPECT_TRUE(world.settings->values().empty());
    EXPECT_TRUE(world.urlOpener->opened().empty());
    EXPECT_EQ(world.distributed->observerCount() + world.workspace->observerCount(), 0u);
    EXPECT_EQ(world.mainThread->pendingTimerCount(), 0u);
    EXPECT_EQ(loginItem->isEnabledCalls, 0u);
    EXPECT_TRUE(loginItem->requests.empty());
}

}  // namespace
}  // namespace tolvane
