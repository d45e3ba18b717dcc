// Reads arbitrary bytes as a strings table (`.strings`): any byte values,
// byte-order marks, UTF-16 of odd length, unpaired surrogates, unclosed
// strings and comments. The whole input is the file.
//
// Checked: reading never fails other than by an error value; an error names
// a line and column from 1 and says what was expected; a table that reads
// holds UTF-8 keys and values, with lines that never go back; written out
// again (quoted, escaped) it reads back to the same entries; and every
// value's placeholders read without trouble, filled in or not.

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

#include "FuzzInput.h"
#include "OrvikKit/LocalizedText.h"
#include "OrvikKitCore/FormatSpecifiers.h"
#include "OrvikKitCore/StringsTable.h"

namespace {

using tolvane::fuzz::require;

// A quoted string with what the reader unescapes escaped again.
std::string quoted(std::string_view text) {
    std::string out = "\"";
    for (char c : text) {
        switch (c) {
        case '"': out += "\\\""; break;
        case '\\': out += "\\\\"; break;
        case '\n': out += "\\n"; break;
        default: out += c;
        }
    }
    return out + "\"";
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string_view bytes(reinterpret_cast<const char*>(data), size);
    const orvik::StringsTable table = orvik::parseStringsTable(bytes);

    if (table.error) {
        require(table.error->line >= 1 && table.error->column >= 1, "an error names a line and column from 1");
        require(table.error->problem.starts_with("expected "), "an error says what was expected");
        require(table.error->description().starts_with("line "), "an error describes itself by its place");
        return 0;
    }

    std::string written;
    int line = 1;
    for (const orvik::StringsEntry& entry : table.entries) {
        require(entry.line >= line, "entries come in the file's order");
        line = entry.line;
        require(!orvik::decodeTableText(entry.key).error && !orvik::decodeTableText(entry.value).error,
                "keys and values are text");
        written += quoted(entry.key) + " = " + quoted(entry.value) + ";\n";

        const orvik::FormatParse format = orvik::parseFormat(entry.value);
        for (const orvik::FormatSpecifier& specifier : format.specifiers) {
            require(specifier.argument >= 1, "every placeholder takes an argument from 1");
            require(entry.value.compare(specifier.offset, specifier.text.size(), specifier.text) == 0,
                    "a placeholder is where it says");
        }
        const orvik::LocalizedText text = orvik::appText(entry.key, {"1", "two"});
        (void)text.filledIn(entry.value);
        (void)text.untranslated();
        (void)text.formatArguments();
    }

    const orvik::StringsTable reread = orvik::parseStringsTable(written);
    require(!reread.error, "a table written out again reads");
    require(reread.entries.size() == table.entries.size(), "a table written out again keeps its entries");
    for (std::size_t index = 0; index < table.entries.size(); ++index) {
        require(reread.entries[index].key == table.entries[index].key &&
                    reread.entries[index].value == table.entries[index].value,
                "a table written out again reads back the same keys and values");
    }
    return 0;
}
