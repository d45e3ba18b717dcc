#include "Tolvane/MusicScripting.h"

#include <cassert>
#include <map>
#include <utility>

namespace tolvane {

namespace {

// The Apple Event error Music answers when the user has not allowed this app
// to control it.
constexpr std::int64_t notPermittedErrorNumber = -1743;

}  // namespace

// Everything the queued work touches. Only the scripting queue reads or
// writes it, so it takes no lock; the work holds it strongly, so it outlives
// the MusicScripting object when work is still queued.
struct MusicScripting::State {
    std::shared_ptr<ScriptEngine> engine;
    std::shared_ptr<Thumbnailer> thumbnailer;
    std::shared_ptr<orvik::Logger> logger;
    // Compiled scripts by full source; grows by one per distinct source and
    // is never trimmed.
    std::map<std::string, std::unique_ptr<ScriptEngine::Script>, std::less<>> scripts;

    Execution execute(std::string_view body) {
        std::string source = fullSource(body);
        ScriptEngine::Script* script = nullptr;
        if (const auto cached = scripts.find(source); cached != scripts.end()) {
            script = cached->second.get();
        } else {
            std::unique_ptr<ScriptEngine::Script> created = engine->create(source);
            if (!created) {
                // Nothing to cache and nothing ran, so nothing to log either.
                return {std::nullopt, Outcome::failed};
            }
            // A script that does not compile is kept all the same; its runs
            // then fail and are classified like any other failure.
            created->compile();
            script = scripts.emplace(std::move(source), std::move(created)).first->second.get();
        }

        ScriptRunResult result = script->run();
        if (auto* value = std::get_if<ScriptValue>(&result)) {
            return {std::move(*value), Outcome::succeeded};
        }
        const std::optional<std::int64_t> number = std::get<ScriptError>(result).number;
        logger->error("AppleScript failed with " + std::to_string(number.value_or(0)));
        return {std::nullopt, number == notPermittedErrorNumber ? Outcome::denied : Outcome::failed};
    }

    std::pair<std::optional<Track>, Outcome> currentTrack() {
        const Execution trackRun = execute(trackQuery);
        const std::string_view output =
            trackRun.result && trackRun.result->stringValue ? std::string_view(*trackRun.result->stringValue)
                                                            : std::string_view();
        std::optional<TrackSummary> summary = TrackSummary::fromScriptOutput(output);
        if (!summary) {
            return {std::nullopt, trackRun.outcome};
        }

        // The artwork run's outcome is left out on purpose: the permission
        // verdict comes from the track query alone.
        const Execution artworkRun = execute(artworkQuery);
        std::optional<ArtworkImage> artwork;
        if (artworkRun.result && !artworkRun.result->data.empty()) {
            artwork = thumbnailer->thumbnail(artworkRun.result->data);
        }
        return {Track{std::move(*summary), std::move(artwork)}, trackRun.outcome};
    }
};

std::string_view MusicScripting::body(MusicCommand command) noexcept {
    switch (command) {
    case MusicCommand::playPause: return "playpause";
    case MusicCommand::next: return "next track";
    case MusicCommand::previous: return "back track";  // not "previous track": Music's own verb
    case MusicCommand::launchAndPlay: return "play";
    }
    return "playpause";  // unreachable: every command is handled above
}

std::string MusicScripting::fullSource(std::string_view body) {
    std::string source;
    source.reserve(sourcePrefix.size() + body.size() + sourceSuffix.size());
    source.append(sourcePrefix).append(body).append(sourceSuffix);
    return source;
}

MusicScripting::MusicScripting(std::shared_ptr<orvik::SerialQueue> queue, std::shared_ptr<ScriptEngine> engine,
                               std::shared_ptr<Thumbnailer> thumbnailer, std::shared_ptr<orvik::Logger> logger)
    : queue_(std::move(queue)),
      state_(std::make_shared<State>(State{std::move(engine), std::move(thumbnailer), std::move(logger), {}})) {
    assert(queue_ && state_->engine && state_->thumbnailer && state_->logger);
}

void MusicScripting::execute(std::string body, std::function<void(Execution)> completion) {
    queue_->async([state = state_, body = std::move(body), completion = std::move(completion)] {
        completion(state->execute(body));
    });
}

void MusicScripting::currentTrack(std::function<void(std::optional<Track>, Outcome)> completion) {
    queue_->async([state = state_, completion = std::move(completion)] {
        auto [track, outcome] = state->currentTrack();
        completion(std::move(track), outcome);
    });
}

void MusicScripting::compiledScriptCount(std::function<void(std::size_t)> completion) const {
    queue_->async([state = state_, completion = std::move(completion)] { completion(state->scripts.size()); });
}

}  // namespace tolvane
