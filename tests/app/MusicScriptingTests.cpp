#include "Tolvane/MusicScripting.h"

#include <gtest/gtest.h>

#include "TestSupport/MusicSources.h"

#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "TestSupport/FakeScriptEngine.h"
#include "TestSupport/FakeThumbnailer.h"
#include "TestSupport/ManualSerialQueue.h"
#include "TestSupport/RecordingLogger.h"

namespace tolvane {
namespace {

// The exact sources Music receives: playpause, nextTrack, backTrack, play,
// trackQuery, artworkQuery, and music(body) for any other body.
using namespace testsupport::sources;
const auto source = testsupport::sources::music;

using testsupport::FakeScriptEngine;
using testsupport::FakeThumbnailer;
using Outcome = MusicScripting::Outcome;
using Strings = std::vector<std::string>;



// What a completion was handed, and whether it ran as queue work.
struct TrackAnswer {
    std::optional<Track> track;
    Outcome outcome;
    bool onQueue;
};

class MusicScriptingTest : public testing::Test {
protected:
    std::shared_ptr<testsupport::ManualSerialQueue> queue = std::make_shared<testsupport::ManualSerialQueue>();
    std::shared_ptr<FakeScriptEngine> engine = std::make_shared<FakeScriptEngine>();
    std::shared_ptr<FakeThumbnailer> thumbnailer = std::make_shared<FakeThumbnailer>();
    std::shared_ptr<testsupport::RecordingLogger> logger = std::make_shared<testsupport::RecordingLogger>();
    MusicScripting scripting{queue, engine, thumbnailer, logger};

    // Executes `body` and runs the queue; answers what the completion got.
    MusicScripting::Execution execute(std::string body) {
        std::optional<MusicScripting::Execution> answer;
        scripting.execute(std::move(body), [&](MusicScripting::Execution execution) { answer = std::move(execution); });
        queue->runUntilIdle();
        EXPECT_TRUE(answer.has_value()) << "the completion was not called";
        return answer.value_or(MusicScripting::Execution{std::nullopt, Outcome::failed});
    }

    // The cache's size, read on the queue.
    std::size_t compiledScriptCount() {
        std::optional<std::size_t> count;
        scripting.compiledScriptCount([&](std::size_t value) {
            EXPECT_TRUE(queue->isRunningWork());
            count = value;
        });
        queue->runUntilIdle();
        EXPECT_TRUE(count.has_value()) << "the completion was not called";
        return count.value_or(0);
    }

    TrackAnswer currentTrack() {
        std::optional<TrackAnswer> answer;
        scripting.currentTrack([&](std::optional<Track> track, Outcome outcome) {
            answer = TrackAnswer{std::move(track), outcome, queue->isRunningWork()};
        });
        queue->runUntilIdle();
        EXPECT_TRUE(answer.has_value()) << "the completion was not called";
        return answer.value_or(TrackAnswer{std::nullopt, Outcome::failed, false});
    }

    void musicPlays(std::string_view output) { engine->answer(trackQuery, FakeScriptEngine::text(output)); }
};

// --- Script texts ----------------------------------------------------------

TEST(MusicScriptingTexts, EachCommandHasItsBodyAndPreviousSendsBackTrack) {
    EXPECT_EQ(MusicScripting::body(MusicCommand::playPause), "playpause");
    EXPECT_EQ(MusicScripting::body(MusicCommand::next), "next track");
    EXPECT_EQ(MusicScripting::body(MusicCommand::previous), "back track");
    EXPECT_EQ(MusicScripting::body(MusicCommand::launchAndPlay), "play");
}

TEST(MusicScriptingTexts, TheFullSourceAddressesMusicByBundleIdentifier) {
    EXPECT_EQ(MusicScripting::fullSource("next track"), "tell application id \"com.apple.Music\"\nnext track\nend tell");
    EXPECT_EQ(MusicScripting::fullSource(""), "tell application id \"com.apple.Music\"\n\nend tell");
}

TEST(MusicScriptingTexts, TheQueriesAreExactlyTheAgreedTexts) {
    EXPECT_EQ(MusicScripting::trackQuery,
              "if player state is stopped then return \"\"\n"
              "set t to current track\n"
              "return (name of t) & (ASCII character 9) & (artist of t) & (ASCII character 9) & (player state as "
              "text)");
    EXPECT_EQ(MusicScripting::artworkQuery,
              "if (count of artworks of current track) > 0 then return raw data of artwork 1 of current track");
    EXPECT_EQ(MusicScripting::musicBundleIdentifier, "com.apple.Music");
}

// --- execute ---------------------------------------------------------------

TEST_F(MusicScriptingTest, ExecuteDoesNothingUntilTheQueueRunsItsWork) {
    bool called = false;
    scripting.execute("playpause", [&](MusicScripting::Execution) { called = true; });
    EXPECT_FALSE(called);
    EXPECT_TRUE(engine->events().empty());
    EXPECT_EQ(queue->pendingCount(), 1u);

    EXPECT_TRUE(queue->runNext());
    EXPECT_TRUE(called);
}

TEST_F(MusicScriptingTest, TheCompletionRunsAsQueueWork) {
    bool ranOnQueue = false;
    scripting.execute("playpause", [&](MusicScripting::Execution) { ranOnQueue = queue->isRunningWork(); });
    queue->runUntilIdle();
    EXPECT_TRUE(ranOnQueue);
}

TEST_F(MusicScriptingTest, AFirstExecuteCreatesCompilesAndRunsTheFullSource) {
    execute("playpause");
    EXPECT_EQ(engine->events(), (Strings{"create " + playpause, "compile " + playpause, "run " + playpause}));
    EXPECT_EQ(compiledScriptCount(), 1u);
}

TEST_F(MusicScriptingTest, ASecondExecuteOfPlaypauseCompilesNothingAndReusesTheCachedScript) {
    execute("playpause");
    execute("playpause");
    EXPECT_EQ(engine->events(),
              (Strings{"create " + playpause, "compile " + playpause, "run " + playpause, "run " + playpause}));
    EXPECT_EQ(engine->runScriptNumbers(), (std::vector<std::size_t>{1, 1}));
    EXPECT_EQ(compiledScriptCount(), 1u);
}

TEST_F(MusicScriptingTest, EachDistinctSourceIsCompiledOnceAndKept) {
    const std::vector<std::string_view> bodies{"playpause", "next track", "back track", "play",
                                               MusicScripting::trackQuery, MusicScripting::artworkQuery};
    for (int round = 0; round < 3; ++round) {
        for (std::string_view body : bodies) execute(std::string(body));
    }
    EXPECT_EQ(engine->created().size(), 6u);
    EXPECT_EQ(engine->compiled().size(), 6u);
    EXPECT_EQ(engine->runs().size(), 18u);
    EXPECT_EQ(compiledScriptCount(), 6u);
    EXPECT_EQ(engine->liveScripts(), 6u);
}

TEST_F(MusicScriptingTest, ASuccessfulRunAnswersItsResultAndSucceededWithoutLogging) {
    engine->answer(playpause, FakeScriptEngine::text("done"));
    const MusicScripting::Execution execution = execute("playpause");
    EXPECT_EQ(execution.outcome, Outcome::succeeded);
    ASSERT_TRUE(execution.result.has_value());
    EXPECT_EQ(execution.result->stringValue, "done");
    EXPECT_EQ(execution.result->data, (std::vector<std::uint8_t>{'d', 'o', 'n', 'e'}));
    EXPECT_TRUE(logger->lines().empty());
}

TEST_F(MusicScriptingTest, ErrorMinus1743IsDeniedWithNoResultAndIsLogged) {
    engine->answer(playpause, FakeScriptEngine::error(-1743));
    const MusicScripting::Execution execution = execute("playpause");
    EXPECT_EQ(execution.outcome, Outcome::denied);
    EXPECT_FALSE(execution.result.has_value());
    EXPECT_EQ(logger->lines(), (Strings{"AppleScript failed with -1743"}));
}

TEST_F(MusicScriptingTest, ErrorsMinus600AndMinus1728FailWithNoResultAndAreLogged) {
    engine->answerOnce(playpause, FakeScriptEngine::error(-600));
    engine->answerOnce(playpause, FakeScriptEngine::error(-1728));
    const MusicScripting::Execution first = execute("playpause");
    const MusicScripting::Execution second = execute("playpause");
    EXPECT_EQ(first.outcome, Outcome::failed);
    EXPECT_FALSE(first.result.has_value());
    EXPECT_EQ(second.outcome, Outcome::failed);
    EXPECT_FALSE(second.result.has_value());
    EXPECT_EQ(logger->lines(), (Strings{"AppleScript failed with -600", "AppleScript failed with -1728"}));
}

TEST_F(MusicScriptingTest, AnErrorWithoutANumberFailsAndLogsTheNumberZero) {
    engine->answer(playpause, FakeScriptEngine::errorWithoutNumber());
    const MusicScripting::Execution execution = execute("playpause");
    EXPECT_EQ(execution.outcome, Outcome::failed);
    EXPECT_FALSE(execution.result.has_value());
    EXPECT_EQ(logger->lines(), (Strings{"AppleScript failed with 0"}));
}

TEST_F(MusicScriptingTest, AnErrorNumberedZeroFailsToo) {
    engine->answer(playpause, FakeScriptEngine::error(0));
    EXPECT_EQ(execute("playpause").outcome, Outcome::failed);
    EXPECT_EQ(logger->lines(), (Strings{"AppleScript failed with 0"}));
}

TEST_F(MusicScriptingTest, TheCompiledScriptCountIsReadOnTheQueueAfterTheWorkBeforeIt) {
    scripting.execute("playpause", [](MusicScripting::Execution) {});
    std::optional<std::size_t> count;
    scripting.compiledScriptCount([&](std::size_t value) { count = value; });
    EXPECT_FALSE(count.has_value()) << "nothing is read off the queue";
    queue->runUntilIdle();
    EXPECT_EQ(count, std::optional<std::size_t>(1));
}

TEST_F(MusicScriptingTest, AScriptThatCannotBeCreatedFailsCachesNothingAndLogsNothing) {
    engine->refuseToCreate(playpause);
    const MusicScripting::Execution execution = execute("playpause");
    EXPECT_EQ(execution.outcome, Outcome::failed);
    EXPECT_FALSE(execution.result.has_value());
    EXPECT_EQ(compiledScriptCount(), 0u);
    EXPECT_TRUE(engine->compiled().empty());
    EXPECT_TRUE(engine->runs().empty());
    EXPECT_TRUE(logger->lines().empty());
}

TEST_F(MusicScriptingTest, CreationIsTriedAgainAfterItFailed) {
    engine->refuseToCreate(playpause);
    execute("playpause");
    engine->refuseToCreate(playpause, false);
    const MusicScripting::Execution execution = execute("playpause");
    EXPECT_EQ(execution.outcome, Outcome::succeeded);
    EXPECT_EQ(engine->events(), (Strings{"create refused " + playpause, "create " + playpause, "compile " + playpause,
                                         "run " + playpause}));
    EXPECT_EQ(compiledScriptCount(), 1u);
}

TEST_F(MusicScriptingTest, AScriptThatFailsToRunStaysCachedAndIsNotCompiledAgain) {
    engine->answer(playpause, FakeScriptEngine::error(-2740));  // as a script that did not compile
    EXPECT_EQ(execute("playpause").outcome, Outcome::failed);
    EXPECT_EQ(execute("playpause").outcome, Outcome::failed);
    EXPECT_EQ(engine->created().size(), 1u);
    EXPECT_EQ(engine->compiled().size(), 1u);
    EXPECT_EQ(engine->runs().size(), 2u);
    EXPECT_EQ(compiledScriptCount(), 1u);
    EXPECT_EQ(logger->lines(), (Strings{"AppleScript failed with -2740", "AppleScript failed with -2740"}));
}

TEST_F(MusicScriptingTest, WorkRunsInSubmissionOrder) {
    std::vector<std::string> completed;
    for (std::string body : {"next track", "back track", "playpause", "play"}) {
        scripting.execute(body, [&completed, body](MusicScripting::Execution) { completed.push_back(body); });
    }
    queue->runUntilIdle();
    EXPECT_EQ(completed, (Strings{"next track", "back track", "playpause", "play"}));
    EXPECT_EQ(engine->runs(),
              (Strings{source("next track"), source("back track"), source("playpause"), source("play")}));
}

TEST_F(MusicScriptingTest, QueuedWorkStillRunsAfterTheScriptingObjectIsGone) {
    auto owned = std::make_unique<MusicScripting>(queue, engine, thumbnailer, logger);
    std::optional<Outcome> outcome;
    owned->execute("playpause", [&](MusicScripting::Execution execution) { outcome = execution.outcome; });
    owned.reset();
    queue->runUntilIdle();
    EXPECT_EQ(outcome, Outcome::succeeded);
    EXPECT_EQ(engine->runs(), (Strings{playpause}));
}

// --- currentTrack ----------------------------------------------------------

TEST_F(MusicScriptingTest, MusicStoppedAnswersNoTrackWithSucceededAndSkipsTheArtworkQuery) {
    musicPlays("");
    const TrackAnswer answer = currentTrack();
    EXPECT_FALSE(answer.track.has_value());
    EXPECT_EQ(answer.outcome, Outcome::succeeded);
    EXPECT_EQ(engine->runs(), (Strings{trackQuery}));
    EXPECT_EQ(thumbnailer->callCount(), 0u);
}

TEST_F(MusicScriptingTest, AParsedTrackIsFollowedByTheArtworkQueryAndCarriesItsThumbnail) {
    musicPlays("So What\tMiles Davis\tplaying");
    engine->answer(artworkQuery, FakeScriptEngine::bytes(FakeThumbnailer::imageBytes("cover")));
    const TrackAnswer answer = currentTrack();
    ASSERT_TRUE(answer.track.has_value());
    EXPECT_EQ(answer.track->summary, (TrackSummary{"So What", "Miles Davis", true}));
    ASSERT_TRUE(answer.track->artwork.has_value());
    EXPECT_EQ(*answer.track->artwork, FakeThumbnailer::image("cover"));
    EXPECT_EQ(answer.outcome, Outcome::succeeded);
    EXPECT_EQ(engine->runs(), (Strings{trackQuery, artworkQuery}));
    EXPECT_EQ(thumbnailer->calls(), (std::vector<std::vector<std::uint8_t>>{FakeThumbnailer::imageBytes("cover")}));
}

TEST_F(MusicScriptingTest, APausedTrackIsNotPlaying) {
    musicPlays("Blue in Green\tMiles Davis\tpaused");
    const TrackAnswer answer = currentTrack();
    ASSERT_TRUE(answer.track.has_value());
    EXPECT_EQ(answer.track->summary, (TrackSummary{"Blue in Green", "Miles Davis", false}));
}

TEST_F(MusicScriptingTest, TheTrackCompletionRunsAsQueueWork) {
    musicPlays("So What\tMiles Davis\tplaying");
    EXPECT_TRUE(currentTrack().onQueue);
}

TEST_F(MusicScriptingTest, ATrackWithoutArtworkHasNoneAndKeepsTheTrackQueryOutcome) {
    musicPlays("So What\tMiles Davis\tplaying");
    engine->answer(artworkQuery, FakeScriptEngine::nothing());
    const TrackAnswer answer = currentTrack();
    ASSERT_TRUE(answer.track.has_value());
    EXPECT_FALSE(answer.track->artwork.has_value());
    EXPECT_EQ(answer.outcome, Outcome::succeeded);
    EXPECT_EQ(thumbnailer->callCount(), 0u) << "empty bytes are never handed to the thumbnailer";
}

TEST_F(MusicScriptingTest, ADeniedArtworkQueryLeavesTheOutcomeToTheTrackQuery) {
    musicPlays("So What\tMiles Davis\tplaying");
    engine->answer(artworkQuery, FakeScriptEngine::error(-1743));
    const TrackAnswer answer = currentTrack();
    ASSERT_TRUE(answer.track.has_value());
    EXPECT_FALSE(answer.track->artwork.has_value());
    EXPECT_EQ(answer.outcome, Outcome::succeeded);
    EXPECT_EQ(logger->lines(), (Strings{"AppleScript failed with -1743"}));
}

TEST_F(MusicScriptingTest, AFailedArtworkQueryLeavesTheTrackWithoutArtwork) {
    musicPlays("So What\tMiles Davis\tplaying");
    engine->answer(artworkQuery, FakeScriptEngine::error(-1728));
    const TrackAnswer answer = currentTrack();
    ASSERT_TRUE(answer.track.has_value());
    EXPECT_FALSE(answer.track->artwork.has_value());
    EXPECT_EQ(answer.outcome, Outcome::succeeded);
    EXPECT_EQ(thumbnailer->callCount(), 0u);
}

TEST_F(MusicScriptingTest, ArtworkBytesThatAreNoImageGiveNoArtwork) {
    musicPlays("So What\tMiles Davis\tplaying");
    const std::vector<std::uint8_t> garbage{0x00, 0x01, 0x02};
    engine->answer(artworkQuery, FakeScriptEngine::bytes(garbage));
    const TrackAnswer answer = currentTrack();
    ASSERT_TRUE(answer.track.has_value());
    EXPECT_FALSE(answer.track->artwork.has_value());
    EXPECT_EQ(thumbnailer->calls(), (std::vector<std::vector<std::uint8_t>>{garbage}));
}

TEST_F(MusicScriptingTest, ADeniedTrackQueryAnswersNoTrackDeniedAndSkipsTheArtworkQuery) {
    engine->answer(trackQuery, FakeScriptEngine::error(-1743));
    const TrackAnswer answer = currentTrack();
    EXPECT_FALSE(answer.track.has_value());
    EXPECT_EQ(answer.outcome, Outcome::denied);
    EXPECT_EQ(engine->runs(), (Strings{trackQuery}));
}

TEST_F(MusicScriptingTest, AFailedTrackQueryAnswersNoTrackFailed) {
    engine->answer(trackQuery, FakeScriptEngine::error(-600));
    const TrackAnswer answer = currentTrack();
    EXPECT_FALSE(answer.track.has_value());
    EXPECT_EQ(answer.outcome, Outcome::failed);
    EXPECT_EQ(engine->runs(), (Strings{trackQuery}));
}

TEST_F(MusicScriptingTest, ATrackQueryThatCannotBeCreatedAnswersNoTrackFailed) {
    engine->refuseToCreate(trackQuery);
    const TrackAnswer answer = currentTrack();
    EXPECT_FALSE(answer.track.has_value());
    EXPECT_EQ(answer.outcome, Outcome::failed);
    EXPECT_TRUE(engine->runs().empty());
}

TEST_F(MusicScriptingTest, AResultWithoutAStringValueReadsAsEmptyOutput) {
    // Bytes that would parse as a track if they were taken for the text.
    const std::string output = "So What\tMiles Davis\tplaying";
    engine->answer(trackQuery, FakeScriptEngine::bytes(std::vector<std::uint8_t>(output.begin(), output.end())));
    const TrackAnswer answer = currentTrack();
    EXPECT_FALSE(answer.track.has_value());
    EXPECT_EQ(answer.outcome, Outcome::succeeded);
    EXPECT_EQ(engine->runs(), (Strings{trackQuery}));
}

TEST_F(MusicScriptingTest, MalformedOutputAnswersNoTrackAndSkipsTheArtworkQuery) {
    musicPlays("So What\tMiles Davis");
    const TrackAnswer answer = currentTrack();
    EXPECT_FALSE(answer.track.has_value());
    EXPECT_EQ(answer.outcome, Outcome::succeeded);
    EXPECT_EQ(engine->runs(), (Strings{trackQuery}));
}

TEST_F(MusicScriptingTest, BothQueriesAreCompiledOnceAcrossFetches) {
    musicPlays("So What\tMiles Davis\tplaying");
    currentTrack();
    currentTrack();
    EXPECT_EQ(engine->compiled(), (Strings{trackQuery, artworkQuery}));
    EXPECT_EQ(engine->runs(), (Strings{trackQuery, artworkQuery, trackQuery, artworkQuery}));
    EXPECT_EQ(compiledScriptCount(), 2u);
}

TEST_F(MusicScriptingTest, ACommandQueuedAfterAFetchRunsAfterBothQueries) {
    musicPlays("So What\tMiles Davis\tplaying");
    scripting.currentTrack([](std::optional<Track>, Outcome) {});
    scripting.execute("next track", [](MusicScripting::Execution) {});
    queue->runUntilIdle();
    EXPECT_EQ(engine->runs(), (Strings{trackQuery, artworkQuery, source("next track")}));
}

}  // namespace
}  // namespace tolvane
