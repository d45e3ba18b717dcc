// The Linux preview renderer: the kit's canvas and text measurer over Cairo
// and Pango, so the menu's real view code can be seen on Linux.
//
// It approximates the Mac: the Inter font stands in for the system font,
// and each SF Symbols name the menu uses is drawn as a glyph of the Material
// Design icon font (an unknown name draws a crossed box, so it shows).
// Shapes are the kit's outlines (continuous corners for rounded rectangles);
// shadows are a box blur. Measures, layout, colours and opacities are the portable
// code's, exactly as on the Mac.
//
// One thread at a time.
#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "OrvikKit/Canvas.h"
#include "OrvikKit/Layout.h"
#include "OrvikKit/Snapshot.h"
#include "OrvikKit/StringsLocalizer.h"
#include "OrvikKit/ViewImage.h"

typedef struct _cairo_surface cairo_surface_t;

namespace orvik::cairo {

// The Material Design icon's code point standing in for an SF Symbols name,
// or nothing for a name without one.
std::optional<char32_t> symbolCodePoint(std::string_view name);

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
    PangoTextMeasurer();
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
    CairoCanvas(int pixelWidth, int pixelHeight, double scale);
    ~CairoCanvas() override;
    CairoCanvas(const CairoCanvas&) = delete;
    CairoCanvas& operator=(const CairoCanvas&) = delete;

    void fill(const PlacedShape& shape, const Paint& paint) override;
    void strokeInside(const PlacedShape& shape, double width, Rgba color) override;
    void drawText(const TextRun& run, Rect frame, Rgba color) override;
    void drawSymbol(std::string_view name, const Font& font, Rect frame, const Paint& paint) override;
    void drawImage(const ViewImage& image, Rect frame) override;
    void beginClip(const PlacedShape& shape) override;
    void endClip() override;
    void beginOpacity(double opacity) override;
    void endOpacity() override;
    void beginShadow(const ResolvedShadow& shadow) override;
    void endShadow() override;
    std::optional<std::vector<std::uint8_t>> pngData() override;

private:
    struct State;
    std::unique_ptr<State> state_;
};

// The snapshot platform of the Linux previews: Pango metrics, texts from the
// bundle's own strings tables through `localizer` (whose language is the one
// preferred localisation), Cairo bitmaps. The localiser must outlive the
// platform.
class CairoSnapshotPlatform final : public SnapshotPlatform {
public:
    explicit CairoSnapshotPlatform(const StringsLocalizer& localizer) : localizer_(localizer) {}

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
