#include "OrvikKit/LocalizedText.h"

#include <charconv>
#include <limits>
#include <map>
#include <system_error>

#include "OrvikKitCore/FormatSpecifiers.h"

namespace orvik {

std::string LocalizedText::untranslated() const { return filledIn(key); }

std::string LocalizedText::filledIn(std::string_view format) const {
    const FormatParse parse = parseFormat(format);
    // Specifiers after a malformed one are not read: the rest stays as written.
    const std::size_t readUpTo =
        parse.error ? (parse.specifiers.empty() ? 0 : parse.specifiers.back().offset + parse.specifiers.back().text.size())
                    : format.size();
    std::string text;
    text.reserve(format.size());
    std::size_t index = 0;
    std::size_t nextSpecifier = 0;
    while (index < format.size()) {
        if (nextSpecifier < parse.specifiers.size() && parse.specifiers[nextSpecifier].offset == index) {
            const FormatSpecifier& specifier = parse.specifiers[nextSpecifier++];
            const auto argument = static_cast<std::size_t>(specifier.argument);
            if (!specifier.variable && argument >= 1 && argument <= arguments.size()) {
                text += arguments[argument - 1];
            } else {
                text += specifier.text;
            }
            index += specifier.text.size();
            continue;
        }
        if (index < readUpTo && format[index] == '%' && index + 1 < format.size() && format[index + 1] == '%') {
            text += '%';
            index += 2;
            continue;
        }
        text += format[index++];
    }
    return text;
}

std::optional<std::vector<LocalizedText::FormatArgument>> LocalizedText::formatArguments() const {
    const FormatParse parse = parseFormat(key);
    if (parse.error) return std::nullopt;
    const std::optional<std::map<int, std::string>> types = argumentTypes(parse.specifiers);
    if (!types || types->size() != arguments.size() || arguments.size() > maximumFormatArguments) return std::nullopt;
    std::vector<FormatArgument> read;
    int expected = 1;
    for (const auto& [argument, type] : *types) {
        if (argument != expected++) return std::nullopt;
        const std::string& value = arguments[static_cast<std::size_t>(argument - 1)];
        if (type == "@") {
            read.push_back(FormatArgument{.kind = FormatArgument::Kind::object, .number = 0, .text = value});
            continue;
        }
        FormatArgument::Kind kind{};
        std::int64_t lowest = std::numeric_limits<std::int64_t>::min();
        std::int64_t highest = std::numeric_limits<std::int64_t>::max();
        if (type == "d") {
            kind = FormatArgument::Kind::int32;
            lowest = std::numeric_limits<std::int32_t>::min();
            highest = std::numeric_limits<std::int32_t>::max();
        } else if (type == "ld") {
            kind = FormatArgument::Kind::longInteger;
        } else if (type == "lld") {
            kind = FormatArgument::Kind::longLong;
        } else {
            return std::nullopt;
        }
        std::int64_t number = 0;
        const char* end = value.data() + value.size();
        const auto [stop, error] = std::from_chars(value.data(), end, number);
        if (value.empty() || error != std::errc() || stop != end || number < lowest || number > highest) {
            return std::nullopt;
        }
        read.push_back(FormatArgument{.kind = kind, .number = number, .text = {}});
    }
    return read;
}

}  // namespace orvik
