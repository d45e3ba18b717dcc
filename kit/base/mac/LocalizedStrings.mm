// The lookup of a LocalizedText in the main bundle's strings tables and
// strings dictionaries.
#import <Foundation/Foundation.h>

#include <cstddef>
#include <string>
#include <vector>

#import "OrvikKitMac/Strings.h"
#include "OrvikKitMac/BaseAdapters.h"

namespace orvik::mac {

namespace {

using FormatArgument = LocalizedText::FormatArgument;

// One message per argument count (a message's variadic arguments take no
// pack expansion).
template <class First>
NSString* send(NSString* format, First first) {
    return [NSString localizedStringWithFormat:format, first];
}

template <class First, class Second>
NSString* send(NSString* format, First first, Second second) {
    return [NSString localizedStringWithFormat:format, first, second];
}
static_assert(LocalizedText::maximumFormatArguments == 2, "one send per argument count");

// `format` formatted by Foundation with `arguments`, each passed as the type
// its placeholder reads (the values gathered so far are `values`); nil when
// an object argument has no NSString form.
template <class... Values>
NSString* formatted(NSString* format, const std::vector<FormatArgument>& arguments, Values... values) {
    constexpr std::size_t gathered = sizeof...(Values);
    if constexpr (gathered > 0) {
        if (arguments.size() == gathered) return send(format, values...);
    }
    if constexpr (gathered < LocalizedText::maximumFormatArguments) {
        if (arguments.size() <= gathered) return nil;
        const FormatArgument& next = arguments[gathered];
        switch (next.kind) {
        case FormatArgument::Kind::int32:
            return formatted(format, arguments, values..., static_cast<int>(next.number));
        case FormatArgument::Kind::longInteger:
            return formatted(format, arguments, values..., static_cast<long>(next.number));
        case FormatArgument::Kind::longLong:
            return formatted(format, arguments, values..., static_cast<long long>(next.number));
        case FormatArgument::Kind::object: {
            NSString* object = platformString(next.text);
            if (object == nil) return nil;
            return formatted(format, arguments, values..., object);
        }
        }
    }
    return nil;
}

}  // namespace

std::string localizedString(const LocalizedText& text) {
    NSString* key = platformString(text.key);
    if (key == nil) return text.untranslated();
    NSString* table = text.table ? platformString(*text.table) : nil;
    // Without a translation the bundle answers the key itself. For a key of
    // a strings dictionary it answers a format that carries the plural
    // forms, which only Foundation's formatting applies.
    NSString* format = [NSBundle.mainBundle localizedStringForKey:key value:nil table:table];
    if (text.arguments.empty()) {
        const std::optional<std::string> translated = portableString(format);
        return translated ? text.filledIn(*translated) : text.untranslated();
    }
    // The arguments go to Foundation as the types the key's placeholders
    // name; the tests of the tables keep every translation's placeholders
    // those of its key.
    if (const std::optional<std::vector<FormatArgument>> arguments = text.formatArguments()) {
        if (const std::optional<std::string> result = portableString(formatted(format, *arguments))) return *result;
    }
    const std::optional<std::string> translated = portableString(format);
    return translated ? text.filledIn(*translated) : text.untranslated();
}

}  // namespace orvik::mac
