// <AppKit/NSAccessibilityConstants.h>: the roles used here.
#pragma once

#import <Foundation/Foundation.h>

typedef NSString *NSAccessibilityRole;
typedef NSString *NSAccessibilityNotificationName;

extern "C" {
extern NSAccessibilityRole const NSAccessibilityButtonRole;
extern NSAccessibilityRole const NSAccessibilityStaticTextRole;
extern NSAccessibilityRole const NSAccessibilityGroupRole;
// The children or their order changed: clients read them again.
extern NSAccessibilityNotificationName const NSAccessibilityLayoutChangedNotification API_AVAILABLE(macos(10.9));
}
