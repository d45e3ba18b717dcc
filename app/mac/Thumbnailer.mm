// Thumbnailer over ImageIO.
#import <Foundation/Foundation.h>
#include <ImageIO/ImageIO.h>

#include <memory>
#include <optional>
#include <span>

#include "OrvikKitMac/CFRef.h"
#include "TolvaneMac/Adapters.h"
#include "TolvaneMac/ArtworkContent.h"

namespace tolvane::mac {

namespace {

using orvik::mac::CFRef;

class ImageIOThumbnailer final : public Thumbnailer {
public:
    std::optional<ArtworkImage> thumbnail(std::span<const std::uint8_t> bytes) override {
        if (bytes.empty()) return std::nullopt;
        NSData* data = [NSData dataWithBytes:bytes.data() length:bytes.size()];
        const auto source =
            CFRef<CGImageSourceRef>::adopt(CGImageSourceCreateWithData((__bridge CFDataRef)data, nullptr));
        if (!source) return std::nullopt;
        NSDictionary* options = @{
            (__bridge NSString*)kCGImageSourceCreateThumbnailFromImageAlways : @YES,
            (__bridge NSString*)kCGImageSourceThumbnailMaxPixelSize : @128,
            (__bridge NSString*)kCGImageSourceCreateThumbnailWithTransform : @YES,
        };
        auto image = CFRef<CGImageRef>::adopt(
            CGImageSourceCreateThumbnailAtIndex(source.get(), 0, (__bridge CFDictionaryRef)options));
        if (!image) return std::nullopt;
        return ArtworkImage::from(std::make_shared<const CGImageArtwork>(std::move(image)));
    }
};

}  // namespace

std::shared_ptr<Thumbnailer> makeThumbnailer() { return std::make_shared<ImageIOThumbnailer>(); }

}  // namespace tolvane::mac
