// <HIToolbox/CarbonEventsCore.h>
#pragma once

#include <MacTypes.h>

#pragma pack(push, 2)

typedef struct OpaqueEventRef *EventRef;

enum {
    eventNotHandledErr = -9874,
};

enum {
    kEventParamDirectObject = '----',
};

struct EventTypeSpec {
    OSType eventClass;
    UInt32 eventKind;
};
typedef struct EventTypeSpec EventTypeSpec;

typedef OSType EventParamName;
typedef OSType EventParamType;

typedef struct OpaqueEventHandlerRef *EventHandlerRef;
typedef struct OpaqueEventHandlerCallRef *EventHandlerCallRef;
typedef struct OpaqueEventTargetRef *EventTargetRef;

typedef OSStatus (*EventHandlerProcPtr)(EventHandlerCallRef inHandlerCallRef, EventRef inEvent, void *inUserData);
typedef EventHandlerProcPtr EventHandlerUPP;

extern "C" {

// For C++ on Mac OS X the SDK defines this inline (it answers the routine
// itself); declared here without the body.
extern EventHandlerUPP NewEventHandlerUPP(EventHandlerProcPtr userRoutine);

extern OSStatus InstallEventHandler(EventTargetRef inTarget, EventHandlerUPP inHandler, ItemCount inNumTypes,
                                    const EventTypeSpec *inList, void *inUserData, EventHandlerRef *outRef);

extern OSStatus GetEventParameter(EventRef inEvent, EventParamName inName, EventParamType inDesiredType,
                                  EventParamType *outActualType, ByteCount inBufferSize, ByteCount *outActualSize,
                                  void *outData);

}

#pragma pack(pop)
