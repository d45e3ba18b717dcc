// The services a snapshot run hands to the preview state: the whole sample
// menu renders through them without one call (any call would stop the
// process), and the footer shows the version they were given.
#include "Tolvane/SnapshotServices.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>

#include "TestSupport/RecordingCanvas.h"
#include "TestSupport/SnapshotFlag.h"
#include "Tolvane/MenuSnapshot.h"

namespace tolvane {
namespace {

using testsupport::DrawOperation;

TEST(SnapshotServicesTest, EveryServiceIsThere) {
    const AppServices services = MenuSnapshot::refusingServices("3.4");
    EXPECT_TRUE(services.mainThread && services.runningApplications && services.distributedNotifications &&
                services.workspaceNotifications && services.accessibility && services.eventTaps &&
                services.scripting && services.appInfo && services.urlOpener && services.standardDefaults &&
                services.now);
    EXPECT_TRUE(services.mainThread->isCurrent());
    EXPECT_EQ(services.appInfo->version(), "3.4");
}

TEST(SnapshotServicesTest, TheSampleMenuRendersThroughThemWithoutACall) {
    testsupport::ScopedSnapshotFlag restore{false};
    testsupport::RecordingSnapshotPlatform rendering;
    MenuSnapshot::Platform platform{
        .rendering = rendering,
        .services = MenuSnapshot::refusingServices("3.4"),
        .loginItem = nullptr,
        .version = "3.4",
        .makeArtwork = nullptr,
    };
    const std::filesystem::path missing = std::filesystem::temp_directory_path() / "tolvane-no-such-directory";
    MenuSnapshot::render(missing.string(), platform);
    ASSERT_EQ(rendering.bitmaps.size(), 2u);
    const auto& operations = rendering.bitmaps[0].operations;
    EXPECT_TRUE(std::any_of(operations.begin(), operations.end(), [](const DrawOperation& operation) {
        return operation.kind == DrawOperation::Kind::text && operation.text.find("3.4") != std::string::npos;
    }));
}

}  // namespace
}  // namespace tolvane
