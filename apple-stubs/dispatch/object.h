// <dispatch/object.h>
#pragma once

OS_OBJECT_DECL_CLASS(dispatch_object);

typedef void (^dispatch_block_t)(void);

extern "C" {

API_AVAILABLE(macos(10.6))
void dispatch_resume(dispatch_object_t object);

API_AVAILABLE(macos(10.12))
void dispatch_activate(dispatch_object_t object);

}
