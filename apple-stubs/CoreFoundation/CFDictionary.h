// <CoreFoundation/CFDictionary.h>
#pragma once

#include <CoreFoundation/CFBase.h>

typedef const struct CF_BRIDGED_TYPE(NSDictionary) __CFDictionary *CFDictionaryRef;
