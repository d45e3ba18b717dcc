#include "Tolvane/Track.h"

#include <gtest/gtest.h>

#include <type_traits>
#include <utility>

namespace tolvane {
namespace {

// An image whose platform equality compares a pixel value.
class Pixel final : public ArtworkImage::Content {
public:
    explicit Pixel(int value) : value_(value) {}
    bool equals(const Content& other) const override {
        const auto* pixel = dynamic_cast<const Pixel*>(&other);
        return pixel != nullptr && pixel->value_ == value_;
    }

private:
    int value_;
};

ArtworkImage image(int value) { return *ArtworkImage::from(std::make_shared<Pixel>(value)); }

const TrackSummary summary{"So What", "Miles Davis", true};

TEST(Track, TracksWithoutArtworkAreEqualWhenTheirSummariesAre) {
    EXPECT_EQ((Track{summary, std::nullopt}), (Track{summary, std::nullopt}));
    EXPECT_NE((Track{summary, std::nullopt}), (Track{{"So What", "Miles Davis", false}, std::nullopt}));
}

TEST(Track, ArtworkPresentOnOneSideOnlyMakesTracksDiffer) {
    EXPECT_NE((Track{summary, image(1)}), (Track{summary, std::nullopt}));
}

TEST(Track, ArtworksCompareByThePlatformsEquality) {
    EXPECT_EQ((Track{summary, image(1)}), (Track{summary, image(1)}));
    EXPECT_NE((Track{summary, image(1)}), (Track{summary, image(2)}));
}

TEST(Track, TheSameImageHandleIsEqualToItself) {
    const ArtworkImage shared = image(3);
    EXPECT_EQ(shared, shared);
}

TEST(ArtworkImage, NoContentMakesNoImage) {
    EXPECT_EQ(ArtworkImage::from(nullptr), std::nullopt);
    EXPECT_NE(ArtworkImage::from(std::make_shared<Pixel>(1)), std::nullopt);
}

// A handle is never empty: it cannot be built from nothing, and a moved-from
// handle still holds its image (a move copies).
static_assert(!std::is_constructible_v<ArtworkImage, std::shared_ptr<const ArtworkImage::Content>>);
static_assert(!std::is_default_constructible_v<ArtworkImage>);

TEST(ArtworkImage, AMovedFromHandleStillHoldsItsImage) {
    ArtworkImage original = image(4);
    const ArtworkImage moved = std::move(original);
    // NOLINTNEXTLINE(bugprone-use-after-move): the point of the test
    ASSERT_NE(original.shared(), nullptr);
    EXPECT_EQ(original, moved);
    EXPECT_EQ(original, image(4));

    ArtworkImage assigned = image(5);
    assigned = std::move(original);
    EXPECT_NE(original.shared(), nullptr);
    EXPECT_EQ(assigned, image(4));
}

}  // namespace
}  // namespace tolvane
