// A user-visible text as the views look it up: a localisation key, the
// strings table it belongs to, and the values a format key takes. Where the
// table has no translation the key is shown as it is, with the values put in.
//
// The kit's own texts live in its table "OrvikKit"; the app's in its main
// table. Pure value; safe on any thread.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace orvik {

struct LocalizedText {
    static constexpr std::string_view kitTable = "OrvikKit";

    // The lookup key; a format with one placeholder per argument when
    // `arguments` is not empty ("Version %@", "Keys sent: %lld").
    std::string key;
    // The strings table; nothing for the app's main table.
    std::optional<std::string> table;
    // The values for the format's placeholders, in order, already formatted
    // (an integer as its decimal digits).
    std::vector<std::string> arguments;

    // The text shown where no translation exists: the key with each
    // placeholder ("%@", "%lld", …; see FormatSpecifiers.h) replaced by its
    // argument: the next one, or the numbered one ("%2$@" takes the second).
    // "%%" stands for "%". Placeholders without an argument, plural
    // variables ("%#@keys@") and a malformed placeholder with what follows
    // it stay as they are.
    std::string untranslated() const;

    // The text shown for `format`, the key's translation from its table:
    // the format with each placeholder replaced by its argument, by the
    // same rule as `untranslated`.
    std::string filledIn(std::string_view format) const;

    // An argument as Foundation's formatting reads it from a variadic list.
    struct FormatArgument {
        enum class Kind { int32, longInteger, longLong, object };
        Kind kind = Kind::object;
        std::int64_t number = 0;  // for the integer kinds
        std::string text;         // for an object: the argument itself

        friend bool operator==(const FormatArgument&, const FormatArgument&) = default;
    };
    static constexpr std::size_t maximumFormatArguments = 2;

    // The arguments in the order of their numbers, as the key's
    // placeholders read them: "%d" an int, "%ld" a long, "%lld" a long long
    // (each from the argument's decimal digits, within the type's range),
    // "%@" an object (the argument's text). Nothing when a placeholder is
    // of another type, when the placeholders do not take exactly the
    // arguments given, when an integer argument is not one, or when there
    // are more than `maximumFormatArguments`: the Mac adapter then fills the
    // translation in with `filledIn` instead of formatting it.
    std::optional<std::vector<FormatArgument>> formatArguments() const;

    friend bool operator==(const LocalizedText&, const LocalizedText&) = default;
};

// A text of the kit's table.
inline LocalizedText kitText(std::string key, std::vector<std::string> arguments = {}) {
    return LocalizedText{
        .key = std::move(key), .table = std::string(LocalizedText::kitTable), .arguments = std::move(arguments)};
}

// A text of the app's main table.
inline LocalizedText appText(std::string key, std::vector<std::string> arguments = {}) {
    return LocalizedText{.key = std::move(key), .table = std::nullopt, .arguments = std::move(arguments)};
}

}  // namespace orvik
