// <CoreText/CTTypesetter.h>
#pragma once

#include <CoreText/CTLine.h>

typedef const struct CF_BRIDGED_TYPE(id) __CTTypesetter *CTTypesetterRef;

CF_ASSUME_NONNULL_BEGIN
extern "C" {

API_AVAILABLE(macos(10.5))
CTTypesetterRef CTTypesetterCreateWithAttributedString(CFAttributedStringRef string);

API_AVAILABLE(macos(10.5))
CTLineRef CTTypesetterCreateLine(CTTypesetterRef typesetter, CFRange stringRange);

// The number of characters from `startIndex` that fit on a line of `width`
// (breaking at words, or at a hard break).
API_AVAILABLE(macos(10.5))
CFIndex CTTypesetterSuggestLineBreak(CTTypesetterRef typesetter, CFIndex startIndex, double width);

}
CF_ASSUME_NONNULL_END
