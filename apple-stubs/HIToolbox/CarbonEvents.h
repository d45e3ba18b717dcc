// <HIToolbox/CarbonEvents.h>
#pragma once

#include <HIToolbox/CarbonEventsCore.h>
#include <HIToolbox/Events.h>

#pragma pack(push, 2)

typedef struct OpaqueEventHotKeyRef *EventHotKeyRef;

struct EventHotKeyID {
    OSType signature;
    UInt32 id;
};
typedef struct EventHotKeyID EventHotKeyID;

enum {
    kEventClassKeyboard = 'keyb',
};

enum {
    kEventHotKeyPressed = 5,
};

enum {
    typeEventHotKeyID = 'hkid',
};

extern "C" {

extern EventTargetRef GetApplicationEventTarget(void);

extern OSStatus RegisterEventHotKey(UInt32 inHotKeyCode, UInt32 inHotKeyModifiers, EventHotKeyID inHotKeyID,
                                    EventTargetRef inTarget, OptionBits inOptions, EventHotKeyRef *outRef);

extern OSStatus UnregisterEventHotKey(EventHotKeyRef inHotKey);

}

#pragma pack(pop)
