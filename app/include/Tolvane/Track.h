// What Music is playing, with its artwork thumbnail.
//
// The artwork is an opaque, shared, immutable image handle: the portable code
// never looks inside, and the platform says when two images are equal (on
// macOS a CGImage compared with CFEqual). The app's own decisions never ask
// whether two separately made images are equal: a song that stays the same
// keeps the handle it has.
#pragma once

#include <memory>
#include <optional>

#include "TolvaneCore/NowPlaying.h"

namespace tolvane {

class ArtworkImage {
public:
    // The platform's image behind the handle.
    class Content {
    public:
        virtual ~Content() = default;
        virtual bool equals(const Content& other) const = 0;
    };

    // The handle of `content`; nothing when there is no content.
    static std::optional<ArtworkImage> from(std::shared_ptr<const Content> content) {
        if (!content) return std::nullopt;
        return ArtworkImage(std::move(content));
    }

    // Copies share the image. There is no move: a move copies, so no handle
    // is ever left without an image.
    ArtworkImage(const ArtworkImage&) = default;
    ArtworkImage& operator=(const ArtworkImage&) = default;

    const Content& content() const noexcept { return *content_; }
    const std::shared_ptr<const Content>& shared() const noexcept { return content_; }

    friend bool operator==(const ArtworkImage& lhs, const ArtworkImage& rhs) {
        return lhs.content_ == rhs.content_ || lhs.content_->equals(*rhs.content_);
    }

private:
    explicit ArtworkImage(std::shared_ptr<const Content> content) : content_(std::move(content)) {}

    std::shared_ptr<const Content> content_;  // never null
};

struct Track {
    TrackSummary summary;
    // The thumbnail (at most 128 pixels); absent when the track has none or
    // it was not fetched.
    std::optional<ArtworkImage> artwork;

    friend bool operator==(const Track&, const Track&) = default;
};

}  // namespace tolvane
