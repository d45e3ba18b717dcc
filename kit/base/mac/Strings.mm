#import "OrvikKitMac/Strings.h"

namespace orvik::mac {

NSString* platformString(std::string_view utf8) {
    return [[NSString alloc] initWithBytes:utf8.data() length:utf8.size() encoding:NSUTF8StringEncoding];
}

std::optional<std::string> portableString(NSString* string) {
    if (string == nil) return std::nullopt;
    NSString* composed = string.precomposedStringWithCanonicalMapping;
    const char* bytes = composed.UTF8String;
    if (bytes == nullptr) return std::nullopt;
    return std::string(bytes, [composed lengthOfBytesUsingEncoding:NSUTF8StringEncoding]);
}

}  // namespace orvik::mac
