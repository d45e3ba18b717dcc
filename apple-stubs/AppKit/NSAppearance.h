// <AppKit/NSAppearance.h>
#pragma once

#import <Foundation/Foundation.h>

NS_ASSUME_NONNULL_BEGIN

typedef NSString *NSAppearanceName;

API_AVAILABLE(macos(10.9))
@interface NSAppearance : NSObject
// Makes the receiver the active drawing appearance (colours resolve under
// it) while the block runs; restores the previous one after.
- (void)performAsCurrentDrawingAppearance:(void(NS_NOESCAPE ^)(void))block API_AVAILABLE(macos(11.0));
+ (nullable NSAppearance *)appearanceNamed:(NSAppearanceName)name;
// Given a list of appearance names, returns the one that best matches the receiver
- (nullable NSAppearanceName)bestMatchFromAppearancesWithNames:(NSArray<NSAppearanceName> *)appearances
    API_AVAILABLE(macos(10.14));
@end

extern "C" {
API_AVAILABLE(macos(10.9)) extern NSAppearanceName const NSAppearanceNameAqua;
API_AVAILABLE(macos(10.14)) extern NSAppearanceName const NSAppearanceNameDarkAqua;
}

@protocol NSAppearanceCustomization <NSObject>
@required
@property (nullable, strong) NSAppearance *appearance API_AVAILABLE(macos(10.9));
@property (readonly, strong) NSAppearance *effectiveAppearance API_AVAILABLE(macos(10.9));
@end

NS_ASSUME_NONNULL_END
