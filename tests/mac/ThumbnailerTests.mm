// ImageIO thumbnails through the thumbnailer adapter. macOS only.
#include <CoreGraphics/CoreGraphics.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <vector>

#include "GeneratedPNG.h"
#include "OrvikKitMac/CFRef.h"
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

// The image drawn into an 8-bit RGBA sRGB bitmap, row by row; nothing when
// the bitmap cannot be made. CoreGraphics does not document whether two
// separately decoded images are CFEqual, so the test compares what they hold.
std::vector<std::uint8_t> pixels(CGImageRef image) {
    const std::size_t width = CGImageGetWidth(image);
    const std::size_t height = CGImageGetHeight(image);
    std::vector<std::uint8_t> bytes(width * height * 4);
    const auto space = orvik::mac::CFRef<CGColorSpaceRef>::adopt(CGColorSpaceCreateWithName(kCGColorSpaceSRGB));
    const auto context = orvik::mac::CFRef<CGContextRef>::adopt(
        CGBitmapContextCreate(bytes.data(), width, height, 8, width * 4, space.get(), kCGImageAlphaPremultipliedLast));
    if (!context) return {};
    const CGRect whole{.origin = {.x = 0, .y = 0},
                       .size = {.width = static_cast<CGFloat>(width), .height = static_cast<CGFloat>(height)}};
    CGContextDrawImage(context.get(), whole, image);
    return bytes;
}

CGImageRef imageOf(const ArtworkImage& artwork) {
    const auto* content = dynamic_cast<const CGImageArtwork*>(&artwork.content());
    return content != nullptr ? content->image() : nullptr;
}

TEST(ImageIOThumbnailerTest, ThumbnailsOfTheSameImageHaveTheSameSizeAndPixels) {
    const std::vector<std::uint8_t> png = tolvane::testing::solidPNG(300, 300);
    const auto thumbnailer = makeThumbnailer();
    const auto first = thumbnailer->thumbnail(png);
    const auto second = thumbnailer->thumbnail(png);
    ASSERT_TRUE(first.has_value());
    ASSERT_TRUE(second.has_value());
    CGImageRef one = imageOf(*first);
    CGImageRef other = imageOf(*second);
    ASSERT_NE(one, nullptr);
    ASSERT_NE(other, nullptr);
    EXPECT_EQ(CGImageGetWidth(one), CGImageGetWidth(other));
    EXPECT_EQ(CGImageGetHeight(one), CGImageGetHeight(other));
    const std::vector<std::uint8_t> onePixels = pixels(one);
    ASSERT_FALSE(onePixels.empty());
    EXPECT_EQ(onePixels, pixels(other));
    // Something was drawn: the generated image is opaque, so its first pixel
    // is too (the colour may pass through a colour-space conversion).
    EXPECT_EQ(onePixels[3], 0xFF);
}

TEST(ImageIOThumbnailerTest, EmptyOrNonImageBytesGiveNothing) {
    const auto thumbnailer = makeThumbnailer();
    EXPECT_EQ(thumbnailer->thumbnail({}), std::nullopt);
    const std::vector<std::uint8_t> text{'n', 'o', 't', ' ', 'a', 'n', ' ', 'i', 'm', 'a', 'g', 'e'};
    EXPECT_EQ(thumbnailer->thumbnail(text), std::nullopt);
}

}  // namespace
}  // namespace tolvane::mac
