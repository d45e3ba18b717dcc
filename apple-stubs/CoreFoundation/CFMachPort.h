// <CoreFoundation/CFMachPort.h>
#pragma once

#include <CoreFoundation/CFBase.h>
#include <CoreFoundation/CFRunLoop.h>

typedef struct CF_BRIDGED_MUTABLE_TYPE(NSMachPort) __CFMachPort *CFMachPortRef;

extern "C" {

void CFMachPortInvalidate(CFMachPortRef port);
CFRunLoopSourceRef CFMachPortCreateRunLoopSource(CFAllocatorRef allocator, CFMachPortRef port, CFIndex order);

}
