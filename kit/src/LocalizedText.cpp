#include "OrvikKit/LocalizedText.h"

namespace orvik {

namespace {

// The length of the conversion at the start of `rest` ("@", "d", "ld",
// "lld"), or 0 when it is none of those.
std::size_t conversionLength(std::string_view rest) {
    for (std::string_view conversion : {"@", "d", "ld", "lld"}) {
        if (rest.starts_with(conversion)) return conversion.size();
    }
    return 0;
}

}  // namespace

std::string LocalizedText::untranslated() const { return filledIn(key); }

std::string LocalizedText::filledIn(std::string_view key) const {
    std::string text;
    text.reserve(key.size());
    std::size_t nextArgument = 0;
    for (std::size_t index = 0; index < key.size(); ++index) {
        if (key[index] == '%' && index + 1 < key.size()) {
            const char next = key[index + 1];
            if (next == '%') {
                text += '%';
                ++index;
                continue;
            }
            const std::size_t length = conversionLength(key.substr(index + 1));
            if (length > 0 && nextArgument < arguments.size()) {
                text += arguments[nextArgument++];
                index += length;
                continue;
            }
        }
        text += key[index];
    }
    return text;
}

}  // namespace orvik
