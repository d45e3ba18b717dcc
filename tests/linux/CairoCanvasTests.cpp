// The Linux preview canvas: every symbol the menu draws has a stand-in
// glyph, an unknown symbol draws a visible placeholder, and the bitmap comes
// out as a PNG of the asked size.
#include "OrvikKit/CairoCanvas.h"

#include <gtest/gtest.h>

#include <cairo.h>

#include <algorithm>
#include <cstring>
#include <set>
#include <string>
#include <vector>

#include "TestSupport/BundleStrings.h"

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
    canvas.drawSymbol("no.such.symbol", Font{20}, Rect{0, 0, 20, 20}, Paint::solid(Rgba{0, 0, 0, 1}));
    const auto png = canvas.pngData();
    ASSERT_TRUE(png.has_value());
    EXPECT_GT(alphaAt(*png, 20, 20), 0) << "the cross passes through the middle";
    EXPECT_GT(alphaAt(*png, 1, 20), 0) << "the box's left edge";
}

TEST(CairoCanvasTest, TheBitmapIsAPngOfTheAskedPixelSizeWithTheShapesDrawnAtScale2) {
    const StringsLocalizer localizer({}, "en");
    CairoSnapshotPlatform platform(localizer);
    const auto canvas = platform.makeBitmap(60, 20, 2, Appearance::light);
    canvas->fill(PlacedShape{Shape::rectangle(), Rect{0, 0, 10, 10}}, Paint::solid(Rgba{1, 0, 0, 1}));
    const auto png = canvas->pngData();
    ASSERT_TRUE(png.has_value());
    EXPECT_EQ(alphaAt(*png, 19, 19), 255);
    EXPECT_EQ(alphaAt(*png, 21, 5), 0);
}

TEST(CairoCanvasTest, TheSnapshotPlatformShowsTheTextsOfItsLocalizersLanguage) {
    const StringsLocalizer german(testsupport::bundleResourceFolders(), "de-CH");
    CairoSnapshotPlatform platform(german);
    EXPECT_EQ(platform.preferredLocalizations(), std::vector<std::string>{german.language()});
    EXPECT_EQ(platform.localized(kitText("Quit"), german.language()), german.localized(kitText("Quit")));
    const StringsLocalizer english(testsupport::bundleResourceFolders(), "en");
    CairoSnapshotPlatform englishPlatform(english);
    EXPECT_EQ(englishPlatform.preferredLocalizations(), std::vector<std::string>{"en"});
    EXPECT_EQ(englishPlatform.localized(appText("Keys sent: %lld", {"4"}), "en"), "Keys sent: 4");
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
