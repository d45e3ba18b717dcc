#include "TestSupport/FakeScriptEngine.h"

#include <algorithm>
#include <condition_variable>
#include <deque>
#include <functional>
#include <map>
#include <mutex>
#include <set>
#include <utility>

namespace testsupport {

// Shared by the engine and the scripts it made, which may outlive it.
struct FakeScriptEngine::Shared {
    mutable std::mutex mutex;
    mutable std::condition_variable changed;

    std::map<std::string, tolvane::ScriptRunResult, std::less<>> lastingAnswers;
    std::map<std::string, std::deque<tolvane::ScriptRunResult>, std::less<>> onceAnswers;
    std::set<std::string, std::less<>> refused;
    bool blocking = false;
    std::uint64_t releases = 0;  // how many times releaseRuns was called

    std::vector<std::string> events;
    std::vector<std::string> created;
    std::vector<std::string> compiled;
    std::vector<std::string> runs;
    std::vector<std::size_t> runScriptNumbers;
    std::vector<std::thread::id> runThreads;
    std::size_t scriptsMade = 0;
    std::size_t liveScripts = 0;
    std::size_t runsFinished = 0;
    std::size_t runsUnderWay = 0;
    std::size_t maxConcurrentRuns = 0;

    tolvane::ScriptRunResult answerFor(const std::string& source) {
        if (auto once = onceAnswers.find(source); once != onceAnswers.end() && !once->second.empty()) {
            tolvane::ScriptRunResult result = std::move(once->second.front());
            once->second.pop_front();
            return result;
        }
        if (auto lasting = lastingAnswers.find(source); lasting != lastingAnswers.end()) return lasting->second;
        return tolvane::ScriptValue{};
    }
};

class FakeScriptEngine::FakeScript final : public ScriptEngine::Script {
public:
    FakeScript(std::shared_ptr<Shared> shared, std::string source, std::size_t number)
        : shared_(std::move(shared)), source_(std::move(source)), number_(number) {}

    ~FakeScript() override {
        const std::lock_guard lock(shared_->mutex);
        --shared_->liveScripts;
    }

    void compile() override {
        const std::lock_guard lock(shared_->mutex);
        shared_->events.push_back("compile " + source_);
        shared_->compiled.push_back(source_);
    }

    tolvane::ScriptRunResult run() override {
        std::unique_lock lock(shared_->mutex);
        Shared& shared = *shared_;
        shared.events.push_back("run " + source_);
        shared.runs.push_back(source_);
        shared.runScriptNumbers.push_back(number_);
        shared.runThreads.push_back(std::this_thread::get_id());
        ++shared.runsUnderWay;
        shared.maxConcurrentRuns = std::max(shared.maxConcurrentRuns, shared.runsUnderWay);
        shared.changed.notify_all();

        if (shared.blocking) {
            // Held until the next release; no timeout, as a hung Music would.
            const std::uint64_t releasesSeen = shared.releases;
            shared.changed.wait(lock, [&] { return shared.releases != releasesSeen; });
        }

        tolvane::ScriptRunResult result = shared.answerFor(source_);
        --shared.runsUnderWay;
        ++shared.runsFinished;
        shared.changed.notify_all();
        return result;
    }

private:
    std::shared_ptr<Shared> shared_;
    std::string source_;
    std::size_t number_;
};

tolvane::ScriptValue FakeScriptEngine::text(std::string_view text) {
    return tolvane::ScriptValue{std::string(text), std::vector<std::uint8_t>(text.begin(), text.end())};
}

tolvane::ScriptValue FakeScriptEngine::bytes(std::vector<std::uint8_t> data) {
    return tolvane::ScriptValue{std::nullopt, std::move(data)};
}

FakeScriptEngine::FakeScriptEngine() : shared_(std::make_shared<Shared>()) {}

FakeScriptEngine::~FakeScriptEngine() = default;

std::unique_ptr<tolvane::ScriptEngine::Script> FakeScriptEngine::create(std::string_view source) {
    const std::lock_guard lock(shared_->mutex);
    shared_->created.emplace_back(source);
    if (shared_->refused.contains(source)) {
        shared_->events.push_back("create refused " + std::string(source));
        return nullptr;
    }
    shared_->events.push_back("create " + std::string(source));
    ++shared_->liveScripts;
    return std::make_unique<FakeScript>(shared_, std::string(source), ++shared_->scriptsMade);
}

void FakeScriptEngine::answer(std::string_view source, tolvane::ScriptRunResult result) {
    const std::lock_guard lock(shared_->mutex);
    shared_->lastingAnswers.insert_or_assign(std::string(source), std::move(result));
}

void FakeScriptEngine::answerOnce(std::string_view source, tolvane::ScriptRunResult result) {
    const std::lock_guard lock(shared_->mutex);
    shared_->onceAnswers[std::string(source)].push_back(std::move(result));
}

void FakeScriptEngine::refuseToCreate(std::string_view source, bool refuse) {
    const std::lock_guard lock(shared_->mutex);
    if (refuse) {
        shared_->refused.emplace(source);
    } else if (auto found = shared_->refused.find(source); found != shared_->refused.end()) {
        shared_->refused.erase(found);
    }
}

void FakeScriptEngine::blockRuns() {
    const std::lock_guard lock(shared_->mutex);
    shared_->blocking = true;
}

void FakeScriptEngine::releaseRuns() {
    const std::lock_guard lock(shared_->mutex);
    shared_->blocking = false;
    ++shared_->releases;
    shared_->changed.notify_all();
}

std::vector<std::string> FakeScriptEngine::events() const {
    const std::lock_guard lock(shared_->mutex);
    return shared_->events;
}

std::vector<std::string> FakeScriptEngine::created() const {
    const std::lock_guard lock(shared_->mutex);
    return shared_->created;
}

std::vector<std::string> FakeScriptEngine::compiled() const {
    const std::lock_guard lock(shared_->mutex);
    return shared_->compiled;
}

std::vector<std::string> FakeScriptEngine::runs() const {
    const std::lock_guard lock(shared_->mutex);
    return shared_->runs;
}

std::vector<std::size_t> FakeScriptEngine::runScriptNumbers() const {
    const std::lock_guard lock(shared_->mutex);
    return shared_->runScriptNumbers;
}

std::vector<std::thread::id> FakeScriptEngine::runThreads() const {
    const std::lock_guard lock(shared_->mutex);
    return shared_->runThreads;
}

std::string FakeScriptEngine::runAt(std::size_t index) const {
    const std::lock_guard lock(shared_->mutex);
    return index < shared_->runs.size() ? shared_->runs[index] : std::string();
}

std::size_t FakeScriptEngine::runsStarted() const {
    const std::lock_guard lock(shared_->mutex);
    return shared_->runs.size();
}

std::size_t FakeScriptEngine::runsFinished() const {
    const std::lock_guard lock(shared_->mutex);
    return shared_->runsFinished;
}

std::size_t FakeScriptEngine::maxConcurrentRuns() const {
    const std::lock_guard lock(shared_->mutex);
    return shared_->maxConcurrentRuns;
}

std::size_t FakeScriptEngine::liveScripts() const {
    const std::lock_guard lock(shared_->mutex);
    return shared_->liveScripts;
}

bool FakeScriptEngine::waitForRunsStarted(std::size_t count, std::chrono::milliseconds timeout) const {
    std::unique_lock lock(shared_->mutex);
    return shared_->changed.wait_for(lock, timeout, [&] { return shared_->runs.size() >= count; });
}

bool FakeScriptEngine::waitForRunsFinished(std::size_t count, std::chrono::milliseconds timeout) const {
    std::unique_lock lock(shared_->mutex);
    return shared_->changed.wait_for(lock, timeout, [&] { return shared_->runsFinished >= count; });
}

}  // namespace testsupport
