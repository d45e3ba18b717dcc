// The Linux preview renderer: the kit's canvas and text measurer over Cairo
// and Pango, so the menu's real view code can be seen on Linux.
//
// It approximates the Mac: the Inter font stands in for the system font,
// and each SF Symbols name the menu uses is drawn as a glyph of the Material
// Design icon font (an unknown name draws a crossed box, so it shows).
// Shapes are the kit's outlines (continuous corners for rounded rectangles);
// shadows are a box blur. Measures, layout, colours and opacities are the portable
// code's, exactly as on the Mac, and every colour lands on the nearest 8-bit
// value (nearestByteColor).
//
// One thread at a time.
#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "OrvikKit/Canvas.h"
#include "OrvikKit/Layout.h"
#include "OrvikKit/Snapshot.h"
#include "OrvikKit/StringsLocalizer.h"
#include "OrvikKit/ViewImage.h"

typedef struct _cairo cairo_t;
typedef struct _cairo_pattern cairo_pattern_t;
typedef struct _cairo_surface cairo_surface_t;

namespace orvik::cairo {

// The Material Design icon's code point standing in for an SF Symbols name,
// or nothing for a name without one.
std::optional<char32_t> symbolCodePoint(std::string_view name);

// The font families texts in `language` are drawn in, in the order Pango
// tries them for each character: Inter, then Noto for Arabic and Hebrew,
// then Noto's Chinese, Japanese and Korean faces, the language's own first
// (its forms of the characters those languages share).
std::vector<std::string> textFamilies(std::string_view language);

// The font families the previews draw with (every language's, and the
// symbol font) that this machine lacks; Pango would draw their texts in
// another font or as empty boxes.
std::vector<std::string> missingFontFamilies();

// Colours on the 8-bit grid of an ARGB32 bitmap.
//
// Cairo keeps a source colour as doubles and hands its rasteriser
// premultiplied components scaled to 16 bits; a solid colour then reaches an
// ARGB32 bitmap as the high byte of each, which divides by 256 where a byte
// is 1/255: white 0.93 becomes 60948 = 0xEE14 and is drawn as 238, though
// the nearest byte, round(0.93 x 255), is 237; 0.16 becomes 10486 = 0x28F6
// and is drawn as 40, not 41. A level of exactly
// b/255 becomes b x 257 = 0xbbbb, whose high byte is b, so a colour moved
// onto that grid first comes out as b on every path: solid fills, strokes,
// glyphs, masks and gradient stops (whose interpolation divides the 16-bit
// value by 257 and rounds).
//
// The rule, with the colour's components c and alpha a in [0, 1]: the alpha
// lands on A = round(255 a), each premultiplied component on
// P = round(255 c a), and the colour is handed to Cairo unpremultiplied
// (P / A, A / 255) as Cairo takes it. An opaque colour is drawn as
// round(255 c). A translucent one drawn over a bitmap byte D gives
// P + round(D (255 - A) / 255), the rounded 8-bit blend of premultiplied
// bytes, which is within one step of the exact blend
// 255 (c a + (D / 255) (1 - a)).
// A colour whose alpha rounds to 0 is transparent black. Components outside
// [0, 1] (or not numbers) are taken as the nearest end (or 0).
Rgba nearestByteColor(Rgba color);

// An alpha or opacity level on the same grid: round(255 level) / 255.
double nearestByteLevel(double level);

// `color`, moved onto the grid, as the source of `cr`.
void setSourceColor(cairo_t* cr, Rgba color);

// `color`, moved onto the grid, as a stop of a gradient pattern.
void addColorStop(cairo_pattern_t* pattern, double offset, Rgba color);

// An image Cairo can draw: a surface and its size in points.
class CairoImage : public ViewImage {
public:
    // Takes a reference to `surface`.
    CairoImage(cairo_surface_t* surface, double widthInPoints, double heightInPoints);
    ~CairoImage() override;
    CairoImage(const CairoImage&) = delete;
    CairoImage& operator=(const CairoImage&) = delete;

    double width() const override { return width_; }
    double height() const override { return height_; }
    cairo_surface_t* surface() const noexcept { return surface_; }

private:
    cairo_surface_t* surface_;
    double width_;
    double height_;
};

class PangoTextMeasurer final : public TextMeasurer {
public:
    // Measures texts of `language` (a localisation name such as "ja").
    explicit PangoTextMeasurer(std::string_view language = "en");
    ~PangoTextMeasurer() override;
    PangoTextMeasurer(const PangoTextMeasurer&) = delete;
    PangoTextMeasurer& operator=(const PangoTextMeasurer&) = delete;

    Size textSize(std::string_view text, const Font& font, std::optional<double> width,
                  std::optional<int> lineLimit) override;
    Size symbolSize(std::string_view name, const Font& font) override;
    Size switchSize(ControlSize size) override;
    Size popUpSize(const std::vector<std::string>& titles, std::size_t selectedIndex) override;

private:
    struct Context;
    std::unique_ptr<Context> context_;
};

// A canvas over an ARGB bitmap that encodes PNG.
class CairoCanvas final : public BitmapCanvas {
public:
    // Draws texts of `language` (a localisation name such as "ja").
    CairoCanvas(int pixelWidth, int pixelHeight, double scale, std::string_view language = "en");
    ~CairoCanvas() override;
    CairoCanvas(const CairoCanvas&) = delete;
    CairoCanvas& operator=(const CairoCanvas&) = delete;

    void fill(const PlacedShape& shape, const Paint& paint) override;
    void strokeInside(const PlacedShape& shape, double width, Rgba color) override;
    void drawText(const TextRun& run, Rect frame, Rgba color) override;
    void drawSymbol(std::string_view name, const Font& font, Rect frame, const Paint& paint,
                    bool mirrored) override;
    void drawImage(const ViewImage& image, Rect frame) override;
    void beginClip(const PlacedShape& shape) override;
    void endClip() override;
    void beginOpacity(double opacity, Rect bounds) override;
    void endOpacity() override;
    void beginShadow(const ResolvedShadow& shadow, Rect bounds) override;
    void endShadow() override;
    std::optional<std::vector<std::uint8_t>> pngData() override;

private:
    struct State;
    std::unique_ptr<State> state_;
};

// The snapshot platform of the Linux previews: Pango metrics, texts from the
// bundle's own strings tables through `localizer`, Cairo bitmaps. The
// localiser's language is the one preferred localisation, which the pictures
// are named after and laid out for. The localiser must outlive the platform.
class CairoSnapshotPlatform final : public SnapshotPlatform {
public:
    explicit CairoSnapshotPlatform(const StringsLocalizer& localizer)
        : measurer_(localizer.language()), localizer_(localizer) {}

    TextMeasurer& textMeasurer() override { return measurer_; }
    std::string localized(const LocalizedText& text, std::string_view language) override;
    std::vector<std::string> preferredLocalizations() override { return {localizer_.language()}; }
    std::unique_ptr<BitmapCanvas> makeBitmap(int pixelWidth, int pixelHeight, double scale,
                                             Appearance appearance) override;

private:
    PangoTextMeasurer measurer_;
    const StringsLocalizer& localizer_;
};

}  // namespace orvik::cairo
