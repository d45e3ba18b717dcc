// A thumbnailer and an image type for tests. Bytes made by `imageBytes(label)`
// count as an image and give a FakeImage carrying that label; any other bytes
// are not an image and give nothing. Every call is recorded. Safe from any
// thread (thumbnails are made on the scripting queue).
#pragma once

#include <cstddef>
#include <cstdint>
#include <mutex>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "Tolvane/MusicScripting.h"
#include "Tolvane/Track.h"

namespace testsupport {

// An image known by its label; two are equal when their labels are.
class FakeImage final : public tolvane::ArtworkImage::Content {
public:
    explicit FakeImage(std::string label) : label_(std::move(label)) {}

    const std::string& label() const noexcept { return label_; }
    bool equals(const Content& other) const override {
        const auto* image = dynamic_cast<const FakeImage*>(&other);
        return image != nullptr && image->label_ == label_;
    }

private:
    std::string label_;
};

class FakeThumbnailer final : public tolvane::Thumbnailer {
public:
    // Bytes the thumbnailer reads as an image labelled `label`.
    static std::vector<std::uint8_t> imageBytes(std::string_view label);
    // The artwork a thumbnail of imageBytes(label) equals.
    static tolvane::ArtworkImage image(std::string_view label);

    std::optional<tolvane::ArtworkImage> thumbnail(std::span<const std::uint8_t> bytes) override;

    // The bytes of every call, in order.
    std::vector<std::vector<std::uint8_t>> calls() const;
    std::size_t callCount() const;

private:
    mutable std::mutex mutex_;
    std::vector<std::vector<std::uint8_t>> calls_;
};

}  // namespace testsupport
