// How a platform object graph (Foundation's on macOS) becomes a
// property-list value and back. The platform adapter only answers questions
// about one object at a time; every rule of the bridging lives here, so the
// user-defaults store and the notification centres translate alike and the
// rules are tested without the platform.
//
// Reading (`readPropertyList`), for an object of the graph:
//   - a number is asked whether it is a boolean (platform booleans are
//     numbers too), and a boolean gives a boolean; no object that is not a
//     number is ever asked that question, so the platform may answer it with
//     calls that are only valid for its numbers;
//   - a floating-point number gives a double; any other number gives its
//     value as a signed 64-bit integer when that is exact, else its double
//     value (an unsigned value above 2^63-1);
//   - a string gives a string; data gives byte data;
//   - a dictionary gives a dictionary; entries whose key is not a string or
//     whose value has no property-list form are left out;
//   - anything else (dates, arrays, other objects) has no property-list form.
//
// Writing (`makePlatformObject`): each variant becomes the platform object of
// its kind; a string the platform cannot hold (not valid UTF-8) has no
// platform form, and neither has a dictionary entry holding one, which is
// left out.
//
// Pure functions over the given reader or writer; safe on any thread the
// reader or writer is.
#pragma once

#include <concepts>
#include <cstdint>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "OrvikKitCore/PropertyListValue.h"

namespace orvik {

// What the reading side asks of a platform object graph. `isBoolean`,
// `booleanValue`, `isFloatType`, `exactInteger` and `doubleValue` are asked
// only of objects `isNumber` answered true for; `stringValue`, `dataValue`
// and `entries` only of strings, data and dictionaries.
template <class Reader>
concept PropertyListReader = requires(const Reader& reader, const typename Reader::Object& object) {
    { reader.isNull(object) } -> std::convertible_to<bool>;
    { reader.isBoolean(object) } -> std::convertible_to<bool>;
    { reader.isNumber(object) } -> std::convertible_to<bool>;
    { reader.isString(object) } -> std::convertible_to<bool>;
    { reader.isData(object) } -> std::convertible_to<bool>;
    { reader.isDictionary(object) } -> std::convertible_to<bool>;
    { reader.booleanValue(object) } -> std::convertible_to<bool>;
    { reader.isFloatType(object) } -> std::convertible_to<bool>;
    // The value as a signed 64-bit integer, when that conversion is exact.
    { reader.exactInteger(object) } -> std::same_as<std::optional<std::int64_t>>;
    { reader.doubleValue(object) } -> std::convertible_to<double>;
    // The string's UTF-8 bytes (nothing when it has none).
    { reader.stringValue(object) } -> std::same_as<std::optional<std::string>>;
    { reader.dataValue(object) } -> std::same_as<PropertyListValue::Data>;
    // Every entry of a dictionary, as (key, value) objects.
    { reader.entries(object) } -> std::same_as<std::vector<std::pair<typename Reader::Object, typename Reader::Object>>>;
};

template <PropertyListReader Reader>
std::optional<PropertyListValue> readPropertyList(const Reader& reader, const typename Reader::Object& object) {
    if (reader.isNull(object)) return std::nullopt;
    if (reader.isNumber(object)) {
        if (reader.isBoolean(object)) return PropertyListValue(static_cast<bool>(reader.booleanValue(object)));
        if (reader.isFloatType(object)) return PropertyListValue(static_cast<double>(reader.doubleValue(object)));
        if (const std::optional<std::int64_t> integer = reader.exactInteger(object)) return PropertyListValue(*integer);
        return PropertyListValue(static_cast<double>(reader.doubleValue(object)));
    }
    if (reader.isString(object)) {
        std::optional<std::string> string = reader.stringValue(object);
        if (!string) return std::nullopt;
        return PropertyListValue(std::move(*string));
    }
    if (reader.isData(object)) return PropertyListValue(reader.dataValue(object));
    if (reader.isDictionary(object)) {
        PropertyListValue::Dictionary dictionary;
        for (const auto& [key, value] : reader.entries(object)) {
            if (reader.isNull(key) || !reader.isString(key)) continue;
            std::optional<std::string> name = reader.stringValue(key);
            std::optional<PropertyListValue> element = readPropertyList(reader, value);
            if (name && element) dictionary.insert_or_assign(std::move(*name), std::move(*element));
        }
        return PropertyListValue(std::move(dictionary));
    }
    return std::nullopt;
}

// What the writing side asks of a platform object graph. `makeString`
// answers nothing when the platform cannot hold the bytes.
template <class Writer>
concept PropertyListWriter = requires(Writer& writer, const std::string& string, const PropertyListValue::Data& data,
                                      std::vector<std::pair<typename Writer::Object, typename Writer::Object>> entries) {
    { writer.makeBoolean(true) } -> std::same_as<typename Writer::Object>;
    { writer.makeInteger(std::int64_t{0}) } -> std::same_as<typename Writer::Object>;
    { writer.makeReal(0.0) } -> std::same_as<typename Writer::Object>;
    { writer.makeString(string) } -> std::same_as<std::optional<typename Writer::Object>>;
    { writer.makeData(data) } -> std::same_as<typename Writer::Object>;
    { writer.makeDictionary(std::move(entries)) } -> std::same_as<typename Writer::Object>;
};

template <PropertyListWriter Writer>
std::optional<typename Writer::Object> makePlatformObject(Writer& writer, const PropertyListValue& value) {
    using Object = typename Writer::Object;
    switch (value.kind()) {
    case PropertyListValue::Kind::boolean: return writer.makeBoolean(*value.boolean());
    case PropertyListValue::Kind::integer: return writer.makeInteger(*value.integer());
    case PropertyListValue::Kind::real: return writer.makeReal(*value.real());
    case PropertyListValue::Kind::string: return writer.makeString(*value.string());
    case PropertyListValue::Kind::data: return writer.makeData(*value.data());
    case PropertyListValue::Kind::dictionary: {
        std::vector<std::pair<Object, Object>> entries;
        for (const auto& [key, element] : *value.dictionary()) {
            std::optional<Object> keyObject = writer.makeString(key);
            std::optional<Object> elementObject = makePlatformObject(writer, element);
            if (keyObject && elementObject) entries.emplace_back(std::move(*keyObject), std::move(*elementObject));
        }
        return writer.makeDictionary(std::move(entries));
    }
    }
    return std::nullopt;
}

}  // namespace orvik
