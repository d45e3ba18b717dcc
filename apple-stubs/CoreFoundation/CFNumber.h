// <CoreFoundation/CFNumber.h>
#pragma once

#include <CoreFoundation/CFBase.h>

CF_IMPLICIT_BRIDGING_ENABLED

typedef const struct CF_BRIDGED_TYPE(NSNumber) __CFBoolean *CFBooleanRef;
typedef const struct CF_BRIDGED_TYPE(NSNumber) __CFNumber *CFNumberRef;

typedef CF_ENUM(CFIndex, CFNumberType){
    kCFNumberSInt8Type = 1,
    kCFNumberSInt16Type = 2,
    kCFNumberSInt32Type = 3,
    kCFNumberSInt64Type = 4,
    kCFNumberFloat32Type = 5,
    kCFNumberFloat64Type = 6,
};

extern "C" {

CFTypeID CFBooleanGetTypeID(void);
Boolean CFNumberIsFloatType(CFNumberRef number);
Boolean CFNumberGetValue(CFNumberRef number, CFNumberType theType, void *valuePtr);

}

CF_IMPLICIT_BRIDGING_DISABLED
