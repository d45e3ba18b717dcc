// The kit's canvas and text measurer over CoreGraphics, CoreText and AppKit,
// for the popover's host view and for snapshots. Plain C++ over the
// CoreGraphics types; included by .mm files only (it needs the Apple
// headers).
//
// The canvas paints in a context whose user space is the view tree's: points,
// origin at the top left, y growing downwards (a flipped view's context, or a
// bitmap context flipped and scaled by `makeBitmapCanvas`). It decides
// nothing: frames, colours, radii and opacities come from the laid-out tree.
//
// Main thread only.
#pragma once

#include <CoreGraphics/CoreGraphics.h>

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "OrvikKit/Canvas.h"
#include "OrvikKit/Layout.h"
#include "OrvikKit/Snapshot.h"
#include "OrvikKit/ViewImage.h"
#include "OrvikKitMac/CFRef.h"

namespace orvik::mac {

// An image the CoreGraphics canvas draws: a CGImage, owned, whose size in
// points is its pixel size.
class CGViewImage : public ViewImage {
public:
    explicit CGViewImage(CFRef<CGImageRef> image);  // never null

    double width() const override;
    double height() const override;
    CGImageRef cgImage() const noexcept { return image_.get(); }

private:
    CFRef<CGImageRef> image_;
};

// Texts measured with CoreText in the system font, symbols with AppKit's
// symbol images, the switch and the pop-up menu with the real controls'
// fitting sizes.
class CoreTextMeasurer final : public TextMeasurer {
public:
    Size textSize(std::string_view text, const Font& font, std::optional<double> width,
                  std::optional<int> lineLimit) override;
    Size symbolSize(std::string_view name, const Font& font) override;
    Size switchSize(ControlSize size) override;
    Size popUpSize(const std::vector<std::string>& titles, std::size_t selectedIndex) override;
};

// The outline of a placed shape as a CGPath: the kit's portable outline
// (ShapePath.h), element by element, so that the Mac draws exactly the
// shapes of the Linux previews.
CFRef<CGPathRef> shapePath(const PlacedShape& shape);

// Where the canvas resolves the system's dynamic colours (labels, the
// separator, the accent colour).
enum class SystemColors : std::uint8_t {
    // Under Aqua or Dark Aqua, as each call's appearance says: snapshots,
    // which draw both on any Mac.
    underNamedAppearance,
    // Under the current drawing appearance, which a view sets to its own
    // effective appearance while it draws (with its accessibility variants,
    // such as Increase Contrast).
    underCurrentDrawingAppearance,
};

// A canvas over `context`, which must outlive it. `shadowScale` is the
// number of base-space units per point: shadow offsets and blurs are given
// to CoreGraphics in base space, which the current transform does not
// scale (1 in a view's context, the pixel scale in a bitmap context).
class CoreGraphicsCanvas final : public Canvas {
public:
    CoreGraphicsCanvas(CGContextRef context, double shadowScale,
                       SystemColors systemColors = SystemColors::underNamedAppearance);

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
    // The system's dynamic colours resolved as `SystemColors` says (named
    // colours, label levels, the separator); sRGB colours as they stand.
    Rgba resolve(const Color& color, Appearance appearance) override;

private:
    CGContextRef context_;
    double shadowScale_;
    SystemColors systemColors_;
};

// A transparent sRGB bitmap of the given pixel size whose canvas draws
// `scale` pixels per point and encodes PNG with ImageIO; null when
// CoreGraphics cannot make it.
std::unique_ptr<BitmapCanvas> makeBitmapCanvas(int pixelWidth, int pixelHeight, double scale);

// The snapshot platform of the Mac app: CoreText metrics, the main bundle's
// strings and localisations, CoreGraphics bitmaps.
std::unique_ptr<SnapshotPlatform> makeSnapshotPlatform();

}  // namespace orvik::mac
