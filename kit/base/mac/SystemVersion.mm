// The running system's version, as NSProcessInfo reports it to this binary
// (macOS 26 answers 16 to a binary built with an older SDK; SystemVersion
// reads that as 26), and the activation call that depends on it.
#import <AppKit/AppKit.h>
#import <Foundation/Foundation.h>

#include "OrvikKitMac/BaseAdapters.h"

namespace orvik::mac {

SystemVersion systemVersion() {
    const NSOperatingSystemVersion version = NSProcessInfo.processInfo.operatingSystemVersion;
    return SystemVersion{.major = version.majorVersion, .minor = version.minorVersion, .patch = version.patchVersion};
}

void activateThisApplication() {
    if (@available(macOS 14.0, *)) {
        [NSApplication.sharedApplication activate];
    } else {
        [NSApplication.sharedApplication activateIgnoringOtherApps:YES];
    }
}

}  // namespace orvik::mac
