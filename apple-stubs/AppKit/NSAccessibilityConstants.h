// <AppKit/NSAccessibilityConstants.h>: the roles used here.
#pragma once

#import <Foundation/Foundation.h>

typedef NSString *NSAccessibilityRole;

extern "C" {
extern NSAccessibilityRole const NSAccessibilityButtonRole;
extern NSAccessibilityRole const NSAccessibilityStaticTextRole;
}
