// Readers of the two kinds of localisation table a bundle's `.lproj`
// folders hold, from the file's bytes:
//
// - a strings table (`Localizable.strings`, `InfoPlist.strings`): entries
//   `"key" = "value";` between `/* */` and `//` comments. Keys and values
//   are quoted strings with the escapes \" \\ \n \t \r and \U followed by
//   four hex digits (a UTF-16 unit: a character beyond the Basic
//   Multilingual Plane is a surrogate pair, \UD83C\UDFB5), or, as in
//   Foundation's old-style property lists, unquoted runs of letters, digits
//   and _ $ + / : . -; an entry without "= value" maps the key to itself.
//   The file is UTF-8 (a byte-order mark is allowed) or UTF-16, little- or
//   big-endian, after its byte-order mark.
// - a strings dictionary (`Localizable.stringsdict`): an XML property list
//   whose root dictionary maps keys to entries with a format
//   (NSStringLocalizedFormatKey) whose plural variables ("%#@keys@") each
//   have a dictionary of NSStringFormatSpecTypeKey = NSStringPluralRuleType,
//   NSStringFormatValueTypeKey (the number's conversion, "lld") and the
//   texts of the plural categories zero, one, two, few, many and other
//   (other required). Only that subset is read; anything else is an error.
//
// A malformed table is an error value naming the line and column (counted
// in characters from 1) and what was expected there; the readers never
// throw for any input. Pure functions; safe on any thread.
#pragma once

#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "OrvikKitCore/PluralRules.h"

namespace orvik {

struct TableError {
    int line = 0;
    int column = 0;
    std::string problem;  // what was expected there

    // "line 3, column 12: expected ';' after the value"
    std::string description() const;

    friend bool operator==(const TableError&, const TableError&) = default;
};

// The file's text as UTF-8: the byte-order mark read and removed, UTF-16
// converted. An error for bytes that are not text in those encodings, or
// that hold a NUL character (UTF-16 without its byte-order mark).
struct DecodedText {
    std::string text;
    std::optional<TableError> error;
};
DecodedText decodeTableText(std::string_view bytes);

struct StringsEntry {
    std::string key;
    std::string value;
    int line = 0;  // where the key starts
};

struct StringsTable {
    std::vector<StringsEntry> entries;  // in the file's order, repeated keys included
    std::optional<TableError> error;    // the first thing that is not an entry or a comment
};

StringsTable parseStringsTable(std::string_view bytes);

// One plural variable of a strings dictionary entry.
struct PluralVariable {
    std::string valueType;  // NSStringFormatValueTypeKey: the number's conversion ("lld")
    std::map<PluralCategory, std::string> forms;
    int line = 0;
};

struct StringsDictionaryEntry {
    std::string key;
    std::string format;  // NSStringLocalizedFormatKey
    std::map<std::string, PluralVariable> variables;
    int line = 0;
};

struct StringsDictionary {
    std::vector<StringsDictionaryEntry> entries;  // in the file's order
    std::optional<TableError> error;
};

StringsDictionary parseStringsDictionary(std::string_view bytes);

}  // namespace orvik
