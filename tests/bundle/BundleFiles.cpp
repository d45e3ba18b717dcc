#include "BundleFiles.h"

#include <cstddef>
#include <cstdint>
#include <fstream>
#include <sstream>
#include <utility>

#include "OrvikKitCore/Utf8.h"

namespace bundlefiles {

namespace {

bool isIdentifierChar(char c) {
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9') || c == '_';
}

bool isSpace(char c) { return c == ' ' || c == '\t' || c == '\n' || c == '\r' || c == '\f' || c == '\v'; }

std::optional<std::uint32_t> hexDigit(char c) {
    if (c >= '0' && c <= '9') return static_cast<std::uint32_t>(c - '0');
    if (c >= 'a' && c <= 'f') return static_cast<std::uint32_t>(c - 'a' + 10);
    if (c >= 'A' && c <= 'F') return static_cast<std::uint32_t>(c - 'A' + 10);
    return std::nullopt;
}

// Reads exactly `count` hex digits at `text[index]`.
std::optional<std::uint32_t> hexNumber(std::string_view text, std::size_t index, std::size_t count) {
    if (index + count > text.size()) return std::nullopt;
    std::uint32_t value = 0;
    for (std::size_t offset = 0; offset < count; ++offset) {
        const std::optional<std::uint32_t> digit = hexDigit(text[index + offset]);
        if (!digit) return std::nullopt;
        value = value * 16 + *digit;
    }
    return value;
}

// The text of a C++ string literal's body (between its quotes), its escapes
// resolved; nothing when an escape is malformed.
std::optional<std::string> decodeCppEscapes(std::string_view body) {
    std::string text;
    for (std::size_t index = 0; index < body.size(); ++index) {
        const char c = body[index];
        if (c != '\\') {
            text += c;
            continue;
        }
        if (++index >= body.size()) return std::nullopt;
        const char escape = body[index];
        switch (escape) {
        case 'n': text += '\n'; break;
        case 't': text += '\t'; break;
        case 'r': text += '\r'; break;
        case 'a': text += '\a'; break;
        case 'b': text += '\b'; break;
        case 'f': text += '\f'; break;
        case 'v': text += '\v'; break;
        case '\\': text += '\\'; break;
        case '"': text += '"'; break;
        case '\'': text += '\''; break;
        case '?': text += '?'; break;
        case 'u':
        case 'U': {
            const std::size_t digits = escape == 'u' ? 4 : 8;
            const std::optional<std::uint32_t> codePoint = hexNumber(body, index + 1, digits);
            if (!codePoint || !orvik::appendUtf8(text, *codePoint)) return std::nullopt;
            index += digits;
            break;
        }
        case 'x': {
            std::uint32_t value = 0;
            std::size_t digits = 0;
            while (index + 1 < body.size() && hexDigit(body[index + 1])) {
                value = value * 16 + *hexDigit(body[++index]);
                ++digits;
            }
            if (digits == 0 || value > 0xFF) return std::nullopt;
            text += static_cast<char>(static_cast<unsigned char>(value));
            break;
        }
        default:
            if (escape >= '0' && escape <= '7') {
                std::uint32_t value = static_cast<std::uint32_t>(escape - '0');
                for (int more = 0; more < 2 && index + 1 < body.size() && body[index + 1] >= '0' &&
                                   body[index + 1] <= '7';
                     ++more) {
                    value = value * 8 + static_cast<std::uint32_t>(body[++index] - '0');
                }
                if (value > 0xFF) return std::nullopt;
                text += static_cast<char>(static_cast<unsigned char>(value));
                break;
            }
            return std::nullopt;
        }
    }
    return text;
}

// Walks C++ or Objective-C++ source text.
class SourceReader {
public:
    SourceReader(std::string_view source, std::string fileName) : source_(source), fileName_(std::move(fileName)) {}

    SourceScan scan() {
        while (position_ < source_.size()) {
            if (skipComment() || skipCharacterLiteral()) continue;
            if (readStringLiteral()) continue;  // a literal outside a call: not a text
            const char c = source_[position_];
            if (isIdentifierChar(c)) {
                const std::size_t start = position_;
                while (position_ < source_.size() && isIdentifierChar(source_[position_])) ++position_;
                const std::string_view identifier = source_.substr(start, position_ - start);
                if (identifier == "kitText" || identifier == "appText") {
                    readCall(identifier == "kitText" ? Table::kit : Table::app, start);
                }
                continue;
            }
            ++position_;
        }
        return std::move(result_);
    }

private:
    std::string_view source_;
    std::string fileName_;
    std::size_t position_ = 0;
    SourceScan result_;

    std::string location(std::size_t at) const {
        std::size_t line = 1;
        for (std::size_t index = 0; index < at && index < source_.size(); ++index) {
            if (source_[index] == '\n') ++line;
        }
        return fileName_ + ":" + std::to_string(line);
    }

    bool startsWith(std::string_view text) const { return source_.substr(position_).starts_with(text); }

    bool skipComment() {
        if (startsWith("//")) {
            while (position_ < source_.size() && source_[position_] != '\n') ++position_;
            return true;
        }
        if (startsWith("/*")) {
            const std::size_t end = source_.find("*/", position_ + 2);
            position_ = end == std::string_view::npos ? source_.size() : end + 2;
            return true;
        }
        return false;
    }

    // A quote after a letter or digit is a digit separator (1'000) or the
    // end of a prefix (u'x'); it is passed over on its own.
    bool skipCharacterLiteral() {
        if (source_[position_] != '\'') return false;
        if (position_ > 0 && isIdentifierChar(source_[position_ - 1])) {
            ++position_;
            return true;
        }
        ++position_;
        while (position_ < source_.size() && source_[position_] != '\'') {
            if (source_[position_] == '\\') ++position_;
            ++position_;
        }
        ++position_;
        return true;
    }

    void skipSpaceAndComments() {
        while (position_ < source_.size()) {
            if (isSpace(source_[position_])) {
                ++position_;
            } else if (!skipComment()) {
                return;
            }
        }
    }

    // A string literal at the position ("…", u8"…", @"…", R"d(…)d"): moves
    // past it and answers its text (nothing for a literal that could not be
    // decoded, which is reported). Answers false, without moving, when no
    // literal starts here.
    bool readStringLiteral(std::optional<std::string>* text = nullptr) {
        const std::size_t start = position_;
        const bool afterIdentifier = position_ > 0 && isIdentifierChar(source_[position_ - 1]);
        std::size_t index = position_;
        if (source_.substr(index).starts_with("@\"")) {
            index += 1;
        } else if (!afterIdentifier) {
            for (std::string_view prefix : {"u8", "u", "U", "L"}) {
                if (source_.substr(index).starts_with(prefix) &&
                    (source_.substr(index + prefix.size()).starts_with("\"") ||
                     source_.substr(index + prefix.size()).starts_with("R\""))) {
                    index += prefix.size();
                    break;
                }
            }
        }
        if (!afterIdentifier && source_.substr(index).starts_with("R\"")) {
            const std::size_t open = source_.find('(', index + 2);
            if (open == std::string_view::npos) return false;
            const std::string closing = ")" + std::string(source_.substr(index + 2, open - index - 2)) + "\"";
            const std::size_t close = source_.find(closing, open + 1);
            if (close == std::string_view::npos) return false;
            if (text) *text = std::string(source_.substr(open + 1, close - open - 1));
            position_ = close + closing.size();
            return true;
        }
        if (index >= source_.size() || source_[index] != '"') return false;
        std::size_t end = index + 1;
        while (end < source_.size() && source_[end] != '"') {
            if (source_[end] == '\\') ++end;
            ++end;
        }
        const std::string_view body = source_.substr(index + 1, end - index - 1);
        position_ = end + 1;
        if (text) {
            *text = decodeCppEscapes(body);
            if (!*text) result_.problems.push_back(location(start) + ": cannot decode \"" + std::string(body) + "\"");
        }
        return true;
    }

    // The call's first argument: each run of adjacent string literals is a
    // key; an argument without any literal is a computed key.
    void readCall(Table table, std::size_t callStart) {
        skipSpaceAndComments();
        if (position_ >= source_.size() || source_[position_] != '(') return;  // not a call (a using-declaration)
        ++position_;
        int depth = 0;
        bool previousWasLiteral = false;
        std::vector<std::string> keys;
        std::string argument;
        while (position_ < source_.size()) {
            const std::size_t before = position_;
            skipSpaceAndComments();
            if (position_ != before && !argument.empty()) argument += ' ';
            if (position_ >= source_.size()) break;
            std::optional<std::string> literal;
            const std::size_t literalStart = position_;
            if (readStringLiteral(&literal)) {
                if (literal) {
                    if (previousWasLiteral && !keys.empty()) {
                        keys.back() += *literal;
                    } else {
                        keys.push_back(*literal);
                    }
                }
                argument += source_.substr(literalStart, position_ - literalStart);
                previousWasLiteral = true;
                continue;
            }
            const char c = source_[position_];
            if (depth == 0 && (c == ',' || c == ')')) break;
            if (c == '(' || c == '{' || c == '[') ++depth;
            if (c == ')' || c == '}' || c == ']') --depth;
            if (c == '\'') {
                const std::size_t characterStart = position_;
                skipCharacterLiteral();
                argument += source_.substr(characterStart, position_ - characterStart);
            } else {
                argument += c;
                ++position_;
            }
            previousWasLiteral = false;
        }
        while (!argument.empty() && argument.back() == ' ') argument.pop_back();
        if (keys.empty()) {
            result_.computed.push_back(ComputedText{table, argument, location(callStart)});
            return;
        }
        for (std::string& key : keys) {
            result_.texts.push_back(SourceText{table, std::move(key), location(callStart)});
        }
    }
};

// Reads the subset of XML property lists the bundle's flat files use.
class PlistReader {
public:
    explicit PlistReader(std::string_view xml) : xml_(xml) {}

    PlistParse parse() {
        PlistParse result;
        skipSpace();
        if (startsWith("<?xml")) skipPast("?>");
        skipSpace();
        if (startsWith("<!DOCTYPE")) skipPast(">");
        skipSpace();
        if (!startsWith("<plist")) return fail(result, "<plist>");
        skipPast(">");
        skipSpace();
        if (!consume("<dict>")) return fail(result, "<dict>");
        while (true) {
            skipSpace();
            if (consume("</dict>")) break;
            std::string key;
            if (!consume("<key>") || !readText(key) || !consume("</key>")) return fail(result, "<key>");
            skipSpace();
            PlistValue value;
            if (consume("<true/>")) {
                value.kind = PlistValue::Kind::boolean;
                value.boolean = true;
            } else if (consume("<false/>")) {
                value.kind = PlistValue::Kind::boolean;
                value.boolean = false;
            } else if (consume("<string>")) {
                if (!readText(value.string) || !consume("</string>")) return fail(result, "</string>");
            } else if (consume("<array/>")) {
                value.kind = PlistValue::Kind::stringArray;
            } else if (consume("<array>")) {
                value.kind = PlistValue::Kind::stringArray;
                while (true) {
                    skipSpace();
                    if (consume("</array>")) break;
                    std::string element;
                    if (!consume("<string>") || !readText(element) || !consume("</string>")) {
                        return fail(result, "<string> or </array> in " + key);
                    }
                    value.strings.push_back(std::move(element));
                }
            } else {
                return fail(result, "<string>, <true/>, <false/> or <array> for " + key);
            }
            if (!result.values.emplace(key, value).second) return fail(result, "no second " + key);
        }
        skipSpace();
        if (!consume("</plist>")) return fail(result, "</plist>");
        skipSpace();
        if (position_ != xml_.size()) return fail(result, "nothing after </plist>");
        return result;
    }

private:
    std::string_view xml_;
    std::size_t position_ = 0;

    PlistParse& fail(PlistParse& result, const std::string& expected) const {
        result.error = "at offset " + std::to_string(position_) + ": expected " + expected;
        return result;
    }

    bool startsWith(std::string_view text) const { return xml_.substr(position_).starts_with(text); }

    bool consume(std::string_view text) {
        if (!startsWith(text)) return false;
        position_ += text.size();
        return true;
    }

    void skipSpace() {
        while (position_ < xml_.size() && isSpace(xml_[position_])) ++position_;
    }

    void skipPast(std::string_view end) {
        const std::size_t found = xml_.find(end, position_);
        position_ = found == std::string_view::npos ? xml_.size() : found + end.size();
    }

    // Character data up to the next tag, with the five predefined entities.
    bool readText(std::string& out) {
        while (position_ < xml_.size() && xml_[position_] != '<') {
            if (xml_[position_] != '&') {
                out += xml_[position_++];
                continue;
            }
            bool known = false;
            for (const auto& [entity, character] : {std::pair<std::string_view, char>{"&amp;", '&'},
                                                    {"&lt;", '<'},
                                                    {"&gt;", '>'},
                                                    {"&quot;", '"'},
                                                    {"&apos;", '\''}}) {
                if (consume(entity)) {
                    out += character;
                    known = true;
                    break;
                }
            }
            if (!known) return false;
        }
        return position_ < xml_.size();
    }
};

}  // namespace

const char* tableName(Table table) { return table == Table::kit ? "OrvikKit" : "Localizable"; }

SourceScan scanSource(std::string_view source, const std::string& fileName) {
    return SourceReader(source, fileName).scan();
}

PlistParse parseFlatPlist(std::string_view xml) { return PlistReader(xml).parse(); }

std::optional<std::string> readFile(const std::filesystem::path& path) {
    std::ifstream file(path, std::ios::binary);
    if (!file) return std::nullopt;
    std::ostringstream contents;
    contents << file.rdbuf();
    return contents.str();
}

}  // namespace bundlefiles
