// <dispatch/dispatch.h>
#pragma once

#include <stddef.h>
#include <stdint.h>
#include <time.h>

#include <os/availability.h>
#include <os/object.h>
#include <sys/qos.h>

#include <dispatch/object.h>
#include <dispatch/time.h>
#include <dispatch/queue.h>
#include <dispatch/source.h>
