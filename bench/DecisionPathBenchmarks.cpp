// The decision the event tap's callback makes for every system-defined event:
// decode (subtype, data1), run the gate, and on a fresh press route the key.
#include <benchmark/benchmark.h>

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>

#include "TolvaneCore/KeyRouting.h"
#include "TolvaneCore/MediaKeyEvent.h"

namespace tolvane {
namespace {

struct RawEvent {
    std::int16_t subtype;
    std::int64_t data1;
};

constexpr std::int16_t media = MediaKeyEvent::auxControlButtonsSubtype;
constexpr std::int64_t down = 0x0A;
constexpr std::int64_t up = 0x0B;
constexpr std::int64_t repeat = 1;

constexpr std::int64_t data1(std::int64_t keyType, std::int64_t state, std::int64_t flags = 0) {
    return (keyType << 16) | (state << 8) | flags;
}

// A plausible stretch of what the tap sees: presses of the three media keys
// (one held long enough to repeat), volume and mute keys, and events of other
// subtypes that share the system-defined event type.
constexpr std::array rotatingMix{
    RawEvent{media, data1(16, down)},          RawEvent{media, data1(16, up)},
    RawEvent{media, data1(0, down)},           RawEvent{media, data1(0, down, repeat)},
    RawEvent{media, data1(0, up)},             RawEvent{media, data1(17, down)},
    RawEvent{media, data1(17, down, repeat)},  RawEvent{media, data1(17, down, repeat)},
    RawEvent{media, data1(17, up)},            RawEvent{1, 0},
    RawEvent{media, data1(1, down)},           RawEvent{media, data1(1, up)},
    RawEvent{media, data1(18, down)},          RawEvent{media, data1(18, up)},
    RawEvent{7, 0x0001'0000},                  RawEvent{media, data1(7, down)},
    RawEvent{media, data1(7, up)},             RawEvent{media, data1(18, down)},
    RawEvent{media, data1(18, down, repeat)},  RawEvent{media, data1(18, up)},
};

// The whole decision for one event, with the trivial handler the app's
// callback has: ask the router and keep the command it wants sent.
inline bool decide(MediaKeyGate& gate, RawEvent raw, bool musicIsRunning, ClosedBehavior whenClosed,
                   std::optional<MusicCommand>& command) {
    const std::optional<MediaKeyEvent> event = MediaKeyEvent::fromSystemEvent(raw.subtype, raw.data1);
    if (!event) {
        return false;
    }
    return gate.shouldSwallow(*event, [&](MediaKey key) {
        const KeyRoute route = KeyRouting::route(key, musicIsRunning, whenClosed);
        command = route.command();
        return route.takesKey();
    });
}

// Time per event over the rotating mix. The inputs pass through
// DoNotOptimize so the compiler cannot fold the constant table into the
// answers, and every answer and command is consumed the same way.
void BM_DecisionPath_RotatingMix(benchmark::State& state) {
    MediaKeyGate gate;
    bool musicIsRunning = state.range(0) != 0;
    ClosedBehavior whenClosed = ClosedBehavior::launchMusic;
    std::size_t index = 0;
    for (auto _ : state) {
        RawEvent raw = rotatingMix[index];
        benchmark::DoNotOptimize(raw);
        benchmark::DoNotOptimize(musicIsRunning);
        benchmark::DoNotOptimize(whenClosed);
        std::optional<MusicCommand> command;
        bool swallow = decide(gate, raw, musicIsRunning, whenClosed, command);
        benchmark::DoNotOptimize(swallow);
        benchmark::DoNotOptimize(command);
        index = index + 1 == rotatingMix.size() ? 0 : index + 1;
    }
    benchmark::DoNotOptimize(gate);
    state.SetItemsProcessed(state.iterations());
}
BENCHMARK(BM_DecisionPath_RotatingMix)->ArgName("musicRunning")->Arg(1)->Arg(0);

// A volume key: decode rejects it and the gate is never reached.
void BM_DecisionPath_NonMediaEvent(benchmark::State& state) {
    MediaKeyGate gate;
    bool musicIsRunning = true;
    ClosedBehavior whenClosed = ClosedBehavior::launchMusic;
    for (auto _ : state) {
        RawEvent raw{media, data1(0, down)};
        benchmark::DoNotOptimize(raw);
        std::optional<MusicCommand> command;
        bool swallow = decide(gate, raw, musicIsRunning, whenClosed, command);
        benchmark::DoNotOptimize(swallow);
        benchmark::DoNotOptimize(command);
    }
    benchmark::DoNotOptimize(gate);
    state.SetItemsProcessed(state.iterations());
}
BENCHMARK(BM_DecisionPath_NonMediaEvent);

}  // namespace
}  // namespace tolvane
