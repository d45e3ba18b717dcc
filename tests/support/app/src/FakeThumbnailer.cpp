#include "TestSupport/FakeThumbnailer.h"

#include <algorithm>
#include <memory>

namespace testsupport {

namespace {

constexpr std::string_view imageMarker = "IMG:";

}  // namespace

std::vector<std::uint8_t> FakeThumbnailer::imageBytes(std::string_view label) {
    std::string text(imageMarker);
    text += label;
    return std::vector<std::uint8_t>(text.begin(), text.end());
}

tolvane::ArtworkImage FakeThumbnailer::image(std::string_view label) {
    return *tolvane::ArtworkImage::from(std::make_shared<FakeImage>(std::string(label)));
}

std::optional<tolvane::ArtworkImage> FakeThumbnailer::thumbnail(std::span<const std::uint8_t> bytes) {
    {
        const std::lock_guard lock(mutex_);
        calls_.emplace_back(bytes.begin(), bytes.end());
    }
    if (bytes.size() < imageMarker.size() || !std::equal(imageMarker.begin(), imageMarker.end(), bytes.begin())) {
        return std::nullopt;
    }
    return image(std::string(bytes.begin() + static_cast<std::ptrdiff_t>(imageMarker.size()), bytes.end()));
}

std::vector<std::vector<std::uint8_t>> FakeThumbnailer::calls() const {
    const std::lock_guard lock(mutex_);
    return calls_;
}

std::size_t FakeThumbnailer::callCount() const {
    const std::lock_guard lock(mutex_);
    return calls_.size();
}

}  // namespace testsupport
