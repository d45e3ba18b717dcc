// <CoreGraphics/CGEvent.h>
#pragma once

#include <CoreGraphics/CGEventTypes.h>

extern "C" {

API_AVAILABLE(macos(10.4))
CFMachPortRef _Nullable CGEventTapCreate(CGEventTapLocation tap, CGEventTapPlacement place, CGEventTapOptions options,
                                         CGEventMask eventsOfInterest, CGEventTapCallBack callback,
                                         void *_Nullable userInfo);

API_AVAILABLE(macos(10.4))
void CGEventTapEnable(CFMachPortRef tap, bool enable);

API_AVAILABLE(macos(10.4))
bool CGEventTapIsEnabled(CFMachPortRef tap);

}
