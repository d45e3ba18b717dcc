// The lookup of a LocalizedText in the main bundle's strings tables.
#import <Foundation/Foundation.h>

#include <string>

#import "OrvikKitMac/Strings.h"
#include "OrvikKitMac/Services.h"

namespace orvik::mac {

std::string localizedString(const LocalizedText& text) {
    NSString* key = platformString(text.key);
    if (key == nil) return text.untranslated();
    NSString* table = text.table ? platformString(*text.table) : nil;
    // Without a translation the bundle answers the key itself.
    NSString* format = [NSBundle.mainBundle localizedStringForKey:key value:nil table:table];
    const std::optional<std::string> translated = portableString(format);
    return translated ? text.filledIn(*translated) : text.untranslated();
}

}  // namespace orvik::mac
