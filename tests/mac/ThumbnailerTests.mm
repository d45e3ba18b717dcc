// ImageIO thumbnails through the thumbnailer adapter. macOS only.
#include <CoreGraphics/CoreGraphics.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>
#include <vector>

#include "GeneratedPNG.h"
#include "TolvaneMac/Adapters.h"
#include "TolvaneMac/ArtworkContent.h"

namespace tolvane::mac {
namespace {

TEST(ImageIOThumbnailerTest, AThumbnailIsAtMost128PixelsOnItsLongerSide) {
    const std::vector<std::uint8_t> png = tolvane::testing::solidPNG(600, 400);
    const auto artwork = makeThumbnailer()->thumbnail(png);
    ASSERT_TRUE(artwork.has_value());
    const auto* content = dynamic_cast<const CGImageArtwork*>(&artwork->content());
    ASSERT_NE(content, nullptr);
    EXPECT_EQ(std::max(CGImageGetWidth(content->image()), CGImageGetHeight(content->image())), 128u);
    EXPECT_LE(CGImageGetHeight(content->image()), 128u);
}

TEST(ImageIOThumbnailerTest, ThumbnailsOfTheSameImageAreEqual) {
    const std::vector<std::uint8_t> png = tolvane::testing::solidPNG(300, 300);
    const auto thumbnailer = makeThumbnailer();
    EXPECT_EQ(thumbnailer->thumbnail(png), thumbnailer->thumbnail(png));
}

TEST(ImageIOThumbnailerTest, EmptyOrNonImageBytesGiveNothing) {
    const auto thumbnailer = makeThumbnailer();
    EXPECT_EQ(thumbnailer->thumbnail({}), std::nullopt);
    const std::vector<std::uint8_t> text{'n', 'o', 't', ' ', 'a', 'n', ' ', 'i', 'm', 'a', 'g', 'e'};
    EXPECT_EQ(thumbnailer->thumbnail(text), std::nullopt);
}

}  // namespace
}  // namespace tolvane::mac
