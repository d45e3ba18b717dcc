// <MacTypes.h>: the classic Mac OS integer types.
#pragma once

typedef unsigned char UInt8;
typedef signed short SInt16;
#if __LP64__
typedef unsigned int UInt32;
typedef signed int SInt32;
#else
typedef unsigned long UInt32;
typedef signed long SInt32;
#endif
typedef SInt32 OSStatus;
typedef UInt32 FourCharCode;
typedef FourCharCode OSType;
typedef UInt32 OptionBits;
typedef unsigned long ItemCount;
typedef unsigned long ByteCount;
typedef unsigned char Boolean;

enum {
    noErr = 0
};
