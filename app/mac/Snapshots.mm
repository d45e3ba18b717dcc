// Snapshot mode on macOS: the sample artwork drawn with CoreGraphics, and the
// sample menu rendered through the kit's CoreGraphics snapshot platform over
// services that refuse every call.
#import <Foundation/Foundation.h>
#include <CoreGraphics/CoreGraphics.h>

#include <cmath>
#include <memory>
#include <numbers>
#include <optional>
#include <string>

#include "OrvikKitMac/CFRef.h"
#include "OrvikKitMac/CoreGraphicsCanvas.h"
#include "OrvikKitMac/BaseAdapters.h"
#include "TolvaneMac/Adapters.h"
#include "TolvaneMac/ArtworkContent.h"
#include "Tolvane/AppIdentity.h"
#include "Tolvane/SnapshotServices.h"

namespace tolvane::mac {

using orvik::mac::CFRef;

std::optional<ArtworkImage> makeSampleArtwork(const MenuSnapshot::SampleArtwork& sample) {
    const double scale = orvik::Snapshot::scale;
    const long pixels = std::lround(sample.sizeInPoints * scale);
    if (pixels <= 0) return std::nullopt;
    const auto side = static_cast<std::size_t>(pixels);
    const auto space = CFRef<CGColorSpaceRef>::adopt(CGColorSpaceCreateWithName(kCGColorSpaceSRGB));
    const auto context = CFRef<CGContextRef>::adopt(
        CGBitmapContextCreate(nullptr, side, side, 8, 0, space.get(), kCGImageAlphaPremultipliedLast));
    if (!context) return std::nullopt;
    const CGFloat components[] = {sample.from.red, sample.from.green, sample.from.blue, sample.from.alpha,
                                  sample.to.red,   sample.to.green,   sample.to.blue,   sample.to.alpha};
    const auto gradient =
        CFRef<CGGradientRef>::adopt(CGGradientCreateWithColorComponents(space.get(), components, nullptr, 2));
    // The gradient line runs through the centre at the sample's angle
    // (counter-clockwise from the x axis; a bitmap context's y runs up), long
    // enough to reach the corners.
    const double extent = static_cast<double>(pixels);
    const double radians = sample.angleInDegrees * std::numbers::pi / 180;
    const double dx = std::cos(radians);
    const double dy = std::sin(radians);
    const double half = (std::abs(dx) + std::abs(dy)) * extent / 2;
    const double centre = extent / 2;
    CGContextDrawLinearGradient(context.get(), gradient.get(), CGPoint{.x = centre - dx * half, .y = centre - dy * half},
                                CGPoint{.x = centre + dx * half, .y = centre + dy * half},
                                kCGGradientDrawsBeforeStartLocation | kCGGradientDrawsAfterEndLocation);
    auto image = CFRef<CGImageRef>::adopt(CGBitmapContextCreateImage(context.get()));
    if (!image) return std::nullopt;
    return MenuSnapshot::artworkImage(std::make_shared<const CGImageArtwork>(std::move(image)));
}

void renderSnapshots(const std::string& directory) {
    const std::unique_ptr<orvik::SnapshotPlatform> rendering = orvik::mac::makeSnapshotPlatform();
    const std::string version = orvik::mac::makeAppInfoSource(std::string(bundleIdentifier()))->version();
    MenuSnapshot::Platform platform{
        .rendering = *rendering,
        .services = MenuSnapshot::refusingServices(version),
        .loginItem = nullptr,  // the open-at-login row is not read while a snapshot renders
        .version = version,
        .makeArtwork = makeSampleArtwork,
    };
    MenuSnapshot::render(directory, platform);
}

}  // namespace tolvane::mac
