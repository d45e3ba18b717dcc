// <CoreFoundation/CFMachPort.h>
#pragma once

#include <CoreFoundation/CFBase.h>
#include <CoreFoundation/CFRunLoop.h>

CF_IMPLICIT_BRIDGING_ENABLED

typedef struct CF_BRIDGED_MUTABLE_TYPE(NSMachPort) __CFMachPort *CFMachPortRef;

extern "C" {

void CFMachPortInvalidate(CFMachPortRef port);
CFRunLoopSourceRef CFMachPortCreateRunLoopSource(CFAllocatorRef allocator, CFMachPortRef port, CFIndex order);

}

CF_IMPLICIT_BRIDGING_DISABLED
