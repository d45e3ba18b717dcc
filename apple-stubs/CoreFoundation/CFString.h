// <CoreFoundation/CFString.h>
#pragma once

#include <CoreFoundation/CFBase.h>

CF_IMPLICIT_BRIDGING_ENABLED
CF_ASSUME_NONNULL_BEGIN
extern "C" {

CFIndex CFStringGetLength(CFStringRef theString);

// The range of the composed character sequence (a user-perceived
// character) that contains the character at `theIndex`.
CFRange CFStringGetRangeOfComposedCharactersAtIndex(CFStringRef theString, CFIndex theIndex);

}
CF_ASSUME_NONNULL_END
CF_IMPLICIT_BRIDGING_DISABLED
