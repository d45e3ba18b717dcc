#include "TolvaneCore/NowPlaying.h"

#include <gtest/gtest.h>

namespace tolvane {
namespace {

using State = PlayerInfo::State;

TEST(TrackSummary, TitleArtistPlayingParsesAsPlaying) {
    EXPECT_EQ(TrackSummary::fromScriptOutput("Blue in Green\tMiles Davis\tplaying"),
              (TrackSummary{"Blue in Green", "Miles Davis", true}));
}

TEST(TrackSummary, TitleArtistPausedParsesAsNotPlaying) {
    EXPECT_EQ(TrackSummary::fromScriptOutput("Blue in Green\tMiles Davis\tpaused"),
              (TrackSummary{"Blue in Green", "Miles Davis", false}));
}

TEST(TrackSummary, EmptyOutputOfStoppedPlayerYieldsNothing) {
    EXPECT_EQ(TrackSummary::fromScriptOutput(""), std::nullopt);
}

TEST(TrackSummary, SingleTabYieldsNothing) { EXPECT_EQ(TrackSummary::fromScriptOutput("\t"), std::nullopt); }

TEST(TrackSummary, TwoTabsThenPlayingGivesEmptyNameAndArtist) {
    EXPECT_EQ(TrackSummary::fromScriptOutput("\t\tplaying"), (TrackSummary{"", "", true}));
}

TEST(TrackSummary, TitleContainingATabYieldsNothing) {
    EXPECT_EQ(TrackSummary::fromScriptOutput("A\tB\tArtist\tplaying"), std::nullopt);
}

TEST(TrackSummary, OnlyExactLowerCasePlayingCountsAsPlaying) {
    EXPECT_FALSE(TrackSummary::fromScriptOutput("T\tA\tPlaying")->isPlaying);
    EXPECT_FALSE(TrackSummary::fromScriptOutput("T\tA\tplaying\n")->isPlaying);
    EXPECT_FALSE(TrackSummary::fromScriptOutput("T\tA\tstopped")->isPlaying);
    EXPECT_FALSE(TrackSummary::fromScriptOutput("T\tA\t")->isPlaying);
}

TEST(TrackSummary, PiecesAreKeptUntrimmedWithTheirBytes) {
    const char bytes[] = "  Manh\xC3\xA3 \0de\t\xFF\xFE Artist \tplaying";
    const std::string output(bytes, sizeof bytes - 1);
    const auto summary = TrackSummary::fromScriptOutput(output);
    ASSERT_TRUE(summary.has_value());
    EXPECT_EQ(summary->name, std::string("  Manh\xC3\xA3 \0de", 12));
    EXPECT_EQ(summary->artist, "\xFF\xFE Artist ");
    EXPECT_TRUE(summary->isPlaying);
}

TEST(PlayerInfo, PlayingStateNameAndArtistAreRead) {
    const UserInfo userInfo{
        {std::string("Player State"), std::string("Playing")},
        {std::string("Name"), std::string("So What")},
        {std::string("Artist"), std::string("Miles Davis")},
    };
    EXPECT_EQ(PlayerInfo::fromUserInfo(userInfo), (PlayerInfo{State::playing, "So What", "Miles Davis"}));
}

TEST(PlayerInfo, StoppedStateIsRead) {
    const UserInfo userInfo{{std::string("Player State"), std::string("Stopped")}};
    EXPECT_EQ(PlayerInfo::fromUserInfo(userInfo).state, State::stopped);
}

TEST(PlayerInfo, PausedStateGivesPaused) {
    const UserInfo userInfo{{std::string("Player State"), std::string("Paused")}};
    EXPECT_EQ(PlayerInfo::fromUserInfo(userInfo).state, State::paused);
}

TEST(PlayerInfo, MissingStateGivesPaused) {
    const UserInfo userInfo{{std::string("Name"), std::string("So What")}};
    EXPECT_EQ(PlayerInfo::fromUserInfo(userInfo), (PlayerInfo{State::paused, "So What", ""}));
}

TEST(PlayerInfo, LowerCaseStoppedGivesPaused) {
    const UserInfo userInfo{{std::string("Player State"), std::string("stopped")}};
    EXPECT_EQ(PlayerInfo::fromUserInfo(userInfo).state, State::paused);
}

TEST(PlayerInfo, NonStringValuesReadAsAbsent) {
    const UserInfo userInfo{
        {std::string("Player State"), std::int64_t{1}},
        {std::string("Name"), 3.5},
        {std::string("Artist"), OtherUserInfoValue{}},
    };
    EXPECT_EQ(PlayerInfo::fromUserInfo(userInfo), (PlayerInfo{State::paused, "", ""}));
}

TEST(PlayerInfo, NonStringKeysNeverMatch) {
    const UserInfo userInfo{
        {true, std::string("Playing")},
        {std::int64_t{7}, std::string("Name")},
        {OtherUserInfoValue{}, std::string("Stopped")},
    };
    EXPECT_EQ(PlayerInfo::fromUserInfo(userInfo), (PlayerInfo{State::paused, "", ""}));
}

TEST(PlayerInfo, EmptyUserInfoGivesPausedWithEmptyTexts) {
    EXPECT_EQ(PlayerInfo::fromUserInfo({}), (PlayerInfo{State::paused, "", ""}));
}

TEST(PlayerInfo, FirstEntryForAKeyIsTheOneRead) {
    const UserInfo userInfo{
        {std::string("Name"), std::int64_t{1}},
        {std::string("Name"), std::string("Later")},
    };
    EXPECT_EQ(PlayerInfo::fromUserInfo(userInfo).name, "");
}

PlayerInfo info(State state, std::string name, std::string artist) {
    return PlayerInfo{state, std::move(name), std::move(artist)};
}

TEST(NowPlayingChange, StoppedNotificationClearsEvenWhenTheSongMatches) {
    const TrackSummary current{"So What", "Miles Davis", true};
    EXPECT_EQ(NowPlayingChange::from(current, info(State::stopped, "So What", "Miles Davis")),
              NowPlayingChange::cleared());
    EXPECT_EQ(NowPlayingChange::from(std::nullopt, info(State::stopped, "", "")), NowPlayingChange::cleared());
}

TEST(NowPlayingChange, ClearedCarriesNoSummary) {
    EXPECT_EQ(NowPlayingChange::cleared().kind(), NowPlayingChange::Kind::cleared);
    EXPECT_EQ(NowPlayingChange::cleared().summary(), std::nullopt);
}

TEST(NowPlayingChange, SameNameDifferentArtistIsANewSong) {
    const TrackSummary current{"Blue", "Joni Mitchell", true};
    EXPECT_EQ(NowPlayingChange::from(current, info(State::playing, "Blue", "Eiffel 65")),
              NowPlayingChange::newSong({"Blue", "Eiffel 65", true}));
}

TEST(NowPlayingChange, DifferentNameSameArtistIsANewSong) {
    const TrackSummary current{"Blue", "Joni Mitchell", true};
    EXPECT_EQ(NowPlayingChange::from(current, info(State::playing, "River", "Joni Mitchell")).kind(),
              NowPlayingChange::Kind::newSong);
}

TEST(NowPlayingChange, NoCurrentTrackAndPausedNotificationIsANewSongNotPlaying) {
    EXPECT_EQ(NowPlayingChange::from(std::nullopt, info(State::paused, "So What", "Miles Davis")),
              NowPlayingChange::newSong({"So What", "Miles Davis", false}));
}

TEST(NowPlayingChange, PlayingThenPausedForTheSameSongIsSameSongWithTheNewPlayingFlag) {
    std::optional<TrackSummary> current = TrackSummary{"So What", "Miles Davis", false};

    const auto playing = NowPlayingChange::from(current, info(State::playing, "So What", "Miles Davis"));
    EXPECT_EQ(playing, NowPlayingChange::sameSong({"So What", "Miles Davis", true}));
    current = playing.summary();

    const auto paused = NowPlayingChange::from(current, info(State::paused, "So What", "Miles Davis"));
    EXPECT_EQ(paused, NowPlayingChange::sameSong({"So What", "Miles Davis", false}));
}

TEST(NowPlayingChange, SongComparisonIsExactAndCaseSensitive) {
    const TrackSummary current{"So What", "Miles Davis", true};
    EXPECT_EQ(NowPlayingChange::from(current, info(State::playing, "so what", "Miles Davis")).kind(),
              NowPlayingChange::Kind::newSong);
    EXPECT_EQ(NowPlayingChange::from(current, info(State::playing, "So What ", "Miles Davis")).kind(),
              NowPlayingChange::Kind::newSong);
}

TEST(NowPlayingChange, SameSongAndNewSongWithEqualSummariesDiffer) {
    const TrackSummary summary{"A", "B", true};
    EXPECT_NE(NowPlayingChange::sameSong(summary), NowPlayingChange::newSong(summary));
}

}  // namespace
}  // namespace tolvane
