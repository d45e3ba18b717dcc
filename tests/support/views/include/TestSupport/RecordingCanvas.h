// A canvas that records every draw operation with its frame, for tests that
// assert exact frames, shapes, fonts, colours and groups; and a text
// measurer with simple fixed metrics, so that those frames are known in
// advance.
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "OrvikKit/Canvas.h"
#include "OrvikKit/Layout.h"
#include "OrvikKit/Snapshot.h"

namespace testsupport {

struct DrawOperation {
    enum class Kind {
        fill,
        strokeInside,
        text,
        symbol,
        image,
        beginClip,
        endClip,
        beginOpacity,
        endOpacity,
        beginShadow,
        endShadow,
    };

    Kind kind = Kind::fill;
    orvik::Rect frame{};                // the shape's, text's, symbol's or image's frame; a group's bounds
    orvik::Shape shape{};               // fills, borders, clips
    orvik::Paint paint{};               // fills and symbols
    orvik::Rgba color{};                // borders and texts
    double width = 0;                 // borders
    std::string text{};                 // texts; symbols' names
    orvik::Font font{};                 // texts and symbols
    std::optional<int> lineLimit{};     // texts
    orvik::LayoutDirection direction = orvik::LayoutDirection::leftToRight;  // texts
    bool mirrored = false;              // symbols
    const orvik::ViewImage* image = nullptr;
    double opacity = 1;               // opacity groups
    orvik::ResolvedShadow shadow{};     // shadow groups
};

class RecordingCanvas : public orvik::BitmapCanvas {
public:
    void fill(const orvik::PlacedShape& shape, const orvik::Paint& paint) override;
    void strokeInside(const orvik::PlacedShape& shape, double width, orvik::Rgba color) override;
    void drawText(const orvik::TextRun& run, orvik::Rect frame, orvik::Rgba color) override;
    void drawSymbol(std::string_view name, const orvik::Font& font, orvik::Rect frame, const orvik::Paint& paint,
                    bool mirrored) override;
    void drawImage(const orvik::ViewImage& image, orvik::Rect frame) override;
    void beginClip(const orvik::PlacedShape& shape) override;
    void endClip() override;
    void beginOpacity(double opacity, orvik::Rect bounds) override;
    void endOpacity() override;
    void beginShadow(const orvik::ResolvedShadow& shadow, orvik::Rect bounds) override;
    void endShadow() override;
    // Not a real encoder: the bitmap's size as text, or nothing when
    // `failsToEncode` is set.
    std::optional<std::vector<std::uint8_t>> pngData() override;

    std::vector<DrawOperation> operations{};
    int pixelWidth = 0;
    int pixelHeight = 0;
    double scale = 1;
    bool failsToEncode = false;

    // The operations of `kind`, in order.
    std::vector<DrawOperation> ofKind(DrawOperation::Kind kind) const;
    // The first text or symbol operation showing `text`, or nothing.
    std::optional<DrawOperation> find(DrawOperation::Kind kind, std::string_view text) const;
    // Whether every begin has its end, innermost first.
    bool groupsBalance() const;
};

// Fixed metrics: every character (code point) of a text is 0.5 × the font
// size wide and a line is 1.25 × the size high; wrapping breaks between
// words; an ellipsis is one character. A symbol's box is as wide and as high
// as its font size. The switch is 38 × 22 at the regular size, 32 × 18
// small, 26 × 15 mini; a pop-up is its widest title plus 30 by 20.
class FixedTextMeasurer : public orvik::TextMeasurer {
public:
    orvik::Size textSize(std::string_view text, const orvik::Font& font, std::optional<double> width,
                         std::optional<int> lineLimit) override;
    orvik::Size symbolSize(std::string_view name, const orvik::Font& font) override;
    orvik::Size switchSize(orvik::ControlSize size) override;
    orvik::Size popUpSize(const std::vector<std::string>& titles, std::size_t selectedIndex) override;

    static double characterWidth(const orvik::Font& font) { return font.size * 0.5; }
    static double lineHeight(const orvik::Font& font) { return font.size * 1.25; }
    static std::size_t characters(std::string_view text);
};

// An image of a given point size, for artwork.
class FakeViewImage : public orvik::ViewImage {
public:
    FakeViewImage(double width, double height) : width_(width), height_(height) {}
    double width() const override { return width_; }
    double height() const override { return height_; }

private:
    double width_{};
    double height_{};
};

// The snapshot platform of the tests: fixed metrics, texts from the bundle's
// own strings tables in the language asked for (BundleStrings.h), the given
// localisations, recording canvases (kept for inspection).
class RecordingSnapshotPlatform : public orvik::SnapshotPlatform {
public:
    orvik::TextMeasurer& textMeasurer() override { return measurer; }
    std::string localized(const orvik::LocalizedText& text, std::string_view language) override;
    std::vector<std::string> preferredLocalizations() override { return localizations; }
    std::unique_ptr<orvik::BitmapCanvas> makeBitmap(int pixelWidth, int pixelHeight, double scale,
                                                    orvik::Appearance appearance) override;

    FixedTextMeasurer measurer{};
    std::vector<std::string> localizations{};
    bool failsToEncode = false;
    // What each bitmap recorded, in the order they were made (copied when
    // the bitmap is encoded).
    struct Bitmap {
        int pixelWidth;
        int pixelHeight;
        double scale;
        orvik::Appearance appearance;
        std::vector<DrawOperation> operations;
    };
    std::vector<Bitmap> bitmaps{};
    std::vector<std::string> languagesAsked{};
};

// A view laid out with FixedTextMeasurer and painted into a recording canvas.
struct Rendering {
    std::unique_ptr<orvik::View> view{};  // the layout points into it
    orvik::LayoutNode root{};
    RecordingCanvas canvas{};

    // The frames of the nodes of `Kind`, in tree order.
    template <class Kind>
    std::vector<orvik::Rect> framesOf() const {
        std::vector<const orvik::LayoutNode*> nodes;
        orvik::collect<Kind>(root, nodes);
        std::vector<orvik::Rect> frames;
        for (const orvik::LayoutNode* node : nodes) frames.push_back(node->frame);
        return frames;
    }
    template <class Kind>
    std::vector<const orvik::LayoutNode*> nodesOf() const {
        std::vector<const orvik::LayoutNode*> nodes;
        orvik::collect<Kind>(root, nodes);
        return nodes;
    }
};

// Lays `view` out with the fixed metrics and the English texts of the
// bundle's tables, and paints it into a recording canvas.
Rendering render(orvik::View view, orvik::ProposedSize proposal = {},
                 orvik::Appearance appearance = orvik::Appearance::light,
                 orvik::LayoutDirection direction = orvik::LayoutDirection::leftToRight);

// The colour `color` resolves to (the platform's published values).
inline orvik::Rgba resolved(const orvik::Color& color, orvik::Appearance appearance = orvik::Appearance::light) {
    return orvik::standardColor(color, appearance);
}

}  // namespace testsupport
