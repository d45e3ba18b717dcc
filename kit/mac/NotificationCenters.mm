// NotificationCenter over the distributed centre and the shared workspace's
// centre. Observers are block observers delivered on the main operation
// queue; each handler asserts that it runs on the main thread.
#import <AppKit/AppKit.h>

#include <map>
#include <memory>
#include <string>
#include <utility>

#import "OrvikKitMac/PropertyLists.h"
#import "OrvikKitMac/Strings.h"
#include "OrvikKit/FatalError.h"
#include "OrvikKitMac/Services.h"

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

class FoundationNotificationCenter final : public NotificationCenter {
public:
    FoundationNotificationCenter(NSNotificationCenter* center, bool isWorkspace,
                                 std::shared_ptr<const MainThread> mainThread)
        : center_(center), isWorkspace_(isWorkspace), mainThread_(std::move(mainThread)) {}

    ~FoundationNotificationCenter() override {
        for (const auto& entry : observers_) [center_ removeObserver:entry.second];
    }

    Token addObserver(std::string name, Handler handler) override {
        NSString* platformName = platformString(name);
        if (platformName == nil) fatalError("a notification name that is not UTF-8");
        const auto shared = std::make_shared<Handler>(std::move(handler));
        const std::shared_ptr<const MainThread> mainThread = mainThread_;
        const bool isWorkspace = isWorkspace_;
        id observer = [center_ addObserverForName:platformName
                                           object:nil
                                            queue:NSOperationQueue.mainQueue
                                       usingBlock:^(NSNotification* note) {
                                         assertOnMainThread(*mainThread);
                                         Notification notification{
                                             .name = portableString(note.name).value_or(std::string()),
                                             .userInfo = propertyListDictionary(note.userInfo)};
                                         if (isWorkspace) addRunningApplication(note, notification.userInfo);
                                         (*shared)(notification);
                                       }];
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
    bool isWorkspace_;
    std::shared_ptr<const MainThread> mainThread_;
    std::map<Token, id> observers_;
    Token nextToken_ = 1;
};

}  // namespace

std::shared_ptr<NotificationCenter> makeDistributedNotificationCenter(std::shared_ptr<const MainThread> mainThread) {
    return std::make_shared<FoundationNotificationCenter>([NSDistributedNotificationCenter defaultCenter], false,
                                                          std::move(mainThread));
}

std::shared_ptr<NotificationCenter> makeWorkspaceNotificationCenter(std::shared_ptr<const MainThread> mainThread) {
    return std::make_shared<FoundationNotificationCenter>(NSWorkspace.sharedWorkspace.notificationCenter, true,
                                                          std::move(mainThread));
}

}  // namespace orvik::mac
