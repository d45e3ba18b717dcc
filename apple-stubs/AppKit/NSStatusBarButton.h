// <AppKit/NSStatusBarButton.h>
#pragma once

#import <AppKit/NSButton.h>

API_AVAILABLE(macos(10.10))
@interface NSStatusBarButton : NSButton
@end
