// The whole sample menu (the snapshot's state) built from the app state,
// laid out and painted into the recording canvas, with FixedTextMeasurer's
// metrics: what every redraw of the popover costs the portable code. The
// platform's text engine and drawing come on top. The counter
// "allocations" is the number of heap allocations of one build, layout and
// paint.
#include <benchmark/benchmark.h>

#include "../tests/allocation/AllocationCounter.h"
#include "OrvikKitCore/Preferences.h"
#include "TestSupport/FakeArtwork.h"
#include "TestSupport/FakeEventTapSystem.h"
#include "TestSupport/FakeNotificationCenter.h"
#include "TestSupport/FakeScriptEngine.h"
#include "TestSupport/FakeSystemServices.h"
#include "TestSupport/FakeThumbnailer.h"
#include "TestSupport/ManualMainThread.h"
#include "TestSupport/ManualSerialQueue.h"
#include "TestSupport/QuietRunningApplications.h"
#include "TestSupport/RecordingCanvas.h"
#include "TestSupport/RecordingLogger.h"
#include "TestSupport/SnapshotFlag.h"
#include "Tolvane/MenuSnapshot.h"
#include "Tolvane/MenuView.h"

namespace tolvane {
namespace {

// Fakes for the preview state, which calls none of them.
AppServices quietServices() {
    using namespace testsupport;
    return AppServices{
        .mainThread = std::make_shared<ManualMainThread>(),
        .runningApplications = std::make_shared<QuietRunningApplications>(),
        .distributedNotifications = std::make_shared<FakeNotificationCenter>(),
        .workspaceNotifications = std::make_shared<FakeNotificationCenter>(),
        .accessibility = std::make_shared<FakeAccessibilityTrust>(true),
        .eventTaps = std::make_shared<FakeEventTapSystem>(),
        .scripting = std::make_shared<MusicScripting>(std::make_shared<ManualSerialQueue>(),
                                                      std::make_shared<FakeScriptEngine>(),
                                                      std::make_shared<FakeThumbnailer>(),
                                                      std::make_shared<RecordingLogger>()),
        .appInfo = std::make_shared<FakeAppInfoSource>("1.2"),
        .urlOpener = std::make_shared<FakeURLOpener>(),
        .standardDefaults = std::make_shared<orvik::InMemoryPreferenceStore>(),
        .now = [] { return orvik::dateFromSecondsSince1970(1793491200.0); },
    };
}

struct SampleMenu {
    AppServices services = quietServices();
    std::shared_ptr<AppState> state =
        MenuSnapshot::sampleState(services, testsupport::drawableArtwork("sample", 88, 88));
    std::shared_ptr<testsupport::FakeLoginItemService> loginItem =
        std::make_shared<testsupport::FakeLoginItemService>(false);
    std::shared_ptr<orvik::OpenAtLoginRow> openAtLogin = std::make_shared<orvik::OpenAtLoginRow>(loginItem);
    testsupport::FixedTextMeasurer measurer;
    testsupport::RecordingCanvas canvas;

    // Builds, lays out and paints the menu once; answers its height.
    double drawOnce() {
        canvas.operations.clear();
        const orvik::View view =
            MenuView{menuContent(state, MenuEnvironment{.loginItem = loginItem,
                                                        .openAtLogin = openAtLogin,
                                                        .urlOpener = services.urlOpener,
                                                        .version = "1.2",
                                                        .quit = [] {}}),
                     orvik::ViewState{}}
                .body();
        const orvik::LayoutNode root =
            orvik::layout(view, orvik::ProposedSize::unspecified(), orvik::LayoutContext{.measurer = measurer, .localize = {}});
        orvik::paint(root, canvas, orvik::Appearance::light);
        return root.frame.height;
    }
};

void BM_SampleMenu_BuildLayOutAndPaint(benchmark::State& benchmarkState, bool snapshot) {
    const testsupport::ScopedSnapshotFlag flag(snapshot);
    SampleMenu menu;
    menu.canvas.operations.reserve(256);
    menu.drawOnce();
    std::size_t allocations = 0;
    {
        const testing::AllocationCountingScope counting;
        benchmark::DoNotOptimize(menu.drawOnce());
        allocations = counting.allocations();
    }
    for (auto _ : benchmarkState) {
        benchmark::DoNotOptimize(menu.drawOnce());
    }
    benchmarkState.counters["allocations"] = static_cast<double>(allocations);
    benchmarkState.counters["drawOperations"] = static_cast<double>(menu.canvas.operations.size());
}
BENCHMARK_CAPTURE(BM_SampleMenu_BuildLayOutAndPaint, staticControls, true)->Unit(benchmark::kMicrosecond);
BENCHMARK_CAPTURE(BM_SampleMenu_BuildLayOutAndPaint, liveControls, false)->Unit(benchmark::kMicrosecond);

}  // namespace
}  // namespace tolvane
