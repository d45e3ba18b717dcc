// <AppKit/NSFontDescriptor.h>
#pragma once

#import <Foundation/Foundation.h>

typedef CGFloat NSFontWeight;

// Predefined symbolic weights, used by +[NSFont systemFontOfSize:weight:].
extern "C" {
API_AVAILABLE(macos(10.11)) extern const NSFontWeight NSFontWeightRegular;
API_AVAILABLE(macos(10.11)) extern const NSFontWeight NSFontWeightMedium;
API_AVAILABLE(macos(10.11)) extern const NSFontWeight NSFontWeightSemibold;
API_AVAILABLE(macos(10.11)) extern const NSFontWeight NSFontWeightBold;
}
