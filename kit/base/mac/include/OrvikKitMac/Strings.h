// Strings across the boundary between the portable code (UTF-8 bytes in
// std::string) and Foundation (NSString). Objective-C++: for .mm files only.
//
// Every string that enters from the platform is turned into Unicode NFC
// (precomposedStringWithCanonicalMapping) before its UTF-8 bytes reach
// portable code, so that comparing bytes there equals comparing strings
// canonically (an accented title stays the same title whichever way the
// platform composed it).
#pragma once

#import <Foundation/Foundation.h>

#include <optional>
#include <string>
#include <string_view>

namespace orvik::mac {

// The NSString of UTF-8 bytes; nil when they are not valid UTF-8.
NSString* platformString(std::string_view utf8);

// The NFC form of a platform string as UTF-8 bytes; nothing for nil or a
// string without a UTF-8 form.
std::optional<std::string> portableString(NSString* string);

}  // namespace orvik::mac
