// The event tap's callback runs on the main thread for every system-defined
// event, media key or not, so deciding an event must never touch the heap.
// These tests run that decision (decode, gate, route) under the counting
// allocation functions and first show that the counter does count.
#include <gtest/gtest.h>

#include <array>
#include <atomic>
#include <cstddef>
#include <cstdint>
#include <new>
#include <optional>
#include <thread>

#include "AllocationCounter.h"
#include "TolvaneCore/KeyRouting.h"
#include "TolvaneCore/MediaKeyEvent.h"

namespace tolvane {
namespace {

using testing::AllocationCountingScope;

// Keeps the compiler from eliding the allocations the counter tests make.
int* volatile escapedInt = nullptr;
void* volatile escapedBlock = nullptr;

TEST(AllocationCounter, CountsANewExpressionInsideTheScope) {
    std::size_t allocations = 0;
    std::size_t deallocations = 0;
    {
        AllocationCountingScope scope;
        escapedInt = new int(7);
        delete escapedInt;
        allocations = scope.allocations();
        deallocations = scope.deallocations();
    }
    EXPECT_EQ(allocations, 1u);
    EXPECT_EQ(deallocations, 1u);
}

struct alignas(64) OverAligned {
    std::array<unsigned char, 64> bytes;
};

TEST(AllocationCounter, CountsEveryFormOfOperatorNew) {
    constexpr auto alignment = std::align_val_t{64};
    std::array<std::size_t, 10> counted{};
    std::size_t slot = 0;
    // Runs `body` in its own scope and records how many allocations it made.
    auto count = [&](auto body) {
        AllocationCountingScope scope;
        body();
        counted[slot++] = scope.allocations();
    };

    count([] { escapedBlock = ::operator new(24); ::operator delete(escapedBlock); });
    count([] { escapedBlock = ::operator new[](24); ::operator delete[](escapedBlock); });
    count([] { escapedBlock = ::operator new(24, std::nothrow); ::operator delete(escapedBlock, std::nothrow); });
    count([] { escapedBlock = ::operator new[](24, std::nothrow); ::operator delete[](escapedBlock, std::nothrow); });
    count([&] { escapedBlock = ::operator new(24, alignment); ::operator delete(escapedBlock, alignment); });
    count([&] { escapedBlock = ::operator new[](24, alignment); ::operator delete[](escapedBlock, alignment); });
    count([&] {
        escapedBlock = ::operator new(24, alignment, std::nothrow);
        ::operator delete(escapedBlock, alignment, std::nothrow);
    });
    count([&] {
        escapedBlock = ::operator new[](24, alignment, std::nothrow);
        ::operator delete[](escapedBlock, alignment, std::nothrow);
    });
    // New-expressions of an over-aligned type pick the aligned forms.
    count([] {
        auto* single = new OverAligned{};
        escapedBlock = single;
        delete single;
    });
    count([] {
        auto* several = new OverAligned[3]{};
        escapedBlock = several;
        delete[] several;
    });

    ASSERT_EQ(slot, counted.size());
    for (std::size_t i = 0; i < counted.size(); ++i) {
        EXPECT_EQ(counted[i], 1u) << "form " << i;
    }
}

TEST(AllocationCounter, AlignedFormsHonourTheAlignment) {
    auto* single = new OverAligned{};
    EXPECT_EQ(reinterpret_cast<std::uintptr_t>(single) % alignof(OverAligned), 0u);
    delete single;

    constexpr auto alignment = std::align_val_t{256};
    void* block = ::operator new(10, alignment);  // a size that is not a multiple of the alignment
    EXPECT_EQ(reinterpret_cast<std::uintptr_t>(block) % 256, 0u);
    ::operator delete(block, alignment);
}

TEST(AllocationCounter, IgnoresAllocationsOutsideTheScope) {
    std::size_t allocations = 0;
    {
        AllocationCountingScope scope;
        {
            AllocationCountingScope inner;
        }
        // Closing the inner scope must leave the outer one counting.
        escapedInt = new int(1);
        delete escapedInt;
        allocations = scope.allocations();
    }
    escapedInt = new int(2);  // no scope open: not counted anywhere
    delete escapedInt;
    EXPECT_EQ(allocations, 1u);
}

TEST(AllocationCounter, IgnoresOtherThreads) {
    std::atomic<bool> go = false;
    std::atomic<bool> done = false;
    std::thread other([&] {
        while (!go.load()) {
            std::this_thread::yield();
        }
        escapedInt = new int(3);
        delete escapedInt;
        done.store(true);
    });

    std::size_t allocations = 0;
    {
        AllocationCountingScope scope;
        go.store(true);
        while (!done.load()) {
            std::this_thread::yield();
        }
        allocations = scope.allocations();
    }
    other.join();
    EXPECT_EQ(allocations, 0u);
}

// A system-defined event as the tap receives it.
struct RawEvent {
    std::int16_t subtype;
    std::int64_t data1;
};

constexpr std::int16_t media = MediaKeyEvent::auxControlButtonsSubtype;

constexpr std::int64_t data1(std::int64_t keyType, std::int64_t state, std::int64_t flags = 0) {
    return (keyType << 16) | (state << 8) | flags;
}

constexpr std::int64_t down = 0x0A;
constexpr std::int64_t up = 0x0B;
constexpr std::int64_t repeat = 1;

// Presses, auto-repeats and releases of every handled key, overlapping
// presses, and the system-defined events the tap sees but leaves alone.
constexpr std::array mixedEvents{
    // play, next, previous, fast-forward, rewind: press, two repeats, release
    RawEvent{media, data1(16, down)}, RawEvent{media, data1(16, down, repeat)},
    RawEvent{media, data1(16, down, repeat)}, RawEvent{media, data1(16, up)},
    RawEvent{media, data1(17, down)}, RawEvent{media, data1(17, down, repeat)},
    RawEvent{media, data1(17, down, repeat)}, RawEvent{media, data1(17, up)},
    RawEvent{media, data1(18, down)}, RawEvent{media, data1(18, down, repeat)},
    RawEvent{media, data1(18, down, repeat)}, RawEvent{media, data1(18, up)},
    RawEvent{media, data1(19, down)}, RawEvent{media, data1(19, down, repeat)},
    RawEvent{media, data1(19, up)},
    RawEvent{media, data1(20, down)}, RawEvent{media, data1(20, down, repeat)},
    RawEvent{media, data1(20, up)},
    // overlapping presses: next and previous held together
    RawEvent{media, data1(17, down)}, RawEvent{media, data1(18, down)},
    RawEvent{media, data1(17, up)}, RawEvent{media, data1(18, down, repeat)},
    RawEvent{media, data1(18, up)},
    // a release whose press was never seen, and a repeat without a press
    RawEvent{media, data1(16, up)}, RawEvent{media, data1(17, down, repeat)},
    // stray bits: high word set, odd state byte (a release)
    RawEvent{media, data1(16, down) | (std::int64_t{0x1234} << 32)}, RawEvent{media, data1(16, 0x0C)},
    // volume up, volume down, mute, brightness, eject, illumination
    RawEvent{media, data1(0, down)}, RawEvent{media, data1(0, up)},
    RawEvent{media, data1(1, down)}, RawEvent{media, data1(1, down, repeat)}, RawEvent{media, data1(1, up)},
    RawEvent{media, data1(7, down)}, RawEvent{media, data1(7, up)},
    RawEvent{media, data1(2, down)}, RawEvent{media, data1(3, up)},
    RawEvent{media, data1(14, down)}, RawEvent{media, data1(21, down)},
    // other subtypes (power button, mouse buttons, ...), some with media-looking data
    RawEvent{1, 0}, RawEvent{7, data1(16, down)}, RawEvent{0, data1(17, up)}, RawEvent{-1, -1},
};

// What the decision path produced, tallied without allocating.
struct Tally {
    std::size_t events = 0;
    std::size_t swallowed = 0;
    std::array<std::size_t, 4> commands{};  // indexed by MusicCommand
};

// The callback's decision for one event: decode, then the gate, which asks
// the router on a fresh press.
bool decide(MediaKeyGate& gate, const RawEvent& raw, bool musicIsRunning, ClosedBehavior whenClosed, Tally& tally) {
    const std::optional<MediaKeyEvent> event = MediaKeyEvent::fromSystemEvent(raw.subtype, raw.data1);
    if (!event) {
        return false;
    }
    std::optional<MusicCommand> command;
    const bool swallow = gate.shouldSwallow(*event, [&](MediaKey key) {
        const KeyRoute route = KeyRouting::route(key, musicIsRunning, whenClosed);
        command = route.command();
        return route.takesKey();
    });
    if (command) {
        ++tally.commands[static_cast<std::size_t>(*command)];
    }
    return swallow;
}

TEST(DecisionPathAllocation, DecidingThousandsOfEventsNeverAllocates) {
    constexpr int rounds = 400;
    MediaKeyGate gate;
    Tally tally;
    std::size_t allocations = 0;
    std::size_t deallocations = 0;
    {
        AllocationCountingScope scope;
        for (const bool musicIsRunning : {true, false}) {
            for (const ClosedBehavior whenClosed : allClosedBehaviors) {
                gate.reset();  // as when the tap stops and starts again
                for (int round = 0; round < rounds; ++round) {
                    for (const RawEvent& raw : mixedEvents) {
                        ++tally.events;
                        if (decide(gate, raw, musicIsRunning, whenClosed, tally)) {
                            ++tally.swallowed;
                        }
                    }
                }
            }
        }
        allocations = scope.allocations();
        deallocations = scope.deallocations();
    }

    EXPECT_EQ(allocations, 0u);
    EXPECT_EQ(deallocations, 0u);

    // The loop really ran the whole path: thousands of events, some taken and
    // some passed, and every command sent at least once.
    EXPECT_EQ(tally.events, 2 * allClosedBehaviors.size() * rounds * mixedEvents.size());
    EXPECT_GT(tally.swallowed, 0u);
    EXPECT_LT(tally.swallowed, tally.events);
    for (std::size_t command = 0; command < tally.commands.size(); ++command) {
        EXPECT_GT(tally.commands[command], 0u) << "MusicCommand " << command;
    }
}

}  // namespace
}  // namespace tolvane
