// The only component that talks to Music: AppleScript texts run in-process,
// each distinct source compiled once and kept, every run on one serial queue
// off the main thread (a run blocks until Music answers), each outcome
// classified as succeeded, denied (error -1743: the user has not allowed this
// app to control Music) or failed.
//
// Thread rules: the public operations may be called from any thread; the
// work and the completions run on the scripting queue. The script engine and
// thumbnailer are touched only there.
#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

#include "OrvikKit/SerialQueue.h"
#include "OrvikKit/SystemServices.h"
#include "Tolvane/Track.h"
#include "TolvaneCore/KeyRouting.h"

namespace tolvane {

// What a script run answered: the result's text (nothing when it cannot be
// coerced to text) and its raw bytes.
struct ScriptValue {
    std::optional<std::string> stringValue;
    std::vector<std::uint8_t> data;
};

// A failed run: the error number, when the error carried a readable one.
struct ScriptError {
    std::optional<std::int64_t> number;
};

using ScriptRunResult = std::variant<ScriptValue, ScriptError>;

// AppleScript as the platform runs it (NSAppleScript on macOS).
class ScriptEngine {
public:
    class Script {
    public:
        virtual ~Script() = default;
        // Compiles the source; the answer is ignored (a script that does not
        // compile fails when run).
        virtual void compile() = 0;
        virtual ScriptRunResult run() = 0;
    };

    virtual ~ScriptEngine() = default;
    // A script object for `source`, or null when the platform cannot make one.
    virtual std::unique_ptr<Script> create(std::string_view source) = 0;
};

// Decodes image bytes into a thumbnail of at most 128 pixels on the longer
// side, with the image's orientation applied; nothing when the bytes are not
// an image.
class Thumbnailer {
public:
    virtual ~Thumbnailer() = default;
    virtual std::optional<ArtworkImage> thumbnail(std::span<const std::uint8_t> bytes) = 0;
};

class MusicScripting {
public:
    enum class Outcome : std::uint8_t { succeeded, denied, failed };

    struct Execution {
        std::optional<ScriptValue> result;  // present only when succeeded
        Outcome outcome;
    };

    static constexpr std::string_view musicBundleIdentifier = "com.apple.Music";
    static constexpr std::string_view sourcePrefix = "tell application id \"com.apple.Music\"\n";
    static constexpr std::string_view sourceSuffix = "\nend tell";
    static constexpr std::string_view trackQuery =
        "if player state is stopped then return \"\"\n"
        "set t to current track\n"
        "return (name of t) & (ASCII character 9) & (artist of t) & (ASCII character 9) & (player state as text)";
    static constexpr std::string_view artworkQuery =
        "if (count of artworks of current track) > 0 then return raw data of artwork 1 of current track";

    // The script body of a command ("back track" for previous, on purpose).
    static std::string_view body(MusicCommand command) noexcept;
    // The full source: the body addressed to Music by bundle identifier.
    static std::string fullSource(std::string_view body);

    // None of the four may be null. The queued work holds the engine, the
    // thumbnailer, the logger and the script cache, not this object, so
    // releasing it with work still queued is safe: that work still runs.
    MusicScripting(std::shared_ptr<orvik::SerialQueue> queue, std::shared_ptr<ScriptEngine> engine,
                   std::shared_ptr<Thumbnailer> thumbnailer, std::shared_ptr<orvik::Logger> logger);

    // Runs `body` on the queue and hands the execution to `completion` there.
    void execute(std::string body, std::function<void(Execution)> completion);

    // Runs the track query, then (for a parsed track only) the artwork query,
    // on the queue; hands the track and the track query's outcome to
    // `completion` there.
    void currentTrack(std::function<void(std::optional<Track>, Outcome)> completion);

    // How many distinct sources have been compiled (for tests and
    // diagnostics): read on the queue, where the cache lives, after the work
    // already queued, and handed to `completion` there.
    void compiledScriptCount(std::function<void(std::size_t)> completion) const;

private:
    struct State;
    std::shared_ptr<orvik::SerialQueue> queue_;
    std::shared_ptr<State> state_;
};

}  // namespace tolvane
