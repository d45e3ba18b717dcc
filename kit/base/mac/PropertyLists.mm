#import "OrvikKitMac/PropertyLists.h"

#include <cstdint>
#include <string>
#include <utility>
#include <vector>

#import "OrvikKitMac/Strings.h"
#include "OrvikKitCore/PropertyListBridging.h"

namespace orvik::mac {

namespace {

// Answers the bridging's questions about Foundation objects.
struct FoundationReader {
    using Object = id;

    // Every kind is told by isKindOfClass:, which any object answers.
    // CoreFoundation is asked only about numbers (NSNumber is toll-free
    // bridged with CFNumber, and the Boolean numbers with CFBoolean), so
    // CFGetTypeID and the CFNumber functions never see an object of another
    // kind; the bridging asks nothing about an object's number before it
    // knows it is one.
    bool isNull(id object) const { return object == nil; }
    bool isBoolean(id object) const {
        return [object isKindOfClass:[NSNumber class]] &&
               CFGetTypeID((__bridge CFTypeRef)object) == CFBooleanGetTypeID();
    }
    bool isNumber(id object) const { return [object isKindOfClass:[NSNumber class]]; }
    bool isString(id object) const { return [object isKindOfClass:[NSString class]]; }
    bool isData(id object) const { return [object isKindOfClass:[NSData class]]; }
    bool isDictionary(id object) const { return [object isKindOfClass:[NSDictionary class]]; }
    bool booleanValue(id object) const { return static_cast<NSNumber*>(object).boolValue; }
    bool isFloatType(id object) const { return CFNumberIsFloatType((__bridge CFNumberRef)object); }
    std::optional<std::int64_t> exactInteger(id object) const {
        std::int64_t value = 0;
        if (!CFNumberGetValue((__bridge CFNumberRef)object, kCFNumberSInt64Type, &value)) return std::nullopt;
        return value;
    }
    double doubleValue(id object) const { return static_cast<NSNumber*>(object).doubleValue; }
    std::optional<std::string> stringValue(id object) const { return portableString(static_cast<NSString*>(object)); }
    PropertyListValue::Data dataValue(id object) const {
        NSData* data = static_cast<NSData*>(object);
        const auto* bytes = static_cast<const std::uint8_t*>(data.bytes);
        return PropertyListValue::Data(bytes, bytes + data.length);
    }
    std::vector<std::pair<id, id>> entries(id object) const {
        __block std::vector<std::pair<id, id>> entries;
        [static_cast<NSDictionary*>(object) enumerateKeysAndObjectsUsingBlock:^(id key, id value, BOOL*) {
            entries.emplace_back(key, value);
        }];
        return entries;
    }
};

// Makes the Foundation objects the bridging asks for.
struct FoundationWriter {
    using Object = id;

    id makeBoolean(bool value) { return [NSNumber numberWithBool:value ? YES : NO]; }
    id makeInteger(std::int64_t value) { return [NSNumber numberWithLongLong:value]; }
    id makeReal(double value) { return [NSNumber numberWithDouble:value]; }
    std::optional<id> makeString(const std::string& value) {
        NSString* string = platformString(value);
        if (string == nil) return std::nullopt;
        return string;
    }
    id makeData(const PropertyListValue::Data& value) { return [NSData dataWithBytes:value.data() length:value.size()]; }
    id makeDictionary(std::vector<std::pair<id, id>> entries) {
        NSMutableDictionary* dictionary = [NSMutableDictionary dictionaryWithCapacity:entries.size()];
        for (const auto& [key, value] : entries) [dictionary setObject:value forKey:key];
        return dictionary;
    }
};

}  // namespace

std::optional<PropertyListValue> propertyListValue(id object) {
    return readPropertyList(FoundationReader{}, object);
}

PropertyListValue::Dictionary propertyListDictionary(NSDictionary* dictionary) {
    if (dictionary == nil) return {};
    std::optional<PropertyListValue> value = propertyListValue(dictionary);
    if (!value || value->dictionary() == nullptr) return {};
    return *value->dictionary();
}

id platformObject(const PropertyListValue& value) {
    FoundationWriter writer;
    std::optional<id> object = makePlatformObject(writer, value);
    return object ? *object : nil;
}

}  // namespace orvik::mac
