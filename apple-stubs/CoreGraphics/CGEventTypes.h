// <CoreGraphics/CGEventTypes.h>
#pragma once

#include <CoreGraphics/CGBase.h>

typedef struct CF_BRIDGED_TYPE(id) __CGEvent *CGEventRef;

typedef CF_ENUM(uint32_t, CGEventType){
    kCGEventNull = 0,
    kCGEventTapDisabledByTimeout = 0xFFFFFFFE,
    kCGEventTapDisabledByUserInput = 0xFFFFFFFF,
};

typedef uint64_t CGEventMask;
#define CGEventMaskBit(eventType) ((CGEventMask)1 << (eventType))

typedef CF_ENUM(uint32_t, CGEventTapLocation){
    kCGHIDEventTap = 0,
    kCGSessionEventTap,
    kCGAnnotatedSessionEventTap,
};

typedef CF_ENUM(uint32_t, CGEventTapPlacement){
    kCGHeadInsertEventTap = 0,
    kCGTailAppendEventTap,
};

typedef CF_ENUM(uint32_t, CGEventTapOptions){
    kCGEventTapOptionDefault = 0x00000000,
    kCGEventTapOptionListenOnly = 0x00000001,
};

typedef struct __CGEventTapProxy *CGEventTapProxy;

typedef CGEventRef _Nullable (*CGEventTapCallBack)(CGEventTapProxy proxy, CGEventType type, CGEventRef event,
                                                   void *_Nullable userInfo);
