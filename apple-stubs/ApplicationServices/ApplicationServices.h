// <ApplicationServices/ApplicationServices.h>
#pragma once

#include <CoreFoundation/CoreFoundation.h>
#include <CoreGraphics/CoreGraphics.h>
#include <HIServices/AXUIElement.h>
