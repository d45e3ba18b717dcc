// UTF-8 encoding of single code points, for the readers that decode escapes
// (\U sequences, character references, UTF-16 units) into UTF-8 text.
// Pure functions; safe on any thread.
#pragma once

#include <cstdint>
#include <string>

namespace orvik {

// Appends the UTF-8 form of `codePoint` to `out` and answers true; answers
// false and appends nothing for a value that is not a Unicode scalar value
// (a surrogate, U+D800…U+DFFF, or anything above U+10FFFF).
bool appendUtf8(std::string& out, std::uint32_t codePoint);

}  // namespace orvik
