// <CoreFoundation/CFData.h>
#pragma once

#include <CoreFoundation/CFBase.h>

typedef const struct CF_BRIDGED_TYPE(NSData) __CFData *CFDataRef;
typedef struct CF_BRIDGED_MUTABLE_TYPE(NSMutableData) __CFData *CFMutableDataRef;

extern "C" {

CFMutableDataRef CFDataCreateMutable(CFAllocatorRef allocator, CFIndex capacity);

}
