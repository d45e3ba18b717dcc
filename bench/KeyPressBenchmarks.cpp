// One key press through the app as the event tap's callback sees it: decode,
// gate, the app state's handler (is Music running, route, count) and the
// command queued for the Music controller, on fakes whose scripting queue
// holds the first run so every later command only waits in the queue.
#include <benchmark/benchmark.h>

#include <cstdint>

#include "TestSupport/KeyPathWorld.h"

namespace tolvane {
namespace {

using testsupport::KeyPathWorld;
using testsupport::mediaKeyData1;

// A press and its release of next, previous and play in turn: each pair is
// one key press, and each press queues one command.
void BM_KeyPress_ThroughTapAndStateIntoTheQueue(benchmark::State& benchmarkState) {
    KeyPathWorld world(true);
    constexpr std::int64_t keys[] = {17, 18, 16};
    std::size_t index = 0;
    for (auto _ : benchmarkState) {
        const std::int64_t key = keys[index++ % 3];
        benchmark::DoNotOptimize(world.taps->deliverMediaKey(mediaKeyData1(key, true)));
        benchmark::DoNotOptimize(world.taps->deliverMediaKey(mediaKeyData1(key, false)));
    }
    benchmarkState.SetItemsProcessed(benchmarkState.iterations());
    benchmarkState.counters["keysForwarded"] = static_cast<double>(world.state->keysForwarded());
}
BENCHMARK(BM_KeyPress_ThroughTapAndStateIntoTheQueue);

// A volume key, which the tap hands back untouched.
void BM_NonMediaKey_ThroughTap(benchmark::State& benchmarkState) {
    KeyPathWorld world(true);
    for (auto _ : benchmarkState) {
        benchmark::DoNotOptimize(world.taps->deliverMediaKey(mediaKeyData1(0, true)));
    }
    benchmarkState.SetItemsProcessed(benchmarkState.iterations());
}
BENCHMARK(BM_NonMediaKey_ThroughTap);

}  // namespace
}  // namespace tolvane
