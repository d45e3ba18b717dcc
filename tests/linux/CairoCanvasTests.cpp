// The Linux preview canvas: every symbol the menu draws has a stand-in
// glyph, an unknown symbol draws a visible placeholder, the bitmap comes
// out as a PNG of the asked size, right-to-left texts end at their frame's
// right edge and a mirrored symbol is the reflection of the plain one.
#include "OrvikKit/CairoCanvas.h"

#include <gtest/gtest.h>

#include <cairo.h>

#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <set>
#include <string>
#include <utility>
#include <vector>

namespace orvik::cairo {
namespace {

TEST(CairoCanvasTest, EverySymbolOfTheMenuHasAStandInGlyph) {
    const std::set<std::string> menuSymbols{
        "playpause.fill", "square.grid.2x2", "backward.fill", "forward.fill", "play.fill", "pause.fill",
        "music.note", "music.note.house", "power", "lock.shield.fill", "network.slash", "keyboard",
        "hand.raised.fill", "exclamationmark.triangle.fill", "arrow.down.circle.fill", "chevron.up.chevron.down"};
    for (const std::string& name : menuSymbols) EXPECT_TRUE(symbolCodePoint(name).has_value()) << name;
    EXPECT_FALSE(symbolCodePoint("no.such.symbol").has_value());
}

// The alpha of the pixel at (x, y) of a PNG written by the canvas, read back
// through Cairo.
int alphaAt(const std::vector<std::uint8_t>& png, int x, int y) {
    struct Reader {
        const std::vector<std::uint8_t>* bytes;
        std::size_t position = 0;
    } reader{&png};
    cairo_surface_t* surface = cairo_image_surface_create_from_png_stream(
        [](void* closure, unsigned char* data, unsigned int length) {
            auto* source = static_cast<Reader*>(closure);
            if (source->position + length > source->bytes->size()) return CAIRO_STATUS_READ_ERROR;
            std::copy_n(source->bytes->begin() + static_cast<std::ptrdiff_t>(source->position), length, data);
            source->position += length;
            return CAIRO_STATUS_SUCCESS;
        },
        &reader);
    cairo_surface_flush(surface);
    const unsigned char* data = cairo_image_surface_get_data(surface);
    const int stride = cairo_image_surface_get_stride(surface);
    std::uint32_t pixel = 0;
    std::memcpy(&pixel, data + y * stride + x * 4, sizeof pixel);
    cairo_surface_destroy(surface);
    return static_cast<int>(pixel >> 24);
}

TEST(CairoCanvasTest, AnUnknownSymbolDrawsACrossedBox) {
    CairoCanvas canvas(40, 40, 2);
    canvas.drawSymbol("no.such.symbol", Font{20}, Rect{0, 0, 20, 20}, Paint::solid(Rgba{0, 0, 0, 1}), false);
    const auto png = canvas.pngData();
    ASSERT_TRUE(png.has_value());
    EXPECT_GT(alphaAt(*png, 20, 20), 0) << "the cross passes through the middle";
    EXPECT_GT(alphaAt(*png, 1, 20), 0) << "the box's left edge";
}

// Every pixel's alpha of a PNG written by the canvas, row by row.
std::vector<std::vector<int>> alphas(const std::vector<std::uint8_t>& png, int width, int height) {
    std::vector<std::vector<int>> rows(static_cast<std::size_t>(height), std::vector<int>(static_cast<std::size_t>(width)));
    for (int y = 0; y < height; ++y) {
        for (int x = 0; x < width; ++x) rows[static_cast<std::size_t>(y)][static_cast<std::size_t>(x)] = alphaAt(png, x, y);
    }
    return rows;
}

// The leftmost and rightmost columns holding any ink, or {-1, -1}.
std::pair<int, int> inkColumns(const std::vector<std::vector<int>>& rows) {
    int first = -1;
    int last = -1;
    for (const auto& row : rows) {
        for (std::size_t x = 0; x < row.size(); ++x) {
            if (row[x] == 0) continue;
            if (first < 0 || static_cast<int>(x) < first) first = static_cast<int>(x);
            last = std::max(last, static_cast<int>(x));
        }
    }
    return {first, last};
}

TEST(CairoCanvasTest, ATextRunningFromTheRightEndsAtItsFramesRightEdgeAndOneFromTheLeftStartsAtItsLeft) {
    const auto columns = [](LayoutDirection direction) {
        CairoCanvas canvas(120, 16, 1);
        canvas.drawText(TextRun{"abc", Font{12}, 1, direction}, Rect{0, 0, 120, 16}, Rgba{0, 0, 0, 1});
        const auto png = canvas.pngData();
        return png ? inkColumns(alphas(*png, 120, 16)) : std::pair<int, int>{-1, -1};
    };
    const auto [rightToLeftFirst, rightToLeftLast] = columns(LayoutDirection::rightToLeft);
    EXPECT_GT(rightToLeftFirst, 80);
    EXPECT_GE(rightToLeftLast, 115);
    const auto [leftToRightFirst, leftToRightLast] = columns(LayoutDirection::leftToRight);
    EXPECT_LE(leftToRightFirst, 4);
    EXPECT_LT(leftToRightLast, 40);
}

TEST(CairoCanvasTest, AMirroredSymbolIsThePlainOneReflectedAboutItsFramesCentre) {
    const auto drawn = [](bool mirrored) {
        CairoCanvas canvas(40, 40, 1);
        canvas.drawSymbol("play.fill", Font{20}, Rect{10, 10, 20, 20}, Paint::solid(Rgba{0, 0, 0, 1}), mirrored);
        const auto png = canvas.pngData();
        return png ? alphas(*png, 40, 40) : std::vector<std::vector<int>>{};
    };
    const auto plain = drawn(false);
    const auto mirrored = drawn(true);
    ASSERT_EQ(plain.size(), 40u);
    ASSERT_EQ(mirrored.size(), 40u);
    int largestDifference = 0;
    int largestAsymmetry = 0;
    for (std::size_t y = 0; y < 40; ++y) {
        for (std::size_t x = 0; x < 40; ++x) {
            largestDifference = std::max(largestDifference, std::abs(mirrored[y][x] - plain[y][39 - x]));
            largestAsymmetry = std::max(largestAsymmetry, std::abs(plain[y][x] - plain[y][39 - x]));
        }
    }
    // The glyph's outline is taken from the font under the flipped matrix, so
    // edge pixels may be covered a little differently; the shape is the same.
    EXPECT_LE(largestDifference, 32);
    EXPECT_GT(largestAsymmetry, 200) << "the triangle points one way";
}

TEST(CairoCanvasTest, TheBitmapIsAPngOfTheAskedPixelSizeWithTheShapesDrawnAtScale2) {
    CairoSnapshotPlatform platform;
    const auto canvas = platform.makeBitmap(60, 20, 2, Appearance::light);
    canvas->fill(PlacedShape{Shape::rectangle(), Rect{0, 0, 10, 10}}, Paint::solid(Rgba{1, 0, 0, 1}));
    const auto png = canvas->pngData();
    ASSERT_TRUE(png.has_value());
    EXPECT_EQ(alphaAt(*png, 19, 19), 255);
    EXPECT_EQ(alphaAt(*png, 21, 5), 0);
}

TEST(CairoCanvasTest, PangoMeasuresOneLineTextsWithinTheWidthAndWrapsTheOthers) {
    PangoTextMeasurer measurer;
    const Size natural = measurer.textSize("Lia Moreno & Davi Sato", Font{11.5}, std::nullopt, 1);
    EXPECT_GT(natural.width, 60);
    const Size cut = measurer.textSize("Lia Moreno & Davi Sato", Font{11.5}, 60, 1);
    EXPECT_LE(cut.width, 60);
    EXPECT_DOUBLE_EQ(cut.height, natural.height);
    const Size wrapped = measurer.textSize("Lia Moreno & Davi Sato", Font{11.5}, 60, std::nullopt);
    EXPECT_GT(wrapped.height, natural.height);
}

}  // namespace
}  // namespace orvik::cairo
