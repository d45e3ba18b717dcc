#include "OrvikKit/Notifications.h"

#include <utility>

namespace orvik {

NotificationObservation::NotificationObservation(const MainThread& mainThread, std::string name,
                                                 std::shared_ptr<NotificationCenter> center,
                                                 NotificationCenter::Handler handler, Delivery delivery)
    : mainThread_(mainThread), center_(std::move(center)) {
    assertOnMainThread(mainThread_);
    token_ = center_->addObserver(
        std::move(name),
        [&mainThread = mainThread_, handler = std::move(handler)](const Notification& notification) {
            assertOnMainThread(mainThread);
            handler(notification);
        },
        delivery);
}

NotificationObservation::~NotificationObservation() {
    assertOnMainThread(mainThread_);
    center_->removeObserver(token_);
}

}  // namespace orvik
