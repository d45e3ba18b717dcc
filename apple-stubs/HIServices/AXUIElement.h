// <HIServices/AXUIElement.h> (ApplicationServices): the accessibility trust
// check.
#pragma once

#include <CoreFoundation/CoreFoundation.h>

extern "C" {

API_AVAILABLE(macos(10.4))
extern Boolean AXIsProcessTrusted(void);

API_AVAILABLE(macos(10.9))
extern Boolean AXIsProcessTrustedWithOptions(CFDictionaryRef _Nullable options);

API_AVAILABLE(macos(10.9))
extern CFStringRef kAXTrustedCheckOptionPrompt;

}
