// TolvanePreview: the app's snapshot mode on Linux. Run as
//
//     TolvanePreview --snapshot DIRECTORY
//
// it goes through the same entry check, sample state, menu view and snapshot
// rendering as the Mac app, painted by the Cairo and Pango canvas, and writes
// menu-en-light.png and menu-en-dark.png into DIRECTORY.
//
// Snapshot mode does no system work, so the services handed to the preview
// state stop the program if anything ever calls them.
#include <cairo.h>

#include <cmath>
#include <cstdio>
#include <memory>
#include <numbers>
#include <optional>
#include <string>
#include <vector>

#include "OrvikKit/CairoCanvas.h"
#include "OrvikKit/FatalError.h"
#include "OrvikKitCore/Preferences.h"
#include "Tolvane/Entry.h"
#include "Tolvane/MenuSnapshot.h"

namespace {

using tolvane::ArtworkImage;
using tolvane::MenuSnapshot::SampleArtwork;

[[noreturn]] void calledInSnapshot(const char* what) {
    orvik::fatalError(std::string("snapshot mode must not call ") + what);
}

// The main thread of this single-threaded program; snapshot mode posts
// nothing.
class PreviewMainThread final : public orvik::MainThread {
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
    Token addObserver(std::string, Handler) override { calledInSnapshot("NotificationCenter::addObserver"); }
    void removeObserver(Token) override { calledInSnapshot("NotificationCenter::removeObserver"); }
};

class NoAccessibility final : public orvik::AccessibilityTrust {
public:
    bool isTrusted() override { calledInSnapshot("AccessibilityTrust::isTrusted"); }
    bool requestIfNeeded() override { calledInSnapshot("AccessibilityTrust::requestIfNeeded"); }
};

class NoEventTaps final : public tolvane::EventTapSystem {
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

class NoScripts final : public tolvane::ScriptEngine {
public:
    std::unique_ptr<Script> create(std::string_view) override { calledInSnapshot("ScriptEngine::create"); }
};

class NoThumbnails final : public tolvane::Thumbnailer {
public:
    std::optional<ArtworkImage> thumbnail(std::span<const std::uint8_t>) override {
        calledInSnapshot("Thumbnailer::thumbnail");
    }
};

class NoLogger final : public orvik::Logger {
public:
    void error(std::string_view) noexcept override { calledInSnapshot("Logger::error"); }
};

class PreviewAppInfo final : public orvik::AppInfoSource {
public:
    std::string version() const override { return TOLVANE_PREVIEW_VERSION; }
    std::shared_ptr<orvik::Logger> logger(std::string_view) override { return std::make_shared<NoLogger>(); }
};

class NoURLs final : public orvik::URLOpener {
public:
    orvik::URLOpenResult open(std::string_view) override { calledInSnapshot("URLOpener::open"); }
};

tolvane::AppServices previewServices() {
    return tolvane::AppServices{
        .mainThread = std::make_shared<PreviewMainThread>(),
        .runningApplications = std::make_shared<NoRunningApplications>(),
        .distributedNotifications = std::make_shared<NoNotifications>(),
        .workspaceNotifications = std::make_shared<NoNotifications>(),
        .accessibility = std::make_shared<NoAccessibility>(),
        .eventTaps = std::make_shared<NoEventTaps>(),
        .scripting = std::make_shared<tolvane::MusicScripting>(std::make_shared<NoQueue>(),
                                                              std::make_shared<NoScripts>(),
                                                              std::make_shared<NoThumbnails>(),
                                                              std::make_shared<NoLogger>()),
        .appInfo = std::make_shared<PreviewAppInfo>(),
        .urlOpener = std::make_shared<NoURLs>(),
        .standardDefaults = std::make_shared<orvik::InMemoryPreferenceStore>(),
        .now = [] { return orvik::dateFromSecondsSince1970(0); },
    };
}

// The sample artwork as a Cairo image: both the app's artwork content and a
// view image the Cairo canvas draws.
class CairoArtwork final : public ArtworkImage::Content, public orvik::cairo::CairoImage {
public:
    using CairoImage::CairoImage;
    bool equals(const Content& other) const override { return &other == this; }
};

// An image of `sizeInPoints`, at two pixels per point, filled with a linear
// gradient between the two colours drawn across the whole image at the
// sample's angle (counter-clockwise from the positive x axis, y up).
std::optional<ArtworkImage> sampleArtwork(const SampleArtwork& sample) {
    const double scale = 2;
    const int pixels = static_cast<int>(std::lround(sample.sizeInPoints * scale));
    cairo_surface_t* surface = cairo_image_surface_create(CAIRO_FORMAT_ARGB32, pixels, pixels);
    cairo_t* cr = cairo_create(surface);
    const double side = pixels;
    const double radians = sample.angleInDegrees * std::numbers::pi / 180;
    const double dx = std::cos(radians);
    const double dy = -std::sin(radians);  // the image's y runs down
    // The gradient line through the centre, long enough to reach the corners.
    const double half = (std::abs(dx) + std::abs(dy)) * side / 2;
    cairo_pattern_t* gradient = cairo_pattern_create_linear(side / 2 - dx * half, side / 2 - dy * half,
                                                            side / 2 + dx * half, side / 2 + dy * half);
    cairo_pattern_add_color_stop_rgba(gradient, 0, sample.from.red, sample.from.green, sample.from.blue,
                                      sample.from.alpha);
    cairo_pattern_add_color_stop_rgba(gradient, 1, sample.to.red, sample.to.green, sample.to.blue, sample.to.alpha);
    cairo_set_source(cr, gradient);
    cairo_paint(cr);
    cairo_pattern_destroy(gradient);
    cairo_destroy(cr);
    auto content = std::make_shared<CairoArtwork>(surface, sample.sizeInPoints, sample.sizeInPoints);
    cairo_surface_destroy(surface);
    return tolvane::MenuSnapshot::artworkImage(std::move(content));
}

}  // namespace

int main(int argc, char** argv) {
    const std::vector<std::string> arguments(argv, argv + argc);
    const std::optional<int> status = tolvane::runSnapshotIfAsked(arguments, [](const std::string& directory) {
        orvik::cairo::CairoSnapshotPlatform rendering;
        tolvane::MenuSnapshot::Platform platform{
            .rendering = rendering,
            .services = previewServices(),
            .loginItem = nullptr,
            .version = TOLVANE_PREVIEW_VERSION,
            .makeArtwork = sampleArtwork,
        };
        tolvane::MenuSnapshot::render(directory, platform);
    });
    if (!status) {
        std::fputs("usage: TolvanePreview --snapshot DIRECTORY\n", stderr);
        return 2;
    }
    return *status;
}
