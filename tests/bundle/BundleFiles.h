// Readers for the files the bundle tests check, written for exactly what
// the project's own files hold:
//
// - the localisation keys the code shows: every call of `kitText(…)` or
//   `appText(…)` in C++ and Objective-C++ source, with its first argument's
//   string literals decoded (adjacent literals joined, as the compiler joins
//   them; each branch of a conditional is a key of its own);
// - flat XML property lists (the Info.plist and the entitlements): one
//   dictionary of strings, Booleans and arrays of strings.
//
// Strings tables and strings dictionaries are read by the kit's own readers
// (OrvikKitCore/StringsTable.h), the ones the previews read them with.
//
// Each reader reports what it cannot read instead of guessing.
#pragma once

#include <filesystem>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace bundlefiles {

// The strings table a text belongs to: the app's main table
// (Localizable.strings) or the kit's table "OrvikKit".
enum class Table { app, kit };

const char* tableName(Table table);

// A localisation key written as literal text at a call.
struct SourceText {
    Table table;
    std::string key;
    std::string location;  // "file:line"
};

// A call whose key is computed: its first argument as written (white space
// collapsed), which a test then has to cover by running the code.
struct ComputedText {
    Table table;
    std::string argument;
    std::string location;
};

struct SourceScan {
    std::vector<SourceText> texts;
    std::vector<ComputedText> computed;
    std::vector<std::string> problems;  // literals that could not be decoded
};

// The calls of kitText and appText in one source file's text; comments,
// other string literals and character literals are skipped.
SourceScan scanSource(std::string_view source, const std::string& fileName);

struct PlistValue {
    enum class Kind { string, boolean, stringArray };
    Kind kind = Kind::string;
    std::string string;
    bool boolean = false;
    std::vector<std::string> strings;  // an <array> of <string>s
};

struct PlistParse {
    std::map<std::string, PlistValue> values;
    std::optional<std::string> error;
};

// A property list whose root is one dictionary of strings, Booleans and
// arrays of strings (CFBundleLocalizations).
PlistParse parseFlatPlist(std::string_view xml);

// The whole file, or nothing when it cannot be read.
std::optional<std::string> readFile(const std::filesystem::path& path);

}  // namespace bundlefiles
