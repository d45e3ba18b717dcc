#include "TestSupport/RecordingCanvas.h"

#include <algorithm>
#include <cmath>
#include <memory>
#include <string>

#include "TestSupport/BundleStrings.h"

namespace testsupport {

using Kind = DrawOperation::Kind;

void RecordingCanvas::fill(const orvik::PlacedShape& shape, const orvik::Paint& paint) {
    operations.push_back(DrawOperation{.kind = Kind::fill, .frame = shape.frame, .shape = shape.shape, .paint = paint});
}

void RecordingCanvas::strokeInside(const orvik::PlacedShape& shape, double width, orvik::Rgba color) {
    operations.push_back(DrawOperation{
        .kind = Kind::strokeInside, .frame = shape.frame, .shape = shape.shape, .color = color, .width = width});
}

void RecordingCanvas::drawText(const orvik::TextRun& run, orvik::Rect frame, orvik::Rgba color) {
    operations.push_back(DrawOperation{.kind = Kind::text,
                                       .frame = frame,
                                       .color = color,
                                       .text = std::string(run.text),
                                       .font = run.font,
                                       .lineLimit = run.lineLimit,
                                       .direction = run.direction});
}

void RecordingCanvas::drawSymbol(std::string_view name, const orvik::Font& font, orvik::Rect frame,
                                 const orvik::Paint& paint, bool mirrored) {
    operations.push_back(DrawOperation{.kind = Kind::symbol,
                                       .frame = frame,
                                       .paint = paint,
                                       .text = std::string(name),
                                       .font = font,
                                       .mirrored = mirrored});
}

void RecordingCanvas::drawImage(const orvik::ViewImage& image, orvik::Rect frame) {
    operations.push_back(DrawOperation{.kind = Kind::image, .frame = frame, .image = &image});
}

void RecordingCanvas::beginClip(const orvik::PlacedShape& shape) {
    operations.push_back(DrawOperation{.kind = Kind::beginClip, .frame = shape.frame, .shape = shape.shape});
}

void RecordingCanvas::endClip() { operations.push_back(DrawOperation{.kind = Kind::endClip}); }

void RecordingCanvas::beginOpacity(double opacity, orvik::Rect bounds) {
    operations.push_back(DrawOperation{.kind = Kind::beginOpacity, .frame = bounds, .opacity = opacity});
}

void RecordingCanvas::endOpacity() { operations.push_back(DrawOperation{.kind = Kind::endOpacity}); }

void RecordingCanvas::beginShadow(const orvik::ResolvedShadow& shadow, orvik::Rect bounds) {
    operations.push_back(DrawOperation{.kind = Kind::beginShadow, .frame = bounds, .shadow = shadow});
}

void RecordingCanvas::endShadow() { operations.push_back(DrawOperation{.kind = Kind::endShadow}); }

std::optional<std::vector<std::uint8_t>> RecordingCanvas::pngData() {
    if (failsToEncode) return std::nullopt;
    const std::string description = std::to_string(pixelWidth) + "x" + std::to_string(pixelHeight);
    return std::vector<std::uint8_t>(description.begin(), description.end());
}

std::vector<DrawOperation> RecordingCanvas::ofKind(Kind kind) const {
    std::vector<DrawOperation> found;
    std::copy_if(operations.begin(), operations.end(), std::back_inserter(found),
                 [kind](const DrawOperation& operation) { return operation.kind == kind; });
    return found;
}

std::optional<DrawOperation> RecordingCanvas::find(Kind kind, std::string_view text) const {
    for (const DrawOperation& operation : operations) {
        if (operation.kind == kind && operation.text == text) return operation;
    }
    return std::nullopt;
}

bool RecordingCanvas::groupsBalance() const {
    std::vector<Kind> open;
    for (const DrawOperation& operation : operations) {
        switch (operation.kind) {
        case Kind::beginClip:
        case Kind::beginOpacity:
        case Kind::beginShadow: open.push_back(operation.kind); break;
        case Kind::endClip:
            if (open.empty() || open.back() != Kind::beginClip) return false;
            open.pop_back();
            break;
        case Kind::endOpacity:
            if (open.empty() || open.back() != Kind::beginOpacity) return false;
            open.pop_back();
            break;
        case Kind::endShadow:
            if (open.empty() || open.back() != Kind::beginShadow) return false;
            open.pop_back();
            break;
        default: break;
        }
    }
    return open.empty();
}

std::size_t FixedTextMeasurer::characters(std::string_view text) {
    return static_cast<std::size_t>(std::count_if(text.begin(), text.end(), [](char byte) {
        return (static_cast<unsigned char>(byte) & 0xC0u) != 0x80u;
    }));
}

orvik::Size FixedTextMeasurer::textSize(std::string_view text, const orvik::Font& font, std::optional<double> width,
                                        std::optional<int> lineLimit) {
    const double character = characterWidth(font);
    const double natural = static_cast<double>(characters(text)) * character;
    const double line = lineHeight(font);
    if (!width || natural <= *width) return orvik::Size{natural, line};
    if (lineLimit == 1) return orvik::Size{*width, line};

    // Greedy word wrapping at `width`; a word longer than a line is broken.
    const auto perLine = static_cast<std::size_t>(std::max(1.0, std::floor(*width / character)));
    std::size_t lines = 1;
    std::size_t used = 0;
    std::size_t widest = 0;
    std::size_t start = 0;
    while (start <= text.size()) {
        std::size_t end = text.find(' ', start);
        if (end == std::string_view::npos) end = text.size();
        std::size_t word = characters(text.substr(start, end - start));
        const std::size_t needed = used == 0 ? word : used + 1 + word;
        if (needed <= perLine) {
            used = needed;
        } else {
            widest = std::max(widest, used);
            if (used > 0) ++lines;
            while (word > perLine) {
                ++lines;
                word -= perLine;
                widest = perLine;
            }
            used = word;
        }
        if (end == text.size()) break;
        start = end + 1;
    }
    widest = std::max(widest, used);
    return orvik::Size{std::min(*width, static_cast<double>(widest) * character), static_cast<double>(lines) * line};
}

orvik::Size FixedTextMeasurer::symbolSize(std::string_view, const orvik::Font& font) {
    return orvik::Size{font.size, font.size};
}

orvik::Size FixedTextMeasurer::switchSize(orvik::ControlSize size) {
    switch (size) {
    case orvik::ControlSize::mini: return orvik::Size{26, 15};
    case orvik::ControlSize::small: return orvik::Size{32, 18};
    case orvik::ControlSize::regular:
    case orvik::ControlSize::large: return orvik::Size{38, 22};
    }
    return orvik::Size{38, 22};
}

orvik::Size FixedTextMeasurer::popUpSize(const std::vector<std::string>& titles, std::size_t) {
    double widest = 0;
    for (const std::string& title : titles) {
        widest = std::max(widest, static_cast<double>(characters(title)) * characterWidth(orvik::Font{13}));
    }
    return orvik::Size{widest + 30, 20};
}

std::string RecordingSnapshotPlatform::localized(const orvik::LocalizedText& text, std::string_view language) {
    languagesAsked.emplace_back(language);
    return bundleLocalizer(language).localized(text);
}

namespace {

// Hands its operations to the platform when it is encoded.
class ReportingCanvas final : public RecordingCanvas {
public:
    ReportingCanvas(RecordingSnapshotPlatform& platform, orvik::Appearance appearance)
        : platform_(platform), appearance_(appearance) {}

    std::optional<std::vector<std::uint8_t>> pngData() override {
        platform_.bitmaps.push_back({pixelWidth, pixelHeight, scale, appearance_, operations});
        return RecordingCanvas::pngData();
    }

private:
    RecordingSnapshotPlatform& platform_;
    orvik::Appearance appearance_;
};

}  // namespace

std::unique_ptr<orvik::BitmapCanvas> RecordingSnapshotPlatform::makeBitmap(int pixelWidth, int pixelHeight,
                                                                           double scale,
                                                                           orvik::Appearance appearance) {
    auto canvas = std::make_unique<ReportingCanvas>(*this, appearance);
    canvas->pixelWidth = pixelWidth;
    canvas->pixelHeight = pixelHeight;
    canvas->scale = scale;
    canvas->failsToEncode = failsToEncode;
    return canvas;
}

Rendering render(orvik::View view, orvik::ProposedSize proposal, orvik::Appearance appearance,
                 orvik::LayoutDirection direction) {
    Rendering rendering;
    rendering.view = std::make_unique<orvik::View>(std::move(view));
    FixedTextMeasurer measurer;
    rendering.root = orvik::layout(
        *rendering.view, proposal,
        orvik::LayoutContext{.measurer = measurer,
                             .localize = [](const orvik::LocalizedText& text) { return bundleLocalizer("en").localized(text); },
                             .direction = direction});
    orvik::paint(rendering.root, rendering.canvas, appearance);
    return rendering;
}

}  // namespace testsupport
