// <CoreText/CoreText.h>
#pragma once

#include <CoreText/CTStringAttributes.h>
#include <CoreText/CTLine.h>
#include <CoreText/CTParagraphStyle.h>
#include <CoreText/CTTypesetter.h>
