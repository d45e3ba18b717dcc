#include "OrvikKit/Notifications.h"

#include <utility>

namespace orvik {

NotificationObservation::NotificationObservation(std::string name, std::shared_ptr<NotificationCenter> center,
                                                 NotificationCenter::Handler handler)
    : center_(std::move(center)), token_(center_->addObserver(std::move(name), std::move(handler))) {}

NotificationObservation::~NotificationObservation() { center_->removeObserver(token_); }

}  // namespace orvik
