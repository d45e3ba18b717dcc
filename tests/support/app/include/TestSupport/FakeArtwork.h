// Artwork the views can draw: image content that is both the app's opaque
// artwork content and a kit view image of a given size, as a platform's
// image type is.
#pragma once

#include <memory>
#include <optional>
#include <string>

#include "OrvikKit/ViewImage.h"
#include "Tolvane/MenuSnapshot.h"
#include "Tolvane/Track.h"

namespace testsupport {

class FakeArtwork final : public tolvane::ArtworkImage::Content, public orvik::ViewImage {
public:
    FakeArtwork(std::string label, double width, double height)
        : label_(std::move(label)), width_(width), height_(height) {}

    bool equals(const Content& other) const override {
        const auto* artwork = dynamic_cast<const FakeArtwork*>(&other);
        return artwork != nullptr && artwork->label_ == label_;
    }
    double width() const override { return width_; }
    double height() const override { return height_; }

private:
    std::string label_;
    double width_;
    double height_;
};

inline tolvane::ArtworkImage drawableArtwork(std::string label, double width, double height) {
    return *tolvane::MenuSnapshot::artworkImage(std::make_shared<FakeArtwork>(std::move(label), width, height));
}

}  // namespace testsupport
