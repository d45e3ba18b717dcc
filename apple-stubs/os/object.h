// <os/object.h>: with Objective-C and ARC, OS objects (dispatch queues and
// sources, logs) are Objective-C objects that ARC retains and releases.
// These are the SDK's OS_OBJECT_DECL forms, written out.
#pragma once

#include <objc/NSObject.h>

#define OS_OBJECT_USE_OBJC 1
#define OS_OBJECT_DECL_CLASS(name) \
    @protocol OS_##name <NSObject> \
    @end \
    typedef NSObject<OS_##name> *name##_t
#define OS_OBJECT_DECL_SUBCLASS(name, super) \
    @protocol OS_##name <OS_##super> \
    @end \
    typedef NSObject<OS_##name> *name##_t
