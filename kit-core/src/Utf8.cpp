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

}  // namespace orvik
