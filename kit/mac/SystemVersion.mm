// The running system's version, as NSProcessInfo reports it to this binary
// (macOS 26 answers 16 to a binary built with an older SDK; SystemVersion
// reads that as 26).
#import <Foundation/Foundation.h>

#include "OrvikKitMac/Services.h"

namespace orvik::mac {

SystemVersion systemVersion() {
    const NSOperatingSystemVersion version = NSProcessInfo.processInfo.operatingSystemVersion;
    return SystemVersion{.major = version.majorVersion, .minor = version.minorVersion, .patch = version.patchVersion};
}

}  // namespace orvik::mac
