// <dispatch/queue.h>
#pragma once

OS_OBJECT_DECL_SUBCLASS(dispatch_queue, dispatch_object);
OS_OBJECT_DECL_SUBCLASS(dispatch_queue_serial, dispatch_queue);
OS_OBJECT_DECL_SUBCLASS(dispatch_queue_main, dispatch_queue_serial);
OS_OBJECT_DECL_SUBCLASS(dispatch_queue_attr, dispatch_object);

typedef qos_class_t dispatch_qos_class_t;

typedef enum : unsigned long {
    DISPATCH_AUTORELEASE_FREQUENCY_INHERIT API_AVAILABLE(macos(10.12)) = 0,
    DISPATCH_AUTORELEASE_FREQUENCY_WORK_ITEM API_AVAILABLE(macos(10.12)) = 1,
    DISPATCH_AUTORELEASE_FREQUENCY_NEVER API_AVAILABLE(macos(10.12)) = 2,
} dispatch_autorelease_frequency_t;

#define DISPATCH_QUEUE_SERIAL NULL

extern "C" {

API_AVAILABLE(macos(10.6))
void dispatch_async(dispatch_queue_t queue, dispatch_block_t block);

// An inline function in the SDK (it returns the main queue object); declared
// here without its body.
API_AVAILABLE(macos(10.6))
dispatch_queue_main_t dispatch_get_main_queue(void);

API_AVAILABLE(macos(10.12))
dispatch_queue_attr_t dispatch_queue_attr_make_with_autorelease_frequency(
        dispatch_queue_attr_t _Nullable attr, dispatch_autorelease_frequency_t frequency);

API_AVAILABLE(macos(10.10))
dispatch_queue_attr_t dispatch_queue_attr_make_with_qos_class(dispatch_queue_attr_t _Nullable attr,
                                                              dispatch_qos_class_t qos_class, int relative_priority);

API_AVAILABLE(macos(10.6))
__attribute__((ns_returns_retained))
dispatch_queue_t dispatch_queue_create(const char *_Nullable label, dispatch_queue_attr_t _Nullable attr);

}
