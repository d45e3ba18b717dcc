#include "TolvaneCore/KeyRouting.h"

#include <gtest/gtest.h>

#include <tuple>

namespace tolvane {
namespace {

using KeyRouting::route;

TEST(MusicCommand, FirstThreeCommandsCorrespondToTheMediaKeysInOrder) {
    EXPECT_EQ(musicCommand(MediaKey::playPause), MusicCommand::playPause);
    EXPECT_EQ(musicCommand(MediaKey::next), MusicCommand::next);
    EXPECT_EQ(musicCommand(MediaKey::previous), MusicCommand::previous);
}

// One row of the routing table: Music running, the closed behaviour, the key,
// and the verdict.
struct RoutingRow {
    bool musicIsRunning;
    ClosedBehavior whenClosed;
    MediaKey key;
    KeyRoute expected;
};

class RoutingTable : public testing::TestWithParam<RoutingRow> {};

TEST_P(RoutingTable, RowGivesItsVerdict) {
    const RoutingRow& row = GetParam();
    EXPECT_EQ(route(row.key, row.musicIsRunning, row.whenClosed), row.expected);
}

std::vector<RoutingRow> everyRow() {
    std::vector<RoutingRow> rows;
    // While Music runs, every closed behaviour sends the key's own command.
    for (ClosedBehavior behavior : allClosedBehaviors) {
        rows.push_back({true, behavior, MediaKey::playPause, KeyRoute::send(MusicCommand::playPause)});
        rows.push_back({true, behavior, MediaKey::next, KeyRoute::send(MusicCommand::next)});
        rows.push_back({true, behavior, MediaKey::previous, KeyRoute::send(MusicCommand::previous)});
    }
    rows.push_back({false, ClosedBehavior::launchMusic, MediaKey::playPause, KeyRoute::send(MusicCommand::launchAndPlay)});
    rows.push_back({false, ClosedBehavior::launchMusic, MediaKey::next, KeyRoute::swallow()});
    rows.push_back({false, ClosedBehavior::launchMusic, MediaKey::previous, KeyRoute::swallow()});
    for (MediaKey key : {MediaKey::playPause, MediaKey::next, MediaKey::previous}) {
        rows.push_back({false, ClosedBehavior::ignore, key, KeyRoute::swallow()});
        rows.push_back({false, ClosedBehavior::system, key, KeyRoute::passThrough()});
    }
    return rows;
}

INSTANTIATE_TEST_SUITE_P(KeyRouting, RoutingTable, testing::ValuesIn(everyRow()));

TEST(KeyRouting, NextWhileMusicClosedWithLaunchMusicIsSwallowedNotPassedThrough) {
    EXPECT_EQ(route(MediaKey::next, false, ClosedBehavior::launchMusic), KeyRoute::swallow());
}

TEST(KeyRouting, PlayPauseWhileMusicRunsIsSentEvenWithSystemBehavior) {
    EXPECT_EQ(route(MediaKey::playPause, true, ClosedBehavior::system), KeyRoute::send(MusicCommand::playPause));
}

TEST(KeyRoute, SendCarriesItsCommandAndOtherKindsCarryNone) {
    EXPECT_EQ(KeyRoute::send(MusicCommand::next).command(), MusicCommand::next);
    EXPECT_EQ(KeyRoute::send(MusicCommand::next).kind(), KeyRoute::Kind::send);
    EXPECT_EQ(KeyRoute::swallow().command(), std::nullopt);
    EXPECT_EQ(KeyRoute::passThrough().command(), std::nullopt);
}

TEST(KeyRoute, EqualityComparesKindAndCommand) {
    EXPECT_NE(KeyRoute::send(MusicCommand::next), KeyRoute::send(MusicCommand::previous));
    EXPECT_NE(KeyRoute::swallow(), KeyRoute::passThrough());
    EXPECT_NE(KeyRoute::send(MusicCommand::playPause), KeyRoute::swallow());
}

TEST(KeyRoute, SendAndSwallowTakeTheKeyPassThroughDoesNot) {
    EXPECT_TRUE(KeyRoute::send(MusicCommand::launchAndPlay).takesKey());
    EXPECT_TRUE(KeyRoute::swallow().takesKey());
    EXPECT_FALSE(KeyRoute::passThrough().takesKey());
}

TEST(ClosedBehavior, AllCasesAreListedInPickerOrder) {
    EXPECT_EQ(allClosedBehaviors,
              (std::array{ClosedBehavior::launchMusic, ClosedBehavior::ignore, ClosedBehavior::system}));
}

TEST(ClosedBehavior, RawValuesAreTheCaseNames) {
    EXPECT_EQ(rawValue(ClosedBehavior::launchMusic), "launchMusic");
    EXPECT_EQ(rawValue(ClosedBehavior::ignore), "ignore");
    EXPECT_EQ(rawValue(ClosedBehavior::system), "system");
}

TEST(ClosedBehavior, EveryRawValueBuildsItsCase) {
    for (ClosedBehavior behavior : allClosedBehaviors) {
        EXPECT_EQ(closedBehaviorFromRawValue(rawValue(behavior)), behavior);
    }
}

TEST(ClosedBehavior, RawValuesAreCaseSensitive) {
    EXPECT_EQ(closedBehaviorFromRawValue("Ignore"), std::nullopt);
    EXPECT_EQ(closedBehaviorFromRawValue("LaunchMusic"), std::nullopt);
}

TEST(ClosedBehavior, UnknownOrEmptyRawValueBuildsNothing) {
    EXPECT_EQ(closedBehaviorFromRawValue(""), std::nullopt);
    EXPECT_EQ(closedBehaviorFromRawValue("launchMusic "), std::nullopt);
    EXPECT_EQ(closedBehaviorFromRawValue(std::string_view("ignore\0", 7)), std::nullopt);
}

}  // namespace
}  // namespace tolvane
