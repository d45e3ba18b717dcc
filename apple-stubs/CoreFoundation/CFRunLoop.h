// <CoreFoundation/CFRunLoop.h>
#pragma once

#include <CoreFoundation/CFBase.h>

typedef CFStringRef CFRunLoopMode;
typedef struct CF_BRIDGED_MUTABLE_TYPE(id) __CFRunLoop *CFRunLoopRef;
typedef struct CF_BRIDGED_MUTABLE_TYPE(id) __CFRunLoopSource *CFRunLoopSourceRef;

extern "C" {

extern const CFRunLoopMode kCFRunLoopCommonModes;

CFRunLoopRef CFRunLoopGetMain(void);
void CFRunLoopAddSource(CFRunLoopRef rl, CFRunLoopSourceRef source, CFRunLoopMode mode);
void CFRunLoopRemoveSource(CFRunLoopRef rl, CFRunLoopSourceRef source, CFRunLoopMode mode);

}
