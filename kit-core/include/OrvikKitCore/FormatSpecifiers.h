// The conversion specifiers of a Foundation format string ("Keys sent:
// %lld", "%1$@ of %2$@", "%#@keys@"), as the strings tables' checks and the
// localiser read them.
//
// A specifier is "%", an optional argument number and "$", flags, width,
// precision, a length modifier and a conversion character; "%%" is a
// literal percent sign and no specifier; "%#@name@" is a plural variable of
// a strings dictionary, which takes an argument like any other specifier.
// Arguments are numbered from 1: each specifier without a number takes the
// next one, a numbered one takes its own.
//
// Pure functions; safe on any thread.
#pragma once

#include <cstddef>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace orvik {

struct FormatSpecifier {
    std::size_t offset = 0;            // of the "%" in the format, in bytes
    std::string text;                  // the specifier as written ("%lld", "%2$@", "%#@keys@")
    std::optional<int> position;       // the argument number when written ("%2$@" → 2)
    std::string type;                  // the length modifier and conversion ("lld", "@"), "i" read as "d" and "q" as "ll"; empty for a variable
    std::optional<std::string> variable;  // the name of a plural variable ("%#@keys@" → "keys")
    int argument = 0;                  // the argument it takes, from 1

    friend bool operator==(const FormatSpecifier&, const FormatSpecifier&) = default;
};

struct FormatParse {
    std::vector<FormatSpecifier> specifiers;
    // The first "%" that starts no specifier, with why ("byte 7: '%q' is no
    // conversion"); the specifiers before it are listed.
    std::optional<std::string> error;
};

FormatParse parseFormat(std::string_view format);

// The type each argument number is read as, for formats whose specifiers
// parse: argument number → type. A plural variable's type is
// `variableTypes`' entry for its name ("lld"), or empty when not given.
// Nothing, with `problem` set, when two specifiers read one argument as
// different types.
std::optional<std::map<int, std::string>> argumentTypes(
    const std::vector<FormatSpecifier>& specifiers, const std::map<std::string, std::string>& variableTypes = {},
    std::string* problem = nullptr);

// "%lld, %@" style listing of the types by argument, for messages.
std::string describeArguments(const std::map<int, std::string>& types);

}  // namespace orvik
