// A user-visible text as the views look it up: a localisation key, the
// strings table it belongs to, and the values a format key takes. Where the
// table has no translation the key is shown as it is, with the values put in.
//
// The kit's own texts live in its table "OrvikKit"; the app's in its main
// table. Pure value; safe on any thread.
#pragma once

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
    // placeholder ("%@", "%d", "%ld", "%lld") replaced by the next argument ("%%" stands for "%"). Placeholders left
    // without an argument stay as they are.
    std::string untranslated() const;

    // The text shown for `format`, the key's translation from its table:
    // the format with each placeholder replaced by the next argument, by the
    // same rule as `untranslated`.
    std::string filledIn(std::string_view format) const;

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
