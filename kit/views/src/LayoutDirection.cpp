#include "OrvikKit/LayoutDirection.h"

#include <algorithm>
#include <array>
#include <cctype>
#include <optional>

namespace orvik {

namespace {

bool equalsIgnoringCase(std::string_view lhs, std::string_view rhs) {
    return lhs.size() == rhs.size() && std::equal(lhs.begin(), lhs.end(), rhs.begin(), [](char left, char right) {
               return std::tolower(static_cast<unsigned char>(left)) == std::tolower(static_cast<unsigned char>(right));
           });
}

// The ISO 15924 codes of the scripts written from right to left that a
// language tag may name.
constexpr std::array<std::string_view, 8> rightToLeftScripts{"arab", "hebr", "syrc", "thaa", "nkoo", "adlm", "rohg",
                                                             "mand"};

// Languages whose default script runs from right to left (ISO 639 codes,
// with the withdrawn "iw" and "ji" that older systems still report for
// Hebrew and Yiddish).
constexpr std::array<std::string_view, 18> rightToLeftLanguages{
    "ar", "arc", "ckb", "dv", "fa", "he", "iw", "ji", "ks", "lrc", "mzn", "nqo", "ps", "sd", "syr", "ug", "ur", "yi"};

template <std::size_t count>
bool contains(const std::array<std::string_view, count>& list, std::string_view value) {
    return std::any_of(list.begin(), list.end(), [value](std::string_view entry) {
        return equalsIgnoringCase(entry, value);
    });
}

// Decodes the next code point of UTF-8 text; nothing for a malformed
// sequence (its first byte is skipped).
std::optional<char32_t> nextCodePoint(std::string_view text, std::size_t& index) {
    const auto byte = [&](std::size_t at) { return static_cast<unsigned char>(text[at]); };
    const unsigned char first = byte(index);
    std::size_t length = 1;
    char32_t codePoint = first;
    if (first >= 0xF0 && first <= 0xF4) {
        length = 4;
        codePoint = first & 0x07U;
    } else if (first >= 0xE0) {
        length = 3;
        codePoint = first & 0x0FU;
    } else if (first >= 0xC2 && first <= 0xDF) {
        length = 2;
        codePoint = first & 0x1FU;
    } else if (first >= 0x80) {
        ++index;
        return std::nullopt;
    }
    if (index + length > text.size()) {
        ++index;
        return std::nullopt;
    }
    for (std::size_t offset = 1; offset < length; ++offset) {
        const unsigned char continuation = byte(index + offset);
        if ((continuation & 0xC0U) != 0x80U) {
            ++index;
            return std::nullopt;
        }
        codePoint = (codePoint << 6) | (continuation & 0x3FU);
    }
    index += length;
    return codePoint;
}

bool within(char32_t codePoint, char32_t first, char32_t last) { return codePoint >= first && codePoint <= last; }

// Marks, digits and format characters inside the right-to-left blocks,
// which are not strongly directional.
bool isWeakInRightToLeftBlock(char32_t c) {
    return within(c, 0x0591, 0x05BD) || c == 0x05BF || within(c, 0x05C1, 0x05C2) || within(c, 0x05C4, 0x05C5) ||
           c == 0x05C7 || within(c, 0x0600, 0x0605) || c == 0x060C || within(c, 0x0610, 0x061A) ||
           within(c, 0x064B, 0x066C) || c == 0x0670 || within(c, 0x06D6, 0x06DD) || within(c, 0x06DF, 0x06E4) ||
           within(c, 0x06E7, 0x06E8) || within(c, 0x06EA, 0x06ED) || within(c, 0x06F0, 0x06F9) ||
           within(c, 0x0711, 0x0711) || within(c, 0x0730, 0x074A) || within(c, 0x07A6, 0x07B0) ||
           within(c, 0x07EB, 0x07F3) || within(c, 0x08D3, 0x08FF) || c == 0xFEFF;
}

std::optional<LayoutDirection> strongDirection(char32_t c) {
    if (within(c, 0x0590, 0x08FF) || within(c, 0xFB1D, 0xFDFF) || within(c, 0xFE70, 0xFEFF) ||
        within(c, 0x10800, 0x10FFF) || within(c, 0x1E800, 0x1EFFF)) {
        if (isWeakInRightToLeftBlock(c)) return std::nullopt;
        return LayoutDirection::rightToLeft;
    }
    const bool leftToRight =
        within(c, U'A', U'Z') || within(c, U'a', U'z') || c == 0x00AA || c == 0x00B5 || c == 0x00BA ||
        within(c, 0x00C0, 0x00D6) || within(c, 0x00D8, 0x00F6) || within(c, 0x00F8, 0x02B8) ||
        within(c, 0x0370, 0x0373) || within(c, 0x0376, 0x037D) || within(c, 0x0386, 0x0386) ||
        within(c, 0x0388, 0x03FF) || within(c, 0x0400, 0x0482) || within(c, 0x048A, 0x058F) ||
        (within(c, 0x0900, 0x1FFF) && !within(c, 0x1AB0, 0x1AFF) && !within(c, 0x1DC0, 0x1DFF)) ||
        within(c, 0x2C00, 0x2DFF) || within(c, 0x3040, 0x9FFF) || within(c, 0xA000, 0xD7FF) ||
        within(c, 0xE000, 0xFB1C) || within(c, 0xFF21, 0xFF3A) || within(c, 0xFF41, 0xFF5A) ||
        within(c, 0xFF66, 0xFFDC) || (within(c, 0x10000, 0x1FFFF) && !within(c, 0x1F000, 0x1FAFF)) ||
        within(c, 0x20000, 0x3FFFF);
    if (leftToRight) return LayoutDirection::leftToRight;
    return std::nullopt;
}

}  // namespace

LayoutDirection layoutDirectionForLanguage(std::string_view language) noexcept {
    const std::size_t languageEnd = language.find_first_of("-_");
    const std::string_view primary = language.substr(0, languageEnd);
    if (languageEnd != std::string_view::npos) {
        const std::string_view rest = language.substr(languageEnd + 1);
        const std::string_view second = rest.substr(0, rest.find_first_of("-_"));
        const bool isScript = second.size() == 4 && std::all_of(second.begin(), second.end(), [](char character) {
                                  return std::isalpha(static_cast<unsigned char>(character)) != 0;
                              });
        if (isScript) {
            return contains(rightToLeftScripts, second) ? LayoutDirection::rightToLeft : LayoutDirection::leftToRight;
        }
    }
    return contains(rightToLeftLanguages, primary) ? LayoutDirection::rightToLeft : LayoutDirection::leftToRight;
}

bool mirrorsInRightToLeft(std::string_view name) noexcept {
    // The first component names the symbol's subject; a playback symbol's
    // subject is its direction.
    const std::size_t firstEnd = name.find('.');
    if (firstEnd == std::string_view::npos) return false;
    std::string_view rest = name.substr(firstEnd + 1);
    while (!rest.empty()) {
        const std::size_t end = rest.find('.');
        const std::string_view component = rest.substr(0, end);
        if (component == "forward" || component == "backward") return true;
        if (end == std::string_view::npos) break;
        rest = rest.substr(end + 1);
    }
    return false;
}

LayoutDirection firstStrongDirection(std::string_view text, LayoutDirection fallback) noexcept {
    std::size_t index = 0;
    while (index < text.size()) {
        const std::optional<char32_t> codePoint = nextCodePoint(text, index);
        if (!codePoint) continue;
        if (const std::optional<LayoutDirection> direction = strongDirection(*codePoint)) return *direction;
    }
    return fallback;
}

}  // namespace orvik
