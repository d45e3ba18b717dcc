// The platform image behind an ArtworkImage on macOS: a CGImage, owned, and
// compared with CFEqual, which holds for the same image object; whether two
// images decoded separately from the same bytes are CFEqual CoreGraphics does
// not document, and nothing in the app depends on it (a song that stays the
// same keeps the handle it has). It is also the image the kit's CoreGraphics
// canvas draws (its size in points is its pixel size; the menu scales it to
// fill the artwork square). Plain C++ over CoreGraphics; for Mac sources
// only.
#pragma once

#include <CoreGraphics/CoreGraphics.h>

#include <utility>

#include "OrvikKitMac/CFRef.h"
#include "OrvikKitMac/CoreGraphicsCanvas.h"
#include "Tolvane/Track.h"

namespace tolvane::mac {

class CGImageArtwork final : public ArtworkImage::Content, public orvik::mac::CGViewImage {
public:
    explicit CGImageArtwork(orvik::mac::CFRef<CGImageRef> image) : CGViewImage(std::move(image)) {}

    CGImageRef image() const noexcept { return cgImage(); }  // never null

    bool equals(const Content& other) const override {
        const auto* artwork = dynamic_cast<const CGImageArtwork*>(&other);
        return artwork != nullptr && CFEqual(cgImage(), artwork->cgImage());
    }
};

}  // namespace tolvane::mac
