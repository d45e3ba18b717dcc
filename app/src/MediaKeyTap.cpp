#include "Tolvane/MediaKeyTap.h"

namespace tolvane {

MediaKeyTap::MediaKeyTap(orvik::MainThread& mainThread, std::shared_ptr<EventTapSystem> system,
                         std::shared_ptr<orvik::Logger> logger)
    : mainThread_(mainThread), system_(std::move(system)), logger_(std::move(logger)) {}

bool MediaKeyTap::start() {
    orvik::assertOnMainThread(mainThread_);
    if (tap_) {
        return true;
    }
    const std::optional<EventTapSystem::Handle> tap = system_->createTap(this);
    if (!tap) {
        return false;
    }
    if (!system_->addToMainRunLoop(*tap)) {
        // No source, no events: give the port back rather than keep a tap
        // that can never fire.
        system_->invalidate(*tap);
        system_->release(*tap);
        return false;
    }
    system_->enable(*tap, true);
    tap_ = tap;
    return true;
}

void MediaKeyTap::stop() {
    orvik::assertOnMainThread(mainThread_);
    if (tap_) {
        system_->enable(*tap_, false);
        system_->invalidate(*tap_);
        system_->release(*tap_);
        tap_.reset();
    }
    gate_.reset();
}

bool MediaKeyTap::reviveIfDisabled() {
    orvik::assertOnMainThread(mainThread_);
    if (!tap_ || system_->isEnabled(*tap_)) {
        return false;
    }
    system_->enable(*tap_, true);
    return true;
}

void MediaKeyTap::reenableAfterSystemDisabled() {
    orvik::assertOnMainThread(mainThread_);
    if (tap_) {
        system_->enable(*tap_, true);
    }
}

bool MediaKeyTap::decideMediaKey(const SystemDefinedFields& fields) {
    const std::optional<MediaKeyEvent> event = MediaKeyEvent::fromSystemEvent(fields.subtype, fields.data1);
    if (!event) {
        return false;
    }
    orvik::assertOnMainThread(mainThread_);
    return gate_.shouldSwallow(*event, [this](MediaKey key) { return onKey && onKey(key); });
}

void MediaKeyTap::handlingFailed() noexcept {
    if (logger_) {
        logger_->error(handlingFailedMessage);
    }
}

}  // namespace tolvane
