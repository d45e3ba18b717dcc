// <CoreText/CTStringAttributes.h>
#pragma once

#include <CoreFoundation/CoreFoundation.h>

extern "C" {

// The font of the text (a CTFontRef, toll-free bridged with NSFont).
API_AVAILABLE(macos(10.5))
extern const CFStringRef kCTFontAttributeName;

// A CFBooleanRef: when true, the text is drawn in the context's fill colour.
API_AVAILABLE(macos(10.5))
extern const CFStringRef kCTForegroundColorFromContextAttributeName;

// A CTParagraphStyleRef: the paragraph's settings (here its base writing
// direction).
API_AVAILABLE(macos(10.5))
extern const CFStringRef kCTParagraphStyleAttributeName;

}
