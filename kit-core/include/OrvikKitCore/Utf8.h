// UTF-8: encoding single code points, for the readers that decode escapes
// (\U sequences, character references, UTF-16 units) into UTF-8 text, and
// checking that text is well-formed UTF-8 (no overlong forms, surrogates or
// values beyond U+10FFFF). Pure functions; safe on any thread.
#pragma once

#include <cstdint>
#include <cstddef>
#include <string>
#include <string_view>

namespace orvik {

// Appends the UTF-8 form of `codePoint` to `out` and answers true; answers
// false and appends nothing for a value that is not a Unicode scalar value
// (a surrogate, U+D800…U+DFFF, or anything above U+10FFFF).
bool appendUtf8(std::string& out, std::uint32_t codePoint);

// The length in bytes of the well-formed UTF-8 sequence that starts at
// `index` (which must be inside `text`), or 0 when none starts there.
std::size_t utf8SequenceLength(std::string_view text, std::size_t index);

// Whether the whole of `text` is well-formed UTF-8.
bool isValidUtf8(std::string_view text);

}  // namespace orvik
