// <AppKit/NSAccessibility.h>: posting notifications.
#pragma once

#import <AppKit/NSAccessibilityConstants.h>

NS_ASSUME_NONNULL_BEGIN
extern "C" {

void NSAccessibilityPostNotification(id element, NSAccessibilityNotificationName notification);

}
NS_ASSUME_NONNULL_END
