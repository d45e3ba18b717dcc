// The one owner of CoreFoundation objects in the Mac adapters: a ScopedRef
// whose retain and release are CFRetain and CFRelease.
//
//   auto source = CFRef<CGImageSourceRef>::adopt(CGImageSourceCreateWithData(data, nullptr));  // Create rule
//   auto loop = CFRef<CFRunLoopRef>::retain(CFRunLoopGetMain());                              // Get rule
//
// Plain C++ (no Objective-C); included by .mm files only, since it needs the
// CoreFoundation headers.
#pragma once

#include <CoreFoundation/CoreFoundation.h>

#include "OrvikKit/ScopedRef.h"

namespace orvik::mac {

struct CFRetainRelease {
    template <class T>
    static void retain(T object) noexcept {
        CFRetain(object);
    }
    template <class T>
    static void release(T object) noexcept {
        CFRelease(object);
    }
};

template <class T>
using CFRef = ScopedRef<T, CFRetainRelease>;

}  // namespace orvik::mac
