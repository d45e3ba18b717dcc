// The Linux preview canvas: every symbol the menu draws has a stand-in
// glyph, an unknown symbol draws a visible placeholder, the bitmap comes
// out as a PNG of the asked size, every colour lands on the nearest byte,
// right-to-left texts end at their frame's right edge and a mirrored symbol
// is the reflection of the plain one.
#include "OrvikKit/CairoCanvas.h"

#include <gtest/gtest.h>

#include <cairo.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdlib>
#include <cstring>
#include <optional>
#include <set>
#include <string>
#include <utility>
#include <vector>

#include "PngPixels.h"
#include "TestSupport/BundleStrings.h"
#include "TestSupport/RecordingCanvas.h"

namespace orvik::cairo {
namespace {

TEST(PreviewFontsTest, EveryFamilyThePreviewsDrawWithIsInstalled) {
    const std::vector<std::string> missing = missingFontFamilies();
    std::string names;
    for (const std::string& family : missing) names += " \"" + family + "\"";
    EXPECT_TRUE(missing.empty()) << "missing fonts:" << names
                                 << "; scripts/install-linux-deps test installs them (Debian's fonts-inter, "
                                    "fonts-noto-core, fonts-noto-cjk, fonts-material-design-icons-iconfont)";
}

TEST(PreviewFontsTest, InterComesFirstThenTheOtherScriptsWithTheLanguagesOwnHanFormsBeforeTheOthers) {
    const std::vector<std::string> japanese = textFamilies("ja");
    ASSERT_EQ(japanese.size(), 7u);
    EXPECT_EQ(japanese[0], "Inter");
    EXPECT_EQ(japanese[1], "Noto Sans Arabic");
    EXPECT_EQ(japanese[2], "Noto Sans Hebrew");
    EXPECT_EQ(japanese[3], "Noto Sans CJK JP");
    EXPECT_EQ(textFamilies("ko")[3], "Noto Sans CJK KR");
    EXPECT_EQ(textFamilies("zh-Hant")[3], "Noto Sans CJK TC");
    EXPECT_EQ(textFamilies("zh-Hant-HK")[3], "Noto Sans CJK TC");
    EXPECT_EQ(textFamilies("zh-Hans")[3], "Noto Sans CJK SC");
    EXPECT_EQ(textFamilies("en")[3], "Noto Sans CJK SC");
    // Every face once.
    const std::vector<std::string> english = textFamilies("en");
    EXPECT_EQ(std::set<std::string>(english.begin(), english.end()).size(), english.size());
}

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
    const std::optional<testing::PngPixels> pixels = testing::PngPixels::fromData(png);
    return pixels ? pixels->at(x, y).alpha : -1;
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

// The columns with ink when "Wide text" is drawn cut to a frame `width`
// points wide at the left of a 60-point bitmap, in `direction`.
std::pair<int, int> inkOfACutText(double width, LayoutDirection direction) {
    CairoCanvas canvas(60, 16, 1);
    canvas.drawText(TextRun{"Wide text", Font{12}, 1, direction}, Rect{0, 0, width, 16}, Rgba{0, 0, 0, 1});
    const auto png = canvas.pngData();
    return png ? inkColumns(alphas(*png, 60, 16)) : std::pair<int, int>{-2, -2};
}

TEST(CairoCanvasTest, ACutTextNarrowerThanOneCharacterAndTheEllipsisDrawsNothing) {
    for (const LayoutDirection direction : {LayoutDirection::leftToRight, LayoutDirection::rightToLeft}) {
        // "W…" in 12-point Inter is about 20 points wide.
        for (const double width : {0.0, 3.0, 8.0, 12.0}) {
            EXPECT_EQ(inkOfACutText(width, direction), (std::pair<int, int>{-1, -1}))
                << "a frame " << width << " points wide";
        }
    }
}

TEST(CairoCanvasTest, ACutTextWithRoomForOneCharacterAndTheEllipsisStaysInsideItsFrame) {
    for (const LayoutDirection direction : {LayoutDirection::leftToRight, LayoutDirection::rightToLeft}) {
        const auto [first, last] = inkOfACutText(30, direction);
        EXPECT_GE(first, 0) << "something is drawn";
        EXPECT_LT(last, 30) << "nothing past the frame's right edge";
    }
}

// A 40 × 20 pill button 10 points from each edge of a 60 × 40 bitmap,
// painted with the given button focused.
std::optional<testing::PngPixels> paintedPill(std::optional<std::string_view> focused) {
    const View view =
        button("pill", [] {}, shape(Shape::capsule(), Fill::solid(Color::gray())).frame(40, 20)).padding(10);
    testsupport::FixedTextMeasurer measurer;
    const LayoutNode root = layout(view, {}, LayoutContext{.measurer = measurer, .localize = {}});
    CairoCanvas canvas(60, 40, 1);
    paint(root, canvas, Appearance::light, focused);
    const auto png = canvas.pngData();
    return png ? testing::PngPixels::fromData(*png) : std::nullopt;
}

TEST(CairoCanvasTest, TheFocusRingIsDrawnAroundTheFocusedButtonAndNowhereWithoutFocus) {
    const auto plain = paintedPill(std::nullopt);
    const auto ringed = paintedPill("pill");
    ASSERT_TRUE(plain.has_value());
    ASSERT_TRUE(ringed.has_value());
    // Two points above the pill's top edge, and two right of its end.
    for (const auto& [x, y] : {std::pair{30, 8}, std::pair{51, 20}}) {
        EXPECT_EQ(plain->at(x, y).alpha, 0) << x << ", " << y;
        const testing::Pixel ring = ringed->at(x, y);
        EXPECT_GT(ring.alpha, 100) << x << ", " << y;
        EXPECT_GT(ring.blue, ring.red) << "the focus indicator's blue";
    }
    // Inside the pill nothing changes; far outside the ring nothing is drawn.
    EXPECT_EQ(ringed->at(30, 20), plain->at(30, 20));
    EXPECT_EQ(ringed->at(2, 2).alpha, 0);
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

// --- Colours on the 8-bit grid ------------------------------------------------------

using testing::blendedByte;
using testing::nearestByte;
using testing::opaqueGrey;
using testing::Pixel;
using testing::PngPixels;

// Every level of [0, 1] that rounds to a byte is drawn as that byte: the
// byte's own level and the levels just inside either end of its rounding
// interval.
std::vector<double> levelsRoundingTo(int byte) {
    std::vector<double> levels{static_cast<double>(byte) / 255};
    if (byte > 0) levels.push_back((byte - 0.49) / 255);
    if (byte < 255) levels.push_back((byte + 0.49) / 255);
    return levels;
}

// An opaque colour whose three components take three different bytes, so
// that each channel goes through all 256 values across the loop below.
struct ByteColor {
    int red;
    int green;
    int blue;

    Pixel pixel() const { return Pixel{red, green, blue, 255}; }
    ByteColor complement() const { return ByteColor{255 - red, 255 - green, 255 - blue}; }
};

ByteColor byteColor(int byte) { return ByteColor{byte, 255 - byte, (byte * 97 + 13) % 256}; }

// `color`'s levels moved by `offset` 255ths within their rounding intervals
// (kept in [0, 1]).
Rgba levelsOf(ByteColor color, double offset) {
    const auto level = [offset](int byte) { return std::clamp((byte + offset) / 255, 0.0, 1.0); };
    return Rgba{level(color.red), level(color.green), level(color.blue), 1};
}

// Calls `check` with each of the 256 colours and every level that rounds to it.
template <class Check>
void forEveryByte(Check check) {
    for (int byte = 0; byte < 256; ++byte) {
        for (const double offset : {0.0, -0.49, 0.49}) check(byteColor(byte), levelsOf(byteColor(byte), offset));
    }
}

std::optional<PngPixels> pixelsOf(CairoCanvas& canvas) {
    const auto png = canvas.pngData();
    if (!png) return std::nullopt;
    return PngPixels::fromData(*png);
}

// The distinct colours of the fully opaque pixels in a region, and how many
// there are: what glyphs look like where they cover whole pixels.
std::set<std::array<int, 3>> opaqueColorsIn(const PngPixels& pixels, int x, int y, int width, int height,
                                            int& count) {
    std::set<std::array<int, 3>> colors;
    count = 0;
    for (int row = y; row < y + height; ++row) {
        for (int column = x; column < x + width; ++column) {
            const Pixel pixel = pixels.at(column, row);
            if (pixel.alpha != 255) continue;
            colors.insert({pixel.red, pixel.green, pixel.blue});
            ++count;
        }
    }
    return colors;
}

TEST(CairoCanvasColorTest, EachLevelIsMovedToTheNearestByte) {
    for (int byte = 0; byte < 256; ++byte) {
        for (const double level : levelsRoundingTo(byte)) {
            const Rgba onGrid = nearestByteColor(Rgba{level, level, level, 1});
            EXPECT_NEAR(onGrid.red * 255, byte, 1e-9) << level;
            EXPECT_EQ(onGrid.alpha, 1.0);
            EXPECT_NEAR(nearestByteLevel(level) * 255, byte, 1e-9) << level;
        }
    }
    EXPECT_NEAR(nearestByteLevel(0.93) * 255, 237, 1e-9);
    EXPECT_NEAR(nearestByteLevel(0.16) * 255, 41, 1e-9);
}

TEST(CairoCanvasColorTest, ATranslucentColorKeepsItsRoundedAlphaAndPremultipliedComponents) {
    // Alpha 0.0425 is 10.84 255ths: A = 11. Premultiplied, red 1 is 10.84
    // (11), green 0.5 is 5.42 (5), blue 0 is 0; handed over divided by A.
    const Rgba onGrid = nearestByteColor(Rgba{1, 0.5, 0, 0.0425});
    EXPECT_NEAR(onGrid.alpha * 255, 11, 1e-9);
    EXPECT_NEAR(onGrid.red, 1, 1e-12);
    EXPECT_NEAR(onGrid.green, 5.0 / 11, 1e-12);
    EXPECT_EQ(onGrid.blue, 0);
}

TEST(CairoCanvasColorTest, AColorWhoseAlphaRoundsToNothingIsTransparentAndLevelsOutsideTheRangeAreClamped) {
    EXPECT_EQ(nearestByteColor(Rgba{0.5, 0.5, 0.5, 0.001}), (Rgba{0, 0, 0, 0}));
    EXPECT_EQ(nearestByteColor(Rgba{1.5, -0.2, std::nan(""), 2}), (Rgba{1, 0, 0, 1}));
    EXPECT_EQ(nearestByteLevel(std::nan("")), 0);
    EXPECT_EQ(nearestByteLevel(-1), 0);
    EXPECT_EQ(nearestByteLevel(7), 1);
}

TEST(CairoCanvasColorTest, EveryByteOfAnOpaqueFillOrStrokeIsDrawnExactly) {
    forEveryByte([](ByteColor expected, Rgba color) {
        CairoCanvas canvas(40, 10, 1);
        // A pixel-aligned rectangle, a shape with antialiased edges, and a
        // border drawn inside a rectangle take different paths through Cairo.
        canvas.fill(PlacedShape{Shape::rectangle(), Rect{0, 0, 10, 10}}, Paint::solid(color));
        canvas.fill(PlacedShape{Shape::circle(), Rect{12.3, 0.3, 9.4, 9.4}}, Paint::solid(color));
        canvas.strokeInside(PlacedShape{Shape::rectangle(), Rect{24, 0, 10, 10}}, 3, color);
        const auto pixels = pixelsOf(canvas);
        ASSERT_TRUE(pixels.has_value());
        EXPECT_EQ(pixels->at(5, 5), expected.pixel()) << "rectangle, red level " << color.red;
        EXPECT_EQ(pixels->at(17, 5), expected.pixel()) << "circle, red level " << color.red;
        EXPECT_EQ(pixels->at(25, 5), expected.pixel()) << "border, red level " << color.red;
        EXPECT_EQ(pixels->at(29, 5).alpha, 0) << "inside the border";
    });
}

TEST(CairoCanvasColorTest, EveryByteOfAGradientStopIsDrawnExactly) {
    forEveryByte([](ByteColor expected, Rgba color) {
        CairoCanvas canvas(12, 4, 1);
        const Rgba other = levelsOf(expected.complement(), 0);
        Paint paint;
        paint.isGradient = true;
        paint.colorCount = 2;
        paint.colors[0] = color;
        paint.colors[1] = other;
        // Before its start and after its end a gradient keeps its end colours.
        paint.start = Point{4, 0};
        paint.end = Point{8, 0};
        canvas.fill(PlacedShape{Shape::rectangle(), Rect{0, 0, 12, 4}}, paint);
        const auto pixels = pixelsOf(canvas);
        ASSERT_TRUE(pixels.has_value());
        EXPECT_EQ(pixels->at(1, 2), expected.pixel()) << "red level " << color.red;
        EXPECT_EQ(pixels->at(11, 2), expected.complement().pixel()) << "red level " << color.red;
    });
}

TEST(CairoCanvasColorTest, EveryByteOfATextOrSymbolIsDrawnExactlyWhereItCoversWholePixels) {
    forEveryByte([](ByteColor expected, Rgba color) {
        CairoCanvas canvas(80, 48, 1);
        canvas.drawText(TextRun{"I", Font{40, FontWeight::bold}, 1}, Rect{0, 0, 30, 48}, color);
        canvas.drawSymbol("pause.fill", Font{30}, Rect{40, 4, 36, 36}, Paint::solid(color), false);
        const auto pixels = pixelsOf(canvas);
        ASSERT_TRUE(pixels.has_value());
        const std::set<std::array<int, 3>> only{{expected.red, expected.green, expected.blue}};
        int count = 0;
        EXPECT_EQ(opaqueColorsIn(*pixels, 0, 0, 40, 48, count), only) << "text, red level " << color.red;
        EXPECT_GT(count, 20) << "the stem of the I covers whole pixels";
        EXPECT_EQ(opaqueColorsIn(*pixels, 40, 0, 40, 48, count), only) << "symbol, red level " << color.red;
        EXPECT_GT(count, 20) << "the bars of the pause symbol cover whole pixels";
    });
}

TEST(CairoCanvasColorTest, EveryByteOfAShadowColorIsDrawnExactlyWhereTheShadowIsWhole) {
    forEveryByte([](ByteColor expected, Rgba color) {
        CairoCanvas canvas(70, 24, 1);
        canvas.beginShadow(ResolvedShadow{color, 2, 40, 0}, Rect{0, 0, 20, 20});
        canvas.fill(PlacedShape{Shape::rectangle(), Rect{0, 0, 20, 20}}, Paint::solid(Rgba{1, 1, 1, 1}));
        canvas.endShadow();
        const auto pixels = pixelsOf(canvas);
        ASSERT_TRUE(pixels.has_value());
        // Ten pixels inside the shadow's edges, beyond the reach of its blur.
        EXPECT_EQ(pixels->at(50, 10), expected.pixel()) << "red level " << color.red;
    });
}

TEST(CairoCanvasColorTest, ATranslucentColorBlendsAsItsRoundedPremultipliedBytesWithinOneStepOfTheExactBlend) {
    for (const int under : {0, 41, 128, 237, 255}) {
        for (int coverage = 0; coverage < 256; ++coverage) {
            for (const double alpha : levelsRoundingTo(coverage)) {
                for (const double level : {0.0, 0.16, 0.5, 0.93, 1.0}) {
                    CairoCanvas canvas(4, 4, 1);
                    canvas.fill(PlacedShape{Shape::rectangle(), Rect{0, 0, 4, 4}},
                                Paint::solid(levelsOf(ByteColor{under, under, under}, 0)));
                    canvas.fill(PlacedShape{Shape::rectangle(), Rect{0, 0, 4, 4}},
                                Paint::solid(Rgba{level, level, level, alpha}));
                    const auto pixels = pixelsOf(canvas);
                    ASSERT_TRUE(pixels.has_value());
                    const int expected = blendedByte(level, alpha, under);
                    ASSERT_EQ(pixels->at(2, 2), opaqueGrey(expected))
                        << "level " << level << " alpha " << alpha << " over " << under;
                    const double exact = 255 * (level * alpha + under / 255.0 * (1 - alpha));
                    ASSERT_LE(std::abs(expected - std::lround(exact)), 1) << "level " << level << " alpha " << alpha;
                }
            }
        }
    }
}

TEST(CairoCanvasColorTest, AnOpacityGroupIsCompositedAtTheNearestByteOfItsOpacity) {
    for (int coverage = 0; coverage < 256; ++coverage) {
        for (const double opacity : levelsRoundingTo(coverage)) {
            CairoCanvas canvas(4, 4, 1);
            canvas.fill(PlacedShape{Shape::rectangle(), Rect{0, 0, 4, 4}}, Paint::solid(Rgba{0.93, 0.93, 0.93, 1}));
            canvas.beginOpacity(opacity, Rect{0, 0, 4, 4});
            canvas.fill(PlacedShape{Shape::rectangle(), Rect{0, 0, 2, 4}}, Paint::solid(Rgba{0, 0, 0, 1}));
            canvas.fill(PlacedShape{Shape::rectangle(), Rect{2, 0, 2, 4}}, Paint::solid(Rgba{1, 1, 1, 1}));
            canvas.endOpacity();
            const auto pixels = pixelsOf(canvas);
            ASSERT_TRUE(pixels.has_value());
            // The group's black and white pixels, at alpha `coverage`, over 237.
            const int under = (237 * (255 - coverage) + 127) / 255;
            ASSERT_EQ(pixels->at(0, 0), opaqueGrey(under)) << "opacity " << opacity;
            ASSERT_EQ(pixels->at(3, 0), opaqueGrey(coverage + under)) << "opacity " << opacity;
        }
    }
}

}  // namespace
}  // namespace orvik::cairo
