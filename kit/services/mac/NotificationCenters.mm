// NotificationCenter over the distributed centre and the shared workspace's
// centre. Every handler runs on the main thread and asserts it.
//
// The distributed centre: observers are selector observers registered with
// -addObserver:selector:name:object:suspensionBehavior:, the only way to
// choose how a notification is treated while AppKit suspends delivery (it
// does whenever the application is not active): an immediate delivery asks
// for NSNotificationSuspensionBehaviorDeliverImmediately, a standard one for
// NSNotificationSuspensionBehaviorCoalesce, the behaviour every other
// registration method uses. Foundation delivers distributed notifications
// on the main thread (always, since Mac OS X 10.3), through the main run
// loop in its common modes.
//
// The workspace's centre is an ordinary in-process centre that is never
// suspended: observers are block observers on the main operation queue, and
// both deliveries are alike.
#import <AppKit/AppKit.h>

#include <functional>
#include <map>
#include <memory>
#include <string>
#include <utility>

#import "OrvikKitMac/PropertyLists.h"
#import "OrvikKitMac/Strings.h"
#include "OrvikKit/FatalError.h"
#include "OrvikKitMac/ServiceAdapters.h"

// A selector observer that hands each notification to a function. The
// centre does not retain its observers: the adapter keeps this one alive
// until it removes it.
@interface OrvikNotificationReceiver : NSObject
- (instancetype)initWithReceive:(std::function<void(NSNotification*)>)receive;
- (void)receive:(NSNotification*)notification;
@end

@implementation OrvikNotificationReceiver {
    std::function<void(NSNotification*)> _receive;
}

- (instancetype)initWithReceive:(std::function<void(NSNotification*)>)receive {
    self = [super init];
    if (self != nil) _receive = std::move(receive);
    return self;
}

- (void)receive:(NSNotification*)notification {
    if (_receive) _receive(notification);
}

@end

namespace orvik::mac {

namespace {

// A workspace notification's running application arrives as a dictionary
// holding its bundle identifier, the only thing the portable code reads.
void addRunningApplication(NSNotification* note, PropertyListValue::Dictionary& userInfo) {
    id application = [note.userInfo objectForKey:NSWorkspaceApplicationKey];
    if (![application isKindOfClass:[NSRunningApplication class]]) return;
    PropertyListValue::Dictionary entry;
    if (std::optional<std::string> identifier =
            portableString(static_cast<NSRunningApplication*>(application).bundleIdentifier)) {
        entry.emplace(Notification::bundleIdentifierKey, PropertyListValue(std::move(*identifier)));
    }
    userInfo.insert_or_assign(Notification::applicationKey, PropertyListValue(std::move(entry)));
}

enum class CenterKind { distributed, workspace };

// How the distributed centre treats an observer's notifications while
// delivery is suspended.
NSNotificationSuspensionBehavior suspensionBehavior(Delivery delivery) {
    switch (delivery) {
    case Delivery::standard: return NSNotificationSuspensionBehaviorCoalesce;
    case Delivery::immediate: return NSNotificationSuspensionBehaviorDeliverImmediately;
    }
    return NSNotificationSuspensionBehaviorCoalesce;
}

class FoundationNotificationCenter final : public NotificationCenter {
public:
    FoundationNotificationCenter(NSNotificationCenter* center, CenterKind kind,
                                 std::shared_ptr<const MainThread> mainThread)
        : center_(center), kind_(kind), mainThread_(std::move(mainThread)) {}

    ~FoundationNotificationCenter() override {
        for (const auto& entry : observers_) [center_ removeObserver:entry.second];
    }

    Token addObserver(std::string name, Handler handler, Delivery delivery) override {
        NSString* platformName = platformString(name);
        if (platformName == nil) fatalError("a notification name that is not UTF-8");
        std::function<void(NSNotification*)> receive = [mainThread = mainThread_, kind = kind_,
                                                        handler = std::move(handler)](NSNotification* note) {
            assertOnMainThread(*mainThread);
            Notification notification{.name = portableString(note.name).value_or(std::string()),
                                      .userInfo = propertyListDictionary(note.userInfo)};
            if (kind == CenterKind::workspace) addRunningApplication(note, notification.userInfo);
            handler(notification);
        };
        id observer = nil;
        if (kind_ == CenterKind::distributed) {
            OrvikNotificationReceiver* receiver = [[OrvikNotificationReceiver alloc] initWithReceive:std::move(receive)];
            [static_cast<NSDistributedNotificationCenter*>(center_) addObserver:receiver
                                                                       selector:@selector(receive:)
                                                                           name:platformName
                                                                         object:nil
                                                             suspensionBehavior:suspensionBehavior(delivery)];
            observer = receiver;
        } else {
            const auto shared = std::make_shared<std::function<void(NSNotification*)>>(std::move(receive));
            observer = [center_ addObserverForName:platformName
                                            object:nil
                                             queue:NSOperationQueue.mainQueue
                                        usingBlock:^(NSNotification* note) {
                                          (*shared)(note);
                                        }];
        }
        const Token token = nextToken_++;
        observers_.emplace(token, observer);
        return token;
    }

    void removeObserver(Token token) override {
        const auto found = observers_.find(token);
        if (found == observers_.end()) return;
        [center_ removeObserver:found->second];
        observers_.erase(found);
    }

private:
    NSNotificationCenter* center_;
    CenterKind kind_;
    std::shared_ptr<const MainThread> mainThread_;
    std::map<Token, id> observers_;  // the receivers and block observers, kept alive until removed
    Token nextToken_ = 1;
};

}  // namespace

std::shared_ptr<NotificationCenter> makeDistributedNotificationCenter(std::shared_ptr<const MainThread> mainThread) {
    return std::make_shared<FoundationNotificationCenter>([NSDistributedNotificationCenter defaultCenter],
                                                          CenterKind::distributed, std::move(mainThread));
}

std::shared_ptr<NotificationCenter> makeWorkspaceNotificationCenter(std::shared_ptr<const MainThread> mainThread) {
    return std::make_shared<FoundationNotificationCenter>(NSWorkspace.sharedWorkspace.notificationCenter,
                                                          CenterKind::workspace, std::move(mainThread));
}

}  // namespace orvik::mac
