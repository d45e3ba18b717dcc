// <CoreGraphics/CoreGraphics.h>
#pragma once

#include <CoreGraphics/CGBase.h>
#include <CoreGraphics/CGGeometry.h>
#include <CoreGraphics/CGImage.h>
#include <CoreGraphics/CGEventTypes.h>
#include <CoreGraphics/CGEvent.h>
