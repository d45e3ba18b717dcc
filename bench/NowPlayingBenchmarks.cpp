// Parsing the track query's output, which happens on every poll and every
// player notification that needs a fresh summary.
#include <benchmark/benchmark.h>

#include <optional>
#include <string>
#include <string_view>

#include "TolvaneCore/NowPlaying.h"

namespace tolvane {
namespace {

// The input lives in a std::string that passes through DoNotOptimize, so the
// parse cannot be done at compile time; the result is consumed whole.
void parse(benchmark::State& state, std::string output) {
    for (auto _ : state) {
        benchmark::DoNotOptimize(output);
        std::optional<TrackSummary> summary = TrackSummary::fromScriptOutput(output);
        benchmark::DoNotOptimize(summary);
        benchmark::ClobberMemory();
    }
    state.SetItemsProcessed(state.iterations());
}

// Long enough that title and artist outgrow the small-string buffer, as real
// titles often do.
void BM_FromScriptOutput_PlayingTrack(benchmark::State& state) {
    parse(state, "Für Elise (Poco moto) – Live in Köln\tJean-Yves Thibaudet & Orchestre de Chambre\tplaying");
}
BENCHMARK(BM_FromScriptOutput_PlayingTrack);

// A title holding a tab: four pieces, rejected.
void BM_FromScriptOutput_Rejected(benchmark::State& state) {
    parse(state, "Für Elise\t(Poco moto)\tJean-Yves Thibaudet\tplaying");
}
BENCHMARK(BM_FromScriptOutput_Rejected);

}  // namespace
}  // namespace tolvane
