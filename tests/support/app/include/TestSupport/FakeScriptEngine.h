// A script engine driven by the test: it records every script created,
// compiled and run, answers each source as configured, and can hold runs
// until the test releases them. Safe from any thread: the runs happen on the
// scripting queue while the test configures and reads from its own thread.
//
// Sources are the full texts handed to `create` (MusicScripting::fullSource
// of a body). A source nobody configured runs successfully and answers an
// empty value (no string, no bytes), as a command that returns nothing does.
#pragma once

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <thread>
#include <vector>

#include "Tolvane/MusicScripting.h"

namespace testsupport {

class FakeScriptEngine final : public tolvane::ScriptEngine {
public:
    // Answers to configure.
    // A result whose string value is `text` and whose bytes are its characters.
    static tolvane::ScriptValue text(std::string_view text);
    // A result with raw bytes only: no string value (as artwork data).
    static tolvane::ScriptValue bytes(std::vector<std::uint8_t> data);
    // A result with neither a string value nor bytes.
    static tolvane::ScriptValue nothing() { return {}; }
    static tolvane::ScriptError error(std::int64_t number) { return tolvane::ScriptError{number}; }
    static tolvane::ScriptError errorWithoutNumber() { return tolvane::ScriptError{std::nullopt}; }

    FakeScriptEngine();
    ~FakeScriptEngine() override;

    FakeScriptEngine(const FakeScriptEngine&) = delete;
    FakeScriptEngine& operator=(const FakeScriptEngine&) = delete;

    std::unique_ptr<Script> create(std::string_view source) override;

    // Every later run of `source` answers `result` (until answered otherwise).
    void answer(std::string_view source, tolvane::ScriptRunResult result);
    // The next run of `source` answers `result`; one-time answers are used
    // up in the order given, before the lasting answer applies again.
    void answerOnce(std::string_view source, tolvane::ScriptRunResult result);
    // `create` answers null for `source` (while `refuse` holds).
    void refuseToCreate(std::string_view source, bool refuse = true);

    // From now on every run, once counted as started, waits until
    // releaseRuns(). Runs already waiting keep waiting.
    void blockRuns();
    // Lets the waiting runs and every later one go.
    void releaseRuns();

    // Every create, compile and run in order: "create <source>", "create
    // refused <source>", "compile <source>", "run <source>".
    std::vector<std::string> events() const;
    // Sources handed to `create`, refused ones included.
    std::vector<std::string> created() const;
    std::vector<std::string> compiled() const;
    // Sources of the runs started, in order.
    std::vector<std::string> runs() const;
    // For each run started, the number of the script object that ran (the
    // first script created is 1).
    std::vector<std::size_t> runScriptNumbers() const;
    // For each run started, the thread it ran on.
    std::vector<std::thread::id> runThreads() const;
    std::size_t runsStarted() const;
    // The source of the run at `index` (in start order); empty past the end.
    std::string runAt(std::size_t index) const;
    std::size_t runsFinished() const;
    // The most runs that were ever under way at the same time.
    std::size_t maxConcurrentRuns() const;
    // Script objects made and not yet destroyed.
    std::size_t liveScripts() const;

    // Wait until at least `count` runs have started (or finished); false when
    // that did not happen within `timeout`.
    [[nodiscard]] bool waitForRunsStarted(std::size_t count, std::chrono::milliseconds timeout) const;
    [[nodiscard]] bool waitForRunsFinished(std::size_t count, std::chrono::milliseconds timeout) const;

private:
    struct Shared;
    class FakeScript;
    std::shared_ptr<Shared> shared_;
};

}  // namespace testsupport
