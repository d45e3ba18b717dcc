#include "Tolvane/Track.h"

#include <gtest/gtest.h>

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

ArtworkImage image(int value) { return ArtworkImage(std::make_shared<Pixel>(value)); }

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

}  // namespace
}  // namespace tolvane
