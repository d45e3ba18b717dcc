#include "OrvikKitCore/FormatSpecifiers.h"

#include <string_view>

namespace orvik {

namespace {

bool isDigit(char c) { return c >= '0' && c <= '9'; }

constexpr std::string_view flags = "-+ #0'";
constexpr std::string_view conversions = "diouxXeEfFgGaAcCsSp@";

}  // namespace

FormatParse parseFormat(std::string_view format) {
    FormatParse result;
    int nextArgument = 1;
    std::size_t index = 0;
    while (index < format.size()) {
        if (format[index] != '%') {
            ++index;
            continue;
        }
        const std::size_t start = index;
        const auto fail = [&](const std::string& why) {
            result.error = "byte " + std::to_string(start) + ": " + why;
            return result;
        };
        ++index;
        if (index < format.size() && format[index] == '%') {
            ++index;
            continue;
        }
        FormatSpecifier specifier;
        specifier.offset = start;
        // An argument number: digits followed by "$".
        std::size_t digitsEnd = index;
        while (digitsEnd < format.size() && isDigit(format[digitsEnd])) ++digitsEnd;
        if (digitsEnd > index && digitsEnd < format.size() && format[digitsEnd] == '$') {
            const std::string_view digits = format.substr(index, digitsEnd - index);
            if (digits.size() > 3 || digits[0] == '0') return fail("the argument number " + std::string(digits) + " is out of range");
            specifier.position = std::stoi(std::string(digits));
            index = digitsEnd + 1;
        }
        if (format.substr(index).starts_with("#@")) {
            const std::size_t nameStart = index + 2;
            const std::size_t nameEnd = format.find('@', nameStart);
            if (nameEnd == std::string_view::npos || nameEnd == nameStart) {
                return fail("a variable \"%#@name@\" needs a name and a closing '@'");
            }
            specifier.variable = std::string(format.substr(nameStart, nameEnd - nameStart));
            index = nameEnd + 1;
        } else {
            while (index < format.size() && flags.find(format[index]) != std::string_view::npos) ++index;
            if (index < format.size() && format[index] == '*') return fail("a width taken from an argument ('*') is not supported");
            while (index < format.size() && isDigit(format[index])) ++index;
            if (index < format.size() && format[index] == '.') {
                ++index;
                if (index < format.size() && format[index] == '*') return fail("a precision taken from an argument ('*') is not supported");
                while (index < format.size() && isDigit(format[index])) ++index;
            }
            std::string length;
            for (std::string_view modifier : {"hh", "ll", "h", "l", "q", "L", "z", "t", "j"}) {
                if (format.substr(index).starts_with(modifier)) {
                    length = modifier == "q" ? "ll" : std::string(modifier);
                    index += modifier.size();
                    break;
                }
            }
            if (index >= format.size()) return fail("the specifier '" + std::string(format.substr(start)) + "' has no conversion");
            const char conversion = format[index];
            if (conversions.find(conversion) == std::string_view::npos) {
                // Appended piece by piece: GCC 12's -O3 takes "'" + std::string(…)
                // for an overlapping copy (a false -Wrestrict).
                std::string message = "'";
                message += format.substr(start, index + 1 - start);
                message += "' is no conversion";
                return fail(message);
            }
            ++index;
            specifier.type = length + (conversion == 'i' ? 'd' : conversion);
        }
        specifier.text = std::string(format.substr(start, index - start));
        specifier.argument = specifier.position ? *specifier.position : nextArgument++;
        result.specifiers.push_back(std::move(specifier));
    }
    return result;
}

std::optional<std::map<int, std::string>> argumentTypes(const std::vector<FormatSpecifier>& specifiers,
                                                       const std::map<std::string, std::string>& variableTypes,
                                                       std::string* problem) {
    std::map<int, std::string> types;
    for (const FormatSpecifier& specifier : specifiers) {
        std::string type = specifier.type;
        if (specifier.variable) {
            const auto found = variableTypes.find(*specifier.variable);
            type = found != variableTypes.end() ? found->second : std::string();
        }
        const auto [entry, inserted] = types.emplace(specifier.argument, type);
        if (!inserted && entry->second != type) {
            if (problem) {
                *problem = "argument " + std::to_string(specifier.argument) + " is read as %" + entry->second +
                           " and as %" + type;
            }
            return std::nullopt;
        }
    }
    return types;
}

std::string describeArguments(const std::map<int, std::string>& types) {
    if (types.empty()) return "no arguments";
    std::string text;
    int expected = 1;
    for (const auto& [argument, type] : types) {
        if (!text.empty()) text += ", ";
        if (argument != expected) text += "argument " + std::to_string(argument) + " ";
        text += "%" + type;
        expected = argument + 1;
    }
    return text;
}

}  // namespace orvik
