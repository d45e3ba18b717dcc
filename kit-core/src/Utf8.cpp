#include "OrvikKitCore/Utf8.h"

namespace orvik {

bool appendUtf8(std::string& out, std::uint32_t codePoint) {
    if (codePoint > 0x10FFFF || (codePoint >= 0xD800 && codePoint <= 0xDFFF)) return false;
    const auto byte = [](std::uint32_t bits) { return static_cast<char>(static_cast<unsigned char>(bits)); };
    if (codePoint < 0x80) {
        out += byte(codePoint);
    } else if (codePoint < 0x800) {
        out += byte(0xC0 | (codePoint >> 6));
        out += byte(0x80 | (codePoint & 0x3F));
    } else if (codePoint < 0x10000) {
        out += byte(0xE0 | (codePoint >> 12));
        out += byte(0x80 | ((codePoint >> 6) & 0x3F));
        out += byte(0x80 | (codePoint & 0x3F));
    } else {
        out += byte(0xF0 | (codePoint >> 18));
        out += byte(0x80 | ((codePoint >> 12) & 0x3F));
        out += byte(0x80 | ((codePoint >> 6) & 0x3F));
        out += byte(0x80 | (codePoint & 0x3F));
    }
    return true;
}

std::size_t utf8SequenceLength(std::string_view text, std::size_t index) {
    const auto lead = static_cast<unsigned char>(text[index]);
    std::size_t length = 0;
    std::uint32_t codePoint = 0;
    if (lead < 0x80) return 1;
    if ((lead & 0xE0) == 0xC0) {
        length = 2;
        codePoint = lead & 0x1Fu;
    } else if ((lead & 0xF0) == 0xE0) {
        length = 3;
        codePoint = lead & 0x0Fu;
    } else if ((lead & 0xF8) == 0xF0) {
        length = 4;
        codePoint = lead & 0x07u;
    } else {
        return 0;
    }
    if (index + length > text.size()) return 0;
    for (std::size_t offset = 1; offset < length; ++offset) {
        const auto continuation = static_cast<unsigned char>(text[index + offset]);
        if ((continuation & 0xC0) != 0x80) return 0;
        codePoint = (codePoint << 6) | (continuation & 0x3Fu);
    }
    constexpr std::uint32_t smallest[] = {0, 0, 0x80, 0x800, 0x10000};
    if (codePoint < smallest[length] || codePoint > 0x10FFFF || (codePoint >= 0xD800 && codePoint <= 0xDFFF)) {
        return 0;
    }
    return length;
}

bool isValidUtf8(std::string_view text) {
    std::size_t index = 0;
    while (index < text.size()) {
        const std::size_t length = utf8SequenceLength(text, index);
        if (length == 0) return false;
        index += length;
    }
    return true;
}

}  // namespace orvik
