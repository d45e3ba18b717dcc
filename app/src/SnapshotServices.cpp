#include "Tolvane/SnapshotServices.h"

#include <memory>
#include <optional>
#include <string>
#include <utility>

#include "OrvikKit/FatalError.h"
#include "OrvikKitCore/Date.h"
#include "OrvikKitCore/Preferences.h"

namespace tolvane::MenuSnapshot {

namespace {

[[noreturn]] void calledInSnapshot(const char* what) {
    orvik::fatalError(std::string("snapshot mode must not call ") + what);
}

class SnapshotMainThread final : public orvik::MainThread {
public:
    void post(Task) override { calledInSnapshot("MainThread::post"); }
    TimerID postAfter(orvik::Duration, orvik::Duration, Task) override { calledInSnapshot("MainThread::postAfter"); }
    void cancel(TimerID) override { calledInSnapshot("MainThread::cancel"); }
    bool isCurrent() const override { return true; }
};

class NoRunningApplications final : public orvik::RunningApplications {
public:
    bool isRunning(std::string_view) const override { calledInSnapshot("RunningApplications::isRunning"); }
};

class NoNotifications final : public orvik::NotificationCenter {
public:
    Token addObserver(std::string, Handler, orvik::Delivery) override {
        calledInSnapshot("NotificationCenter::addObserver");
    }
    void removeObserver(Token) override { calledInSnapshot("NotificationCenter::removeObserver"); }
};

class NoAccessibility final : public orvik::AccessibilityTrust {
public:
    bool isTrusted() override { calledInSnapshot("AccessibilityTrust::isTrusted"); }
    bool requestIfNeeded() override { calledInSnapshot("AccessibilityTrust::requestIfNeeded"); }
};

class NoEventTaps final : public EventTapSystem {
public:
    std::optional<Handle> createTap(void*) noexcept override { calledInSnapshot("EventTapSystem::createTap"); }
    bool addToMainRunLoop(Handle) noexcept override { calledInSnapshot("EventTapSystem::addToMainRunLoop"); }
    void enable(Handle, bool) noexcept override { calledInSnapshot("EventTapSystem::enable"); }
    bool isEnabled(Handle) const noexcept override { calledInSnapshot("EventTapSystem::isEnabled"); }
    void invalidate(Handle) noexcept override { calledInSnapshot("EventTapSystem::invalidate"); }
    void release(Handle) noexcept override { calledInSnapshot("EventTapSystem::release"); }
};

class NoQueue final : public orvik::SerialQueue {
public:
    void async(WorkItem) override { calledInSnapshot("SerialQueue::async"); }
};

class NoScripts final : public ScriptEngine {
public:
    std::unique_ptr<Script> create(std::string_view) override { calledInSnapshot("ScriptEngine::create"); }
};

class NoThumbnails final : public Thumbnailer {
public:
    std::optional<ArtworkImage> thumbnail(std::span<const std::uint8_t>) override {
        calledInSnapshot("Thumbnailer::thumbnail");
    }
};

class NoLogger final : public orvik::Logger {
public:
    void error(std::string_view) noexcept override { calledInSnapshot("Logger::error"); }
};

class SnapshotAppInfo final : public orvik::AppInfoSource {
public:
    explicit SnapshotAppInfo(std::string version) : version_(std::move(version)) {}
    std::string version() const override { return version_; }
    std::shared_ptr<orvik::Logger> logger(std::string_view) override { return std::make_shared<NoLogger>(); }

private:
    std::string version_;
};

class NoURLs final : public orvik::URLOpener {
public:
    orvik::URLOpenResult open(std::string_view) override { calledInSnapshot("URLOpener::open"); }
};

}  // namespace

AppServices refusingServices(std::string version) {
    return AppServices{
        .mainThread = std::make_shared<SnapshotMainThread>(),
        .runningApplications = std::make_shared<NoRunningApplications>(),
        .distributedNotifications = std::make_shared<NoNotifications>(),
        .workspaceNotifications = std::make_shared<NoNotifications>(),
        .accessibility = std::make_shared<NoAccessibility>(),
        .eventTaps = std::make_shared<NoEventTaps>(),
        .scripting = std::make_shared<MusicScripting>(std::make_shared<NoQueue>(), std::make_shared<NoScripts>(),
                                                      std::make_shared<NoThumbnails>(), std::make_shared<NoLogger>()),
        .appInfo = std::make_shared<SnapshotAppInfo>(std::move(version)),
        .urlOpener = std::make_shared<NoURLs>(),
        .standardDefaults = std::make_shared<orvik::InMemoryPreferenceStore>(),
        .now = [] { return orvik::dateFromSecondsSince1970(0); },
    };
}

}  // namespace tolvane::MenuSnapshot
