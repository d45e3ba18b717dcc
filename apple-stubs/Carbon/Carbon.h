// <Carbon/Carbon.h>
#pragma once

#include <ApplicationServices/ApplicationServices.h>
#include <HIToolbox/CarbonEventsCore.h>
#include <HIToolbox/CarbonEvents.h>
