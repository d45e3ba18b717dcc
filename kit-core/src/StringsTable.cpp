#include "OrvikKitCore/StringsTable.h"

#include <cstddef>
#include <cstdint>
#include <set>
#include <utility>

#include "OrvikKitCore/FormatSpecifiers.h"
#include "OrvikKitCore/Utf8.h"

namespace orvik {

namespace {

// --- Text -----------------------------------------------------------------------

bool isHighSurrogate(std::uint32_t unit) { return unit >= 0xD800 && unit <= 0xDBFF; }
bool isLowSurrogate(std::uint32_t unit) { return unit >= 0xDC00 && unit <= 0xDFFF; }

// Line and column (from 1, in characters) of byte `offset` of UTF-8 text.
std::pair<int, int> lineAndColumn(std::string_view text, std::size_t offset) {
    int line = 1;
    int column = 1;
    for (std::size_t index = 0; index < offset && index < text.size(); ++index) {
        const auto byte = static_cast<unsigned char>(text[index]);
        if (byte == '\n') {
            ++line;
            column = 1;
        } else if ((byte & 0xC0) != 0x80) {
            ++column;
        }
    }
    return {line, column};
}

TableError errorAt(std::string_view text, std::size_t offset, std::string problem) {
    const auto [line, column] = lineAndColumn(text, offset);
    return TableError{line, column, std::move(problem)};
}

std::optional<TableError> checkUtf8(std::string_view text) {
    std::size_t index = 0;
    while (index < text.size()) {
        if (text[index] == '\0') {
            return errorAt(text, index, "expected a character, not NUL (a UTF-16 file needs its byte-order mark)");
        }
        const std::size_t length = utf8SequenceLength(text, index);
        if (length == 0) return errorAt(text, index, "expected UTF-8 text (or UTF-16 after a byte-order mark)");
        index += length;
    }
    return std::nullopt;
}

DecodedText decodeUtf16(std::string_view bytes, bool littleEndian) {
    DecodedText decoded;
    if (bytes.size() % 2 != 0) {
        decoded.error = TableError{1, 1, "expected UTF-16 text of an even number of bytes"};
        return decoded;
    }
    const auto unitAt = [&](std::size_t index) {
        const auto first = static_cast<unsigned char>(bytes[index]);
        const auto second = static_cast<unsigned char>(bytes[index + 1]);
        return littleEndian ? static_cast<std::uint32_t>(first | second << 8)
                            : static_cast<std::uint32_t>(first << 8 | second);
    };
    for (std::size_t index = 0; index < bytes.size(); index += 2) {
        std::uint32_t unit = unitAt(index);
        if (isHighSurrogate(unit) && index + 2 < bytes.size() && isLowSurrogate(unitAt(index + 2))) {
            unit = 0x10000 + ((unit - 0xD800) << 10) + (unitAt(index + 2) - 0xDC00);
            index += 2;
        } else if (isHighSurrogate(unit) || isLowSurrogate(unit)) {
            decoded.error = errorAt(decoded.text, decoded.text.size(), "expected UTF-16 text, not an unpaired surrogate");
            return decoded;
        } else if (unit == 0) {
            decoded.error = errorAt(decoded.text, decoded.text.size(), "expected a character, not NUL");
            return decoded;
        }
        appendUtf8(decoded.text, unit);
    }
    return decoded;
}

bool isSpace(char c) { return c == ' ' || c == '\t' || c == '\n' || c == '\r' || c == '\f' || c == '\v'; }

bool isUnquotedCharacter(char c) {
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9') || c == '_' || c == '$' ||
           c == '+' || c == '/' || c == ':' || c == '.' || c == '-';
}

std::optional<std::uint32_t> hexDigit(char c) {
    if (c >= '0' && c <= '9') return static_cast<std::uint32_t>(c - '0');
    if (c >= 'a' && c <= 'f') return static_cast<std::uint32_t>(c - 'a' + 10);
    if (c >= 'A' && c <= 'F') return static_cast<std::uint32_t>(c - 'A' + 10);
    return std::nullopt;
}

// --- Strings tables -----------------------------------------------------------------

class StringsReader {
public:
    explicit StringsReader(std::string_view text) : text_(text) {}

    StringsTable read() {
        StringsTable table;
        while (true) {
            if (!skipSpaceAndComments()) return fail(table);
            if (position_ >= text_.size()) return table;
            const std::size_t keyStart = position_;
            std::optional<std::string> key = readString("a key (a quoted string)");
            if (!key) return fail(table);
            if (!skipSpaceAndComments()) return fail(table);
            std::string value;
            if (consume('=')) {
                if (!skipSpaceAndComments()) return fail(table);
                std::optional<std::string> read = readString("a value (a quoted string) after '='");
                if (!read) return fail(table);
                value = std::move(*read);
                if (!skipSpaceAndComments()) return fail(table);
                if (!consume(';')) return fail(table, "';' after the value");
            } else if (consume(';')) {
                value = *key;
            } else {
                return fail(table, "'=' or ';' after the key");
            }
            table.entries.push_back(
                StringsEntry{std::move(*key), std::move(value), lineAndColumn(text_, keyStart).first});
        }
    }

private:
    std::string_view text_;
    std::size_t position_ = 0;
    std::optional<TableError> error_;

    StringsTable& fail(StringsTable& table) {
        table.error = error_;
        return table;
    }

    StringsTable& fail(StringsTable& table, std::string expected) {
        error_ = errorAt(text_, position_, "expected " + std::move(expected));
        return fail(table);
    }

    void setError(std::size_t at, std::string expected) { error_ = errorAt(text_, at, "expected " + std::move(expected)); }

    bool consume(char c) {
        if (position_ >= text_.size() || text_[position_] != c) return false;
        ++position_;
        return true;
    }

    bool skipSpaceAndComments() {
        while (position_ < text_.size()) {
            const std::string_view rest = text_.substr(position_);
            if (isSpace(text_[position_])) {
                ++position_;
            } else if (rest.starts_with("//")) {
                while (position_ < text_.size() && text_[position_] != '\n') ++position_;
            } else if (rest.starts_with("/*")) {
                const std::size_t end = text_.find("*/", position_ + 2);
                if (end == std::string_view::npos) {
                    setError(position_, "'*/' to close the comment that starts here");
                    return false;
                }
                position_ = end + 2;
            } else {
                break;
            }
        }
        return true;
    }

    std::optional<std::string> readString(const std::string& what) {
        if (position_ < text_.size() && text_[position_] == '"') return readQuoted();
        const std::size_t start = position_;
        while (position_ < text_.size() && isUnquotedCharacter(text_[position_])) ++position_;
        if (position_ == start) {
            setError(start, what);
            return std::nullopt;
        }
        return std::string(text_.substr(start, position_ - start));
    }

    // Four hex digits after "\U" at `position_`.
    std::optional<std::uint32_t> readUnit() {
        if (position_ + 4 > text_.size()) return std::nullopt;
        std::uint32_t unit = 0;
        for (std::size_t offset = 0; offset < 4; ++offset) {
            const std::optional<std::uint32_t> digit = hexDigit(text_[position_ + offset]);
            if (!digit) return std::nullopt;
            unit = unit * 16 + *digit;
        }
        position_ += 4;
        return unit;
    }

    std::optional<std::string> readQuoted() {
        const std::size_t open = position_++;
        std::string out;
        while (position_ < text_.size()) {
            const char c = text_[position_];
            if (c == '"') {
                ++position_;
                return out;
            }
            if (c != '\\') {
                out += c;
                ++position_;
                continue;
            }
            const std::size_t escapeStart = position_++;
            if (position_ >= text_.size()) break;
            const char escape = text_[position_++];
            switch (escape) {
            case '"': out += '"'; break;
            case '\\': out += '\\'; break;
            case 'n': out += '\n'; break;
            case 't': out += '\t'; break;
            case 'r': out += '\r'; break;
            case 'U': {
                const std::optional<std::uint32_t> unit = readUnit();
                if (!unit) {
                    setError(escapeStart, "four hex digits after \\U");
                    return std::nullopt;
                }
                std::uint32_t codePoint = *unit;
                if (isHighSurrogate(*unit)) {
                    std::optional<std::uint32_t> low;
                    if (text_.substr(position_).starts_with("\\U")) {
                        position_ += 2;
                        low = readUnit();
                    }
                    if (!low || !isLowSurrogate(*low)) {
                        setError(escapeStart, "a high surrogate \\UD800-\\UDBFF followed by a low surrogate \\UDC00-\\UDFFF");
                        return std::nullopt;
                    }
                    codePoint = 0x10000 + ((*unit - 0xD800) << 10) + (*low - 0xDC00);
                } else if (isLowSurrogate(*unit)) {
                    setError(escapeStart, "a low surrogate \\UDC00-\\UDFFF only after a high surrogate");
                    return std::nullopt;
                } else if (*unit == 0) {
                    setError(escapeStart, "a character other than NUL");
                    return std::nullopt;
                }
                appendUtf8(out, codePoint);
                break;
            }
            default:
                setError(escapeStart, "an escape: \\\" \\\\ \\n \\t \\r or \\U and four hex digits");
                return std::nullopt;
            }
        }
        setError(open, "'\"' to close the string that starts here");
        return std::nullopt;
    }
};

// --- XML property lists (the subset a strings dictionary uses) ----------------------

// A node holds nodes of its own type, so it has a constructor rather than
// default member initialisers: with those, Clang over libstdc++ asks whether
// the still incomplete type is default-constructible and fails.
struct XmlNode {
    enum class Kind { string, dictionary };

    XmlNode() : kind(Kind::string), offset(0) {}

    Kind kind;
    std::string string;
    std::vector<std::pair<std::string, XmlNode>> entries;  // of a dictionary, in order
    std::vector<std::size_t> keyOffsets;                   // where each entry's <key> starts
    std::size_t offset;
};

class XmlReader {
public:
    explicit XmlReader(std::string_view text) : text_(text) {}

    std::optional<XmlNode> readDocument() {
        if (!skipMisc()) return std::nullopt;
        if (startsWith("<?xml")) {
            if (!skipPast("?>", "'?>' to end the XML declaration")) return std::nullopt;
        }
        if (!skipMisc()) return std::nullopt;
        if (startsWith("<!DOCTYPE")) {
            if (!skipPast(">", "'>' to end the document type")) return std::nullopt;
        }
        if (!skipMisc()) return std::nullopt;
        if (!startsWith("<plist") ||
            !(text_.size() > position_ + 6 && (text_[position_ + 6] == '>' || isSpace(text_[position_ + 6])))) {
            return fail("<plist>");
        }
        if (!skipPast(">", "'>' to end the <plist> tag")) return std::nullopt;
        if (!skipMisc()) return std::nullopt;
        std::optional<XmlNode> root = readValue();
        if (!root) return std::nullopt;
        if (!skipMisc()) return std::nullopt;
        if (!consume("</plist>")) return fail("</plist>");
        if (!skipMisc()) return std::nullopt;
        if (position_ != text_.size()) return fail("nothing after </plist>");
        return root;
    }

    std::optional<TableError> error;

private:
    std::string_view text_;
    std::size_t position_ = 0;
    int depth_ = 0;

    std::nullopt_t fail(const std::string& expected) {
        if (!error) error = errorAt(text_, position_, "expected " + expected);
        return std::nullopt;
    }

    bool startsWith(std::string_view prefix) const { return text_.substr(position_).starts_with(prefix); }

    bool consume(std::string_view prefix) {
        if (!startsWith(prefix)) return false;
        position_ += prefix.size();
        return true;
    }

    bool skipPast(std::string_view end, const std::string& expected) {
        const std::size_t found = text_.find(end, position_);
        if (found == std::string_view::npos) {
            fail(expected);
            return false;
        }
        position_ = found + end.size();
        return true;
    }

    // White space and comments.
    bool skipMisc() {
        while (position_ < text_.size()) {
            if (isSpace(text_[position_])) {
                ++position_;
            } else if (startsWith("<!--")) {
                if (!skipPast("-->", "'-->' to close the comment that starts here")) return false;
            } else {
                break;
            }
        }
        return true;
    }

    std::optional<XmlNode> readValue() {
        XmlNode node;
        node.offset = position_;
        if (consume("<string/>")) return node;
        if (consume("<string>")) {
            std::optional<std::string> text = readText();
            if (!text) return std::nullopt;
            node.string = std::move(*text);
            if (!consume("</string>")) return fail("</string>");
            return node;
        }
        node.kind = XmlNode::Kind::dictionary;
        if (consume("<dict/>")) return node;
        if (!consume("<dict>")) return fail("<string> or <dict>");
        if (++depth_ > 8) return fail("dictionaries nested at most 8 deep");
        while (true) {
            if (!skipMisc()) return std::nullopt;
            if (consume("</dict>")) break;
            const std::size_t keyOffset = position_;
            if (!consume("<key>")) return fail("<key> or </dict>");
            std::optional<std::string> key = readText();
            if (!key) return std::nullopt;
            if (!consume("</key>")) return fail("</key>");
            if (!skipMisc()) return std::nullopt;
            for (const auto& [existing, value] : node.entries) {
                if (existing == *key) {
                    position_ = keyOffset;
                    return fail("no second <key>" + *key + "</key> in one dictionary");
                }
            }
            std::optional<XmlNode> value = readValue();
            if (!value) return std::nullopt;
            node.entries.emplace_back(std::move(*key), std::move(*value));
            node.keyOffsets.push_back(keyOffset);
        }
        --depth_;
        return node;
    }

    // Character data up to the next tag, with the predefined and numeric
    // character references.
    std::optional<std::string> readText() {
        std::string out;
        while (position_ < text_.size() && text_[position_] != '<') {
            if (text_[position_] != '&') {
                out += text_[position_++];
                continue;
            }
            const std::size_t start = position_;
            const std::size_t end = text_.find(';', position_);
            if (end == std::string_view::npos || end - position_ > 10) {
                return fail("a character reference (&amp; &lt; &gt; &quot; &apos; or &#…;)");
            }
            const std::string_view name = text_.substr(position_ + 1, end - position_ - 1);
            position_ = end + 1;
            if (name == "amp") out += '&';
            else if (name == "lt") out += '<';
            else if (name == "gt") out += '>';
            else if (name == "quot") out += '"';
            else if (name == "apos") out += '\'';
            else if (name.starts_with('#') && name.size() > 1) {
                const bool hex = name[1] == 'x';
                const std::string_view digits = name.substr(hex ? 2 : 1);
                std::uint32_t codePoint = 0;
                bool valid = !digits.empty();
                for (char c : digits) {
                    const std::optional<std::uint32_t> digit = hexDigit(c);
                    if (!digit || (!hex && *digit > 9) || codePoint > 0x10FFFF) {
                        valid = false;
                        break;
                    }
                    codePoint = codePoint * (hex ? 16 : 10) + *digit;
                }
                if (!valid || codePoint == 0 || codePoint > 0x10FFFF || (codePoint >= 0xD800 && codePoint <= 0xDFFF)) {
                    position_ = start;
                    return fail("a character reference to a character");
                }
                appendUtf8(out, codePoint);
            } else {
                position_ = start;
                return fail("a character reference (&amp; &lt; &gt; &quot; &apos; or &#…;)");
            }
        }
        if (position_ >= text_.size()) return fail("a closing tag");
        return out;
    }
};

constexpr std::string_view formatKey = "NSStringLocalizedFormatKey";
constexpr std::string_view specTypeKey = "NSStringFormatSpecTypeKey";
constexpr std::string_view valueTypeKey = "NSStringFormatValueTypeKey";
constexpr std::string_view pluralRuleType = "NSStringPluralRuleType";

// The names of the plural variables a format uses.
std::optional<std::vector<std::string>> variablesOf(std::string_view format, std::string* problem) {
    const FormatParse parse = parseFormat(format);
    if (parse.error) {
        *problem = "a format string (" + *parse.error + ")";
        return std::nullopt;
    }
    std::vector<std::string> names;
    for (const FormatSpecifier& specifier : parse.specifiers) {
        if (specifier.variable) names.push_back(*specifier.variable);
    }
    return names;
}

class DictionaryInterpreter {
public:
    explicit DictionaryInterpreter(std::string_view text) : text_(text) {}

    StringsDictionary interpret(const XmlNode& root) {
        StringsDictionary dictionary;
        if (root.kind != XmlNode::Kind::dictionary) {
            dictionary.error = errorAt(text_, root.offset, "expected a <dict> at the root");
            return dictionary;
        }
        for (std::size_t index = 0; index < root.entries.size(); ++index) {
            const auto& [key, node] = root.entries[index];
            std::optional<StringsDictionaryEntry> entry = readEntry(key, node, root.keyOffsets[index]);
            if (!entry) {
                dictionary.error = error_;
                return dictionary;
            }
            dictionary.entries.push_back(std::move(*entry));
        }
        return dictionary;
    }

private:
    std::string_view text_;
    std::optional<TableError> error_;

    std::nullopt_t fail(std::size_t offset, const std::string& expected) {
        error_ = errorAt(text_, offset, "expected " + expected);
        return std::nullopt;
    }

    int lineOf(std::size_t offset) const { return lineAndColumn(text_, offset).first; }

    std::optional<StringsDictionaryEntry> readEntry(const std::string& key, const XmlNode& node, std::size_t keyOffset) {
        if (node.kind != XmlNode::Kind::dictionary) {
            return fail(node.offset, "a <dict> with NSStringLocalizedFormatKey for \"" + key + "\"");
        }
        StringsDictionaryEntry entry;
        entry.key = key;
        entry.line = lineOf(keyOffset);
        const XmlNode* format = nullptr;
        for (const auto& [name, value] : node.entries) {
            if (name == formatKey) format = &value;
        }
        if (!format || format->kind != XmlNode::Kind::string) {
            return fail(format ? format->offset : node.offset,
                        "a <string> under NSStringLocalizedFormatKey for \"" + key + "\"");
        }
        entry.format = format->string;
        std::string problem;
        const std::optional<std::vector<std::string>> used = variablesOf(entry.format, &problem);
        if (!used) return fail(format->offset, problem + " under NSStringLocalizedFormatKey");
        std::set<std::string> referenced(used->begin(), used->end());
        for (std::size_t index = 0; index < node.entries.size(); ++index) {
            const auto& [name, value] = node.entries[index];
            if (name == formatKey) continue;
            std::optional<PluralVariable> variable = readVariable(name, value, node.keyOffsets[index]);
            if (!variable) return std::nullopt;
            for (const auto& [category, text] : variable->forms) {
                const std::optional<std::vector<std::string>> nested = variablesOf(text, &problem);
                if (!nested) return fail(value.offset, problem + " in the " + std::string(pluralCategoryName(category)) + " form of \"" + name + "\"");
                referenced.insert(nested->begin(), nested->end());
            }
            entry.variables.emplace(name, std::move(*variable));
        }
        for (const std::string& name : referenced) {
            if (!entry.variables.contains(name)) {
                return fail(node.offset, "a <dict> for the variable \"" + name + "\" that \"" + key + "\" uses");
            }
        }
        for (std::size_t index = 0; index < node.entries.size(); ++index) {
            const std::string& name = node.entries[index].first;
            if (name != formatKey && !referenced.contains(name)) {
                return fail(node.keyOffsets[index], "only variables the format uses, not \"" + name + "\"");
            }
        }
        return entry;
    }

    std::optional<PluralVariable> readVariable(const std::string& name, const XmlNode& node, std::size_t keyOffset) {
        if (node.kind != XmlNode::Kind::dictionary) {
            return fail(node.offset, "a <dict> of plural forms for the variable \"" + name + "\"");
        }
        PluralVariable variable;
        variable.line = lineOf(keyOffset);
        bool isPluralRule = false;
        for (std::size_t index = 0; index < node.entries.size(); ++index) {
            const auto& [key, value] = node.entries[index];
            if (value.kind != XmlNode::Kind::string) return fail(value.offset, "a <string> under " + key);
            if (key == specTypeKey) {
                if (value.string != pluralRuleType) return fail(value.offset, "NSStringPluralRuleType, the only rule type read");
                isPluralRule = true;
            } else if (key == valueTypeKey) {
                const FormatParse parse = parseFormat("%" + value.string);
                if (parse.error || parse.specifiers.size() != 1 || parse.specifiers[0].variable ||
                    parse.specifiers[0].text.size() != value.string.size() + 1 || parse.specifiers[0].position) {
                    return fail(value.offset, "a conversion such as lld under NSStringFormatValueTypeKey");
                }
                variable.valueType = value.string;
            } else if (const std::optional<PluralCategory> category = pluralCategoryNamed(key)) {
                variable.forms.emplace(*category, value.string);
            } else {
                return fail(node.keyOffsets[index],
                            "NSStringFormatSpecTypeKey, NSStringFormatValueTypeKey or a plural category (zero, one, "
                            "two, few, many, other), not \"" + key + "\"");
            }
        }
        if (!isPluralRule) return fail(node.offset, "NSStringFormatSpecTypeKey = NSStringPluralRuleType for \"" + name + "\"");
        if (variable.valueType.empty()) return fail(node.offset, "NSStringFormatValueTypeKey for \"" + name + "\"");
        if (!variable.forms.contains(PluralCategory::other)) return fail(node.offset, "an \"other\" form for \"" + name + "\"");
        return variable;
    }
};

}  // namespace

std::string TableError::description() const {
    return "line " + std::to_string(line) + ", column " + std::to_string(column) + ": " + problem;
}

DecodedText decodeTableText(std::string_view bytes) {
    if (bytes.starts_with("\xFF\xFE")) return decodeUtf16(bytes.substr(2), true);
    if (bytes.starts_with("\xFE\xFF")) return decodeUtf16(bytes.substr(2), false);
    if (bytes.starts_with("\xEF\xBB\xBF")) bytes.remove_prefix(3);
    DecodedText decoded;
    decoded.error = checkUtf8(bytes);
    if (!decoded.error) decoded.text = std::string(bytes);
    return decoded;
}

StringsTable parseStringsTable(std::string_view bytes) {
    const DecodedText decoded = decodeTableText(bytes);
    if (decoded.error) return StringsTable{.entries = {}, .error = decoded.error};
    return StringsReader(decoded.text).read();
}

StringsDictionary parseStringsDictionary(std::string_view bytes) {
    const DecodedText decoded = decodeTableText(bytes);
    if (decoded.error) return StringsDictionary{.entries = {}, .error = decoded.error};
    XmlReader reader(decoded.text);
    const std::optional<XmlNode> root = reader.readDocument();
    if (!root) return StringsDictionary{.entries = {}, .error = reader.error};
    return DictionaryInterpreter(decoded.text).interpret(*root);
}

}  // namespace orvik
