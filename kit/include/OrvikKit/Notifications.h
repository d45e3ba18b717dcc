// Notification centres as the portable code sees them, and the token that
// removes an observer when released.
//
// Two centres matter: the distributed one (Music's player notification) and
// the workspace's (applications launching and terminating). Their platform
// adapters deliver every notification on the main thread.
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

class NotificationCenter {
public:
    using Token = std::uint64_t;
    using Handler = std::function<void(const Notification&)>;

    virtual ~NotificationCenter() = default;

    // Observes `name` from any sender; the handler runs on the main thread.
    virtual Token addObserver(std::string name, Handler handler) = 0;
    virtual void removeObserver(Token token) = 0;
};

// Observes a notification for as long as it lives. Main thread only:
// created and released there, and every delivery asserts that it arrives
// there (a centre that delivers elsewhere stops the process).
class NotificationObservation {
public:
    NotificationObservation(const MainThread& mainThread, std::string name, std::shared_ptr<NotificationCenter> center,
                            NotificationCenter::Handler handler);
    ~NotificationObservation();

    NotificationObservation(const NotificationObservation&) = delete;
    NotificationObservation& operator=(const NotificationObservation&) = delete;

private:
    const MainThread& mainThread_;
    std::shared_ptr<NotificationCenter> center_;
    NotificationCenter::Token token_ = 0;
};

}  // namespace orvik
