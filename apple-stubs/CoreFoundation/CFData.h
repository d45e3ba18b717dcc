// <CoreFoundation/CFData.h>
#pragma once

#include <CoreFoundation/CFBase.h>

typedef const struct CF_BRIDGED_TYPE(NSData) __CFData *CFDataRef;
