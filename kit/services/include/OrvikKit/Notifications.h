// Notification centres as the portable code sees them, and the token that
// removes an observer when released.
//
// Two centres matter: the distributed one (Music's player notification) and
// the workspace's (applications launching and terminating). Their platform
// adapters deliver every notification on the main thread.
//
// An observer says when it wants its notifications: as the centre delivers
// them by default, or at once. The difference is the distributed centre's:
// on macOS it holds notifications for an application that is not active
// and hands them over when it next becomes active, which for a menu-bar
// agent may be much later. A centre that never holds notifications (the
// workspace's) delivers both alike.
#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <string>

#include "OrvikKit/MainThread.h"
#include "OrvikKitCore/PropertyListValue.h"

namespace orvik {

// A notification with its user info bridged to property-list values: entries
// whose key is not a string or whose value has no property-list form are
// left out. The workspace's running application arrives as a dictionary under
// `applicationKey` holding its bundle identifier (when it has one) under
// `bundleIdentifierKey`.
struct Notification {
    std::string name;
    PropertyListValue::Dictionary userInfo;

    static constexpr const char* applicationKey = "NSWorkspaceApplicationKey";
    static constexpr const char* bundleIdentifierKey = "bundleIdentifier";
};

// When a centre hands a notification to its observer.
enum class Delivery {
    // As the centre does by default: a distributed centre may hold the
    // notification while the application is not active.
    standard,
    // At once, whether the application is active or not.
    immediate,
};

class NotificationCenter {
public:
    using Token = std::uint64_t;
    using Handler = std::function<void(const Notification&)>;

    virtual ~NotificationCenter() = default;

    // Observes `name` from any sender, delivered as `delivery` says; the
    // handler runs on the main thread.
    virtual Token addObserver(std::string name, Handler handler, Delivery delivery) = 0;
    virtual void removeObserver(Token token) = 0;
};

// Observes a notification for as long as it lives. Main thread only:
// created and released there, and every delivery asserts that it arrives
// there (a centre that delivers elsewhere stops the process).
class NotificationObservation {
public:
    NotificationObservation(const MainThread& mainThread, std::string name, std::shared_ptr<NotificationCenter> center,
                            NotificationCenter::Handler handler, Delivery delivery = Delivery::standard);
    ~NotificationObservation();

    NotificationObservation(const NotificationObservation&) = delete;
    NotificationObservation& operator=(const NotificationObservation&) = delete;

private:
    const MainThread& mainThread_;
    std::shared_ptr<NotificationCenter> center_;
    NotificationCenter::Token token_ = 0;
};

}  // namespace orvik
