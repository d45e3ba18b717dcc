// One key press through the whole app: the tap's callback decodes the event,
// the gate asks the app state's handler, the handler asks whether Music runs,
// routes the key and queues its command. Events that are not media keys must
// not touch the heap at all; a media key may take no more than a slot in the
// command queue's storage.
#include <gtest/gtest.h>

#include <cstddef>
#include <cstdint>

#include "AllocationCounter.h"
#include "TestSupport/KeyPathWorld.h"

namespace tolvane {
namespace {

using testing::AllocationCountingScope;
using testsupport::KeyPathWorld;
using testsupport::mediaKeyData1;

struct Counts {
    std::size_t allocations = 0;
    std::size_t dropped = 0;
};

TEST(KeyPathAllocation, EventsThatAreNotMediaKeysAllocateNothing) {
    KeyPathWorld world(true);
    Counts counts;
    {
        AllocationCountingScope scope;
        for (int round = 0; round < 2000; ++round) {
            counts.dropped += world.taps->deliverMediaKey(mediaKeyData1(0, true)) ? 1u : 0u;   // volume up
            counts.dropped += world.taps->deliverMediaKey(mediaKeyData1(7, false)) ? 1u : 0u;  // mute release
            counts.dropped += world.taps->deliver(TapEventType::systemDefined, SystemDefinedFields{1, 0}) ? 1u : 0u;
            counts.dropped += world.taps->deliver(10u, std::nullopt) ? 1u : 0u;  // a key-down event type
            counts.dropped += world.taps->deliver(TapEventType::systemDefined, std::nullopt) ? 1u : 0u;
        }
        counts.allocations = scope.allocations();
    }
    EXPECT_EQ(counts.allocations, 0u);
    EXPECT_EQ(counts.dropped, 0u);
}

TEST(KeyPathAllocation, MediaKeysTakeNoMoreThanTheCommandQueuesStorage) {
    KeyPathWorld world(true);
    // An observer, as the status item has: every counted key sends the
    // change signal, which must not allocate either.
    std::size_t changes = 0;
    const orvik::Subscription observer = world.state->objectWillChange.subscribe([&] { ++changes; });
    // The first command starts a run, which may allocate; the scripting
    // queue then holds it, so every later command waits in the queue.
    ASSERT_TRUE(world.taps->deliverMediaKey(mediaKeyData1(17, true)));
    ASSERT_TRUE(world.taps->deliverMediaKey(mediaKeyData1(17, false)));

    // Enough commands to outgrow a queue block under every standard library
    // (libstdc++ keeps 512 one-byte commands in a block, libc++ 4096).
    constexpr int presses = 10000;
    Counts counts;
    {
        AllocationCountingScope scope;
        for (int press = 0; press < presses; ++press) {
            const std::int64_t key = 16 + press % 5;
            counts.dropped += world.taps->deliverMediaKey(mediaKeyData1(key, true)) ? 1u : 0u;
            counts.dropped += world.taps->deliverMediaKey(mediaKeyData1(key, true, true)) ? 1u : 0u;
            counts.dropped += world.taps->deliverMediaKey(mediaKeyData1(key, false)) ? 1u : 0u;
        }
        counts.allocations = scope.allocations();
    }
    EXPECT_EQ(counts.dropped, 3u * presses);
    EXPECT_GE(changes, static_cast<std::size_t>(presses));
    EXPECT_EQ(world.state->keysForwarded(), presses + 1);
    // One-byte commands: a queue block holds hundreds of them, so the
    // commands need a few dozen blocks at most (and the block map may grow).
    EXPECT_LE(counts.allocations, presses / 256u + 4u);
    EXPECT_GT(counts.allocations, 0u) << "the queue must have grown: the commands were really queued";
}

TEST(KeyPathAllocation, SwallowedKeysWhileMusicIsClosedAllocateNothing) {
    KeyPathWorld world(false);  // next and previous are swallowed with launchMusic
    Counts counts;
    {
        AllocationCountingScope scope;
        for (int press = 0; press < 2000; ++press) {
            const std::int64_t key = press % 2 == 0 ? 17 : 20;
            counts.dropped += world.taps->deliverMediaKey(mediaKeyData1(key, true)) ? 1u : 0u;
            counts.dropped += world.taps->deliverMediaKey(mediaKeyData1(key, false)) ? 1u : 0u;
        }
        counts.allocations = scope.allocations();
    }
    EXPECT_EQ(counts.allocations, 0u);
    EXPECT_EQ(counts.dropped, 4000u);
}

}  // namespace
}  // namespace tolvane
