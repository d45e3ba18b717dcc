// PreferenceStore over NSUserDefaults, bridging each value by the portable
// rules (OrvikKitCore/PropertyListBridging.h).
#import <Foundation/Foundation.h>

#include <memory>
#include <string>
#include <utility>

#import "OrvikKitMac/PropertyLists.h"
#import "OrvikKitMac/Strings.h"
#include "OrvikKitMac/BaseAdapters.h"

namespace orvik::mac {

namespace {

class UserDefaultsStore final : public PreferenceStore {
public:
    explicit UserDefaultsStore(NSUserDefaults* defaults) : defaults_(defaults) {}

    std::optional<PropertyListValue> object(std::string_view forKey) const override {
        NSString* key = platformString(forKey);
        if (key == nil) return std::nullopt;
        return propertyListValue([defaults_ objectForKey:key]);
    }

    void set(std::optional<PropertyListValue> value, std::string_view forKey) override {
        NSString* key = platformString(forKey);
        if (key == nil) return;
        if (!value) {
            [defaults_ removeObjectForKey:key];
            return;
        }
        // A value without a platform form (a string that is not UTF-8) is
        // not written.
        id object = platformObject(*value);
        if (object == nil) return;
        [defaults_ setObject:object forKey:key];
    }

private:
    NSUserDefaults* defaults_;
};

}  // namespace

std::shared_ptr<PreferenceStore> makeStandardUserDefaults() {
    return std::make_shared<UserDefaultsStore>(NSUserDefaults.standardUserDefaults);
}

std::shared_ptr<PreferenceStore> makeUserDefaults(const std::string& suiteName) {
    NSUserDefaults* defaults = [[NSUserDefaults alloc] initWithSuiteName:platformString(suiteName)];
    if (defaults == nil) return nullptr;
    return std::make_shared<UserDefaultsStore>(defaults);
}

}  // namespace orvik::mac
