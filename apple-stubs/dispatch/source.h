// <dispatch/source.h>
#pragma once

OS_OBJECT_DECL_SUBCLASS(dispatch_source, dispatch_object);

typedef const struct dispatch_source_type_s *dispatch_source_type_t;

extern "C" {

API_AVAILABLE(macos(10.6))
extern const struct dispatch_source_type_s _dispatch_source_type_timer;

}

#define DISPATCH_SOURCE_TYPE_TIMER (&_dispatch_source_type_timer)

extern "C" {

API_AVAILABLE(macos(10.6))
__attribute__((ns_returns_retained))
dispatch_source_t dispatch_source_create(dispatch_source_type_t type, uintptr_t handle, uintptr_t mask,
                                         dispatch_queue_t _Nullable queue);

API_AVAILABLE(macos(10.6))
void dispatch_source_set_event_handler(dispatch_source_t source, dispatch_block_t _Nullable handler);

API_AVAILABLE(macos(10.6))
void dispatch_source_cancel(dispatch_source_t source);

API_AVAILABLE(macos(10.6))
void dispatch_source_set_timer(dispatch_source_t source, dispatch_time_t start, uint64_t interval, uint64_t leeway);

}
