// The platform image behind an ArtworkImage on macOS: a CGImage, owned, and
// compared with CFEqual. Plain C++ over CoreGraphics; for Mac sources only.
#pragma once

#include <CoreGraphics/CoreGraphics.h>

#include <utility>

#include "OrvikKitMac/CFRef.h"
#include "Tolvane/Track.h"

namespace tolvane::mac {

class CGImageArtwork final : public ArtworkImage::Content {
public:
    explicit CGImageArtwork(orvik::mac::CFRef<CGImageRef> image) : image_(std::move(image)) {}

    CGImageRef image() const noexcept { return image_.get(); }

    bool equals(const Content& other) const override {
        const auto* artwork = dynamic_cast<const CGImageArtwork*>(&other);
        return artwork != nullptr && CFEqual(image_.get(), artwork->image_.get());
    }

private:
    orvik::mac::CFRef<CGImageRef> image_;  // never null
};

}  // namespace tolvane::mac
