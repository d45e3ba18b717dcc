// The kit's canvas, text measurer, bitmap and snapshot platform over
// CoreGraphics, CoreText, ImageIO and AppKit. Everything drawn here was laid
// out and resolved by the portable kit; these functions translate it.
#import <AppKit/AppKit.h>
#include <CoreGraphics/CoreGraphics.h>
#include <CoreText/CoreText.h>
#include <ImageIO/ImageIO.h>

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <optional>
#include <utility>

#include "OrvikKit/ShapePath.h"
#include "OrvikKitMac/CoreGraphicsCanvas.h"
#include "OrvikKitMac/BaseAdapters.h"
#import "OrvikKitMac/Strings.h"

namespace orvik::mac {

namespace {

NSFontWeight platformWeight(FontWeight weight) {
    switch (weight) {
    case FontWeight::regular: return NSFontWeightRegular;
    case FontWeight::medium: return NSFontWeightMedium;
    case FontWeight::semibold: return NSFontWeightSemibold;
    case FontWeight::bold: return NSFontWeightBold;
    }
    return NSFontWeightRegular;
}

NSFont* systemFont(const Font& font) { return [NSFont systemFontOfSize:font.size weight:platformWeight(font.weight)]; }

CGRect platformRect(const Rect& rect) {
    return CGRect{.origin = {.x = rect.x, .y = rect.y}, .size = {.width = rect.width, .height = rect.height}};
}

CFRef<CGColorRef> platformColor(const Rgba& color) {
    return CFRef<CGColorRef>::adopt(CGColorCreateSRGB(color.red, color.green, color.blue, color.alpha));
}

// --- Text -------------------------------------------------------------------------

// One typeset line and its typographic metrics.
struct TypesetLine {
    CFRef<CTLineRef> line;
    double width = 0;
    double ascent = 0;
    double height = 0;  // ascent + descent + leading
};

TypesetLine measured(CFRef<CTLineRef> line) {
    CGFloat ascent = 0;
    CGFloat descent = 0;
    CGFloat leading = 0;
    const double width = CTLineGetTypographicBounds(line.get(), &ascent, &descent, &leading);
    return TypesetLine{.line = std::move(line), .width = width, .ascent = ascent, .height = ascent + descent + leading};
}

// The text in the system font, drawn in the context's fill colour; with a
// base writing direction when one is given (drawing), as CoreText's natural
// direction otherwise (measuring, where the direction changes no width).
NSAttributedString* attributedText(NSString* text, const Font& font,
                                   std::optional<LayoutDirection> direction = std::nullopt) {
    if (!direction) {
        NSDictionary* attributes = @{
            (__bridge NSString*)kCTFontAttributeName : systemFont(font),
            (__bridge NSString*)kCTForegroundColorFromContextAttributeName : @YES,
        };
        return [[NSAttributedString alloc] initWithString:text attributes:attributes];
    }
    const CTWritingDirection writingDirection =
        *direction == LayoutDirection::rightToLeft ? kCTWritingDirectionRightToLeft : kCTWritingDirectionLeftToRight;
    // Specifier, value size, value: initialised in the order of its fields.
    const CTParagraphStyleSetting setting{kCTParagraphStyleSpecifierBaseWritingDirection, sizeof writingDirection,
                                          &writingDirection};
    const auto paragraphStyle = CFRef<CTParagraphStyleRef>::adopt(CTParagraphStyleCreate(&setting, 1));
    NSDictionary* attributes = @{
        (__bridge NSString*)kCTFontAttributeName : systemFont(font),
        (__bridge NSString*)kCTForegroundColorFromContextAttributeName : @YES,
        (__bridge NSString*)kCTParagraphStyleAttributeName : (__bridge id)paragraphStyle.get(),
    };
    return [[NSAttributedString alloc] initWithString:text attributes:attributes];
}

double lineWidth(CTLineRef line) { return CTLineGetTypographicBounds(line, nullptr, nullptr, nullptr); }

// `line`, the text of `typesetter` from `start` on, cut at `width` with an
// ellipsis at the end; as it stands when it fits. A cut line shows at least
// one whole character before its ellipsis: where not even that fits, the
// line keeps its height but shows nothing (no line to draw, no width),
// rather than an ellipsis alone or glyphs past the frame.
TypesetLine truncatedAtEnd(CFRef<CTLineRef> line, CTTypesetterRef typesetter, CFStringRef string, CFIndex start,
                           double width, const Font& font) {
    if (lineWidth(line.get()) <= width) return measured(std::move(line));
    const auto token = CFRef<CTLineRef>::adopt(
        CTLineCreateWithAttributedString((__bridge CFAttributedStringRef)attributedText(@"\u2026", font)));
    const CFRange first = CFStringGetRangeOfComposedCharactersAtIndex(string, start);
    const auto firstCharacter = CFRef<CTLineRef>::adopt(CTTypesetterCreateLine(typesetter, first));
    auto truncated = lineWidth(firstCharacter.get()) + lineWidth(token.get()) <= width
                         ? CFRef<CTLineRef>::adopt(
                               CTLineCreateTruncatedLine(line.get(), width, kCTLineTruncationEnd, token.get()))
                         : CFRef<CTLineRef>{};
    if (truncated) return measured(std::move(truncated));
    TypesetLine nothing = measured(std::move(line));
    nothing.line = CFRef<CTLineRef>{};
    nothing.width = 0;
    return nothing;
}

// The lines of a text as the layout asks for them: one line at its natural
// width; one line cut with an ellipsis at `width`; or wrapped at word
// boundaries within `width` (at most `lineLimit` lines, the last one cut).
std::vector<TypesetLine> typeset(std::string_view text, const Font& font, std::optional<double> width,
                                 std::optional<int> lineLimit, std::optional<LayoutDirection> direction = std::nullopt) {
    NSString* string = platformString(text);
    NSAttributedString* attributed = attributedText(string != nil ? string : @"", font, direction);
    const auto cfText = (__bridge CFAttributedStringRef)attributed;
    const auto cfString = (__bridge CFStringRef)attributed.string;
    const auto length = static_cast<CFIndex>(attributed.length);
    std::vector<TypesetLine> lines;
    if (!width || lineLimit == 1 || length == 0) {
        auto line = CFRef<CTLineRef>::adopt(CTLineCreateWithAttributedString(cfText));
        if (!width || length == 0 || lineWidth(line.get()) <= *width) {
            lines.push_back(measured(std::move(line)));
            return lines;
        }
        const auto typesetter = CFRef<CTTypesetterRef>::adopt(CTTypesetterCreateWithAttributedString(cfText));
        lines.push_back(truncatedAtEnd(std::move(line), typesetter.get(), cfString, 0, *width, font));
        return lines;
    }
    const auto typesetter = CFRef<CTTypesetterRef>::adopt(CTTypesetterCreateWithAttributedString(cfText));
    CFIndex start = 0;
    while (start < length) {
        if (lineLimit && static_cast<int>(lines.size()) == *lineLimit - 1) {
            // The last line allowed takes the rest, cut with an ellipsis.
            auto rest = CFRef<CTLineRef>::adopt(
                CTTypesetterCreateLine(typesetter.get(), CFRange{.location = start, .length = length - start}));
            lines.push_back(truncatedAtEnd(std::move(rest), typesetter.get(), cfString, start, *width, font));
            break;
        }
        CFIndex count = CTTypesetterSuggestLineBreak(typesetter.get(), start, *width);
        if (count <= 0) count = 1;  // a glyph wider than the line still takes a line
        lines.push_back(measured(CFRef<CTLineRef>::adopt(
            CTTypesetterCreateLine(typesetter.get(), CFRange{.location = start, .length = count}))));
        start += count;
    }
    return lines;
}

// --- Shapes -----------------------------------------------------------------------

// Fills the current clip with `paint`: one colour, or the linear gradient
// with its colours spread evenly from start to end and extended beyond.
void fillClip(CGContextRef context, const Paint& paint, CGRect bounds) {
    if (!paint.isGradient || paint.colorCount < 2) {
        const auto color = platformColor(paint.color());
        CGContextSetFillColorWithColor(context, color.get());
        CGContextFillRect(context, bounds);
        return;
    }
    CGFloat components[Paint::maxStops * 4];
    for (std::size_t index = 0; index < paint.colorCount; ++index) {
        components[index * 4 + 0] = paint.colors[index].red;
        components[index * 4 + 1] = paint.colors[index].green;
        components[index * 4 + 2] = paint.colors[index].blue;
        components[index * 4 + 3] = paint.colors[index].alpha;
    }
    const auto space = CFRef<CGColorSpaceRef>::adopt(CGColorSpaceCreateWithName(kCGColorSpaceSRGB));
    // No locations: the colours sit at equal intervals from 0 to 1.
    const auto gradient = CFRef<CGGradientRef>::adopt(
        CGGradientCreateWithColorComponents(space.get(), components, nullptr, paint.colorCount));
    CGContextDrawLinearGradient(context, gradient.get(), CGPoint{.x = paint.start.x, .y = paint.start.y},
                                CGPoint{.x = paint.end.x, .y = paint.end.y},
                                kCGGradientDrawsBeforeStartLocation | kCGGradientDrawsAfterEndLocation);
}

// The symbol image at the font's point size and weight; nil for an unknown
// name.
NSImage* symbolImage(std::string_view name, const Font& font) {
    NSString* symbolName = platformString(name);
    if (symbolName == nil) return nil;
    NSImage* image = [NSImage imageWithSystemSymbolName:symbolName accessibilityDescription:nil];
    if (image == nil) return nil;
    NSImageSymbolConfiguration* configuration =
        [NSImageSymbolConfiguration configurationWithPointSize:font.size weight:platformWeight(font.weight)];
    return [image imageWithSymbolConfiguration:configuration];
}

// Draws `image` in `rect` of a flipped context through AppKit, upright.
void drawUpright(CGContextRef context, NSImage* image, CGRect rect) {
    [NSGraphicsContext saveGraphicsState];
    NSGraphicsContext.currentContext = [NSGraphicsContext graphicsContextWithCGContext:context flipped:YES];
    [image drawInRect:rect];  // respects the context's flippedness
    [NSGraphicsContext restoreGraphicsState];
}

NSColor* systemColor(const Color& color) {
    switch (color.kind) {
    case Color::Kind::named:
        switch (color.named) {
        case NamedColor::gray: return NSColor.systemGrayColor;
        case NamedColor::green: return NSColor.systemGreenColor;
        case NamedColor::orange: return NSColor.systemOrangeColor;
        case NamedColor::pink: return NSColor.systemPinkColor;
        case NamedColor::white: return NSColor.whiteColor;
        case NamedColor::black: return NSColor.blackColor;
        case NamedColor::accent: return NSColor.controlAccentColor;
        case NamedColor::keyboardFocusIndicator: return NSColor.keyboardFocusIndicatorColor;
        }
        return nil;
    case Color::Kind::hierarchical:
        switch (color.style) {
        case HierarchicalStyle::primary: return NSColor.labelColor;
        case HierarchicalStyle::secondary: return NSColor.secondaryLabelColor;
        case HierarchicalStyle::tertiary: return NSColor.tertiaryLabelColor;
        }
        return nil;
    case Color::Kind::separator: return NSColor.separatorColor;
    case Color::Kind::sRGB: return nil;
    }
    return nil;
}

}  // namespace

// --- Shape paths -----------------------------------------------------------------

CFRef<CGPathRef> shapePath(const PlacedShape& shape) {
    CGMutablePathRef path = CGPathCreateMutable();
    for (const PathElement& element : outline(shape)) {
        const auto& points = element.points;
        switch (element.kind) {
        case PathElement::Kind::moveTo: CGPathMoveToPoint(path, nullptr, points[0].x, points[0].y); break;
        case PathElement::Kind::lineTo: CGPathAddLineToPoint(path, nullptr, points[0].x, points[0].y); break;
        case PathElement::Kind::curveTo:
            CGPathAddCurveToPoint(path, nullptr, points[0].x, points[0].y, points[1].x, points[1].y, points[2].x,
                                  points[2].y);
            break;
        case PathElement::Kind::close: CGPathCloseSubpath(path); break;
        }
    }
    return CFRef<CGPathRef>::adopt(path);
}

// --- CGViewImage ------------------------------------------------------------------

CGViewImage::CGViewImage(CFRef<CGImageRef> image) : image_(std::move(image)) {}

double CGViewImage::width() const { return static_cast<double>(CGImageGetWidth(image_.get())); }
double CGViewImage::height() const { return static_cast<double>(CGImageGetHeight(image_.get())); }

// --- CoreTextMeasurer -------------------------------------------------------------

Size CoreTextMeasurer::textSize(std::string_view text, const Font& font, std::optional<double> width,
                                std::optional<int> lineLimit) {
    Size size;
    for (const TypesetLine& line : typeset(text, font, width, lineLimit)) {
        size.width = std::max(size.width, line.width);
        size.height += line.height;
    }
    if (width) size.width = std::min(size.width, *width);
    return size;
}

Size CoreTextMeasurer::symbolSize(std::string_view name, const Font& font) {
    NSImage* image = symbolImage(name, font);
    if (image == nil) return Size{font.size, font.size};  // the empty box an unknown symbol leaves
    return Size{image.size.width, image.size.height};
}

Size CoreTextMeasurer::switchSize(ControlSize size) {
    NSSwitch* control = [[NSSwitch alloc] initWithFrame:NSRect{}];
    switch (size) {
    case ControlSize::mini: control.controlSize = NSControlSizeMini; break;
    case ControlSize::small: control.controlSize = NSControlSizeSmall; break;
    case ControlSize::regular: control.controlSize = NSControlSizeRegular; break;
    case ControlSize::large:
        if (@available(macOS 11.0, *)) {
            control.controlSize = NSControlSizeLarge;
        } else {
            control.controlSize = NSControlSizeRegular;
        }
        break;
    }
    const NSSize fitting = control.fittingSize;
    return Size{fitting.width, fitting.height};
}

Size CoreTextMeasurer::popUpSize(const std::vector<std::string>& titles, std::size_t selectedIndex) {
    NSPopUpButton* control = [[NSPopUpButton alloc] initWithFrame:NSRect{} pullsDown:NO];
    for (const std::string& title : titles) {
        NSString* item = platformString(title);
        [control addItemWithTitle:item != nil ? item : @""];
    }
    if (selectedIndex < titles.size()) [control selectItemAtIndex:static_cast<NSInteger>(selectedIndex)];
    const NSSize fitting = control.fittingSize;
    return Size{fitting.width, fitting.height};
}

// --- CoreGraphicsCanvas -----------------------------------------------------------

CoreGraphicsCanvas::CoreGraphicsCanvas(CGContextRef context, double shadowScale, SystemColors systemColors)
    : context_(context), shadowScale_(shadowScale), systemColors_(systemColors) {}

void CoreGraphicsCanvas::fill(const PlacedShape& shape, const Paint& paint) {
    const auto path = shapePath(shape);
    CGContextSaveGState(context_);
    CGContextAddPath(context_, path.get());
    CGContextClip(context_);
    fillClip(context_, paint, platformRect(shape.frame));
    CGContextRestoreGState(context_);
}

void CoreGraphicsCanvas::strokeInside(const PlacedShape& shape, double width, Rgba color) {
    // A stroke of twice the width centred on the outline, clipped to the
    // shape: what is left is the inner half.
    const auto path = shapePath(shape);
    const auto strokeColor = platformColor(color);
    CGContextSaveGState(context_);
    CGContextAddPath(context_, path.get());
    CGContextClip(context_);
    CGContextAddPath(context_, path.get());
    CGContextSetLineWidth(context_, 2 * width);
    CGContextSetStrokeColorWithColor(context_, strokeColor.get());
    CGContextStrokePath(context_);
    CGContextRestoreGState(context_);
}

void CoreGraphicsCanvas::drawText(const TextRun& run, Rect frame, Rgba color) {
    // Laid out again at the frame's width only where the text needs it, with
    // a little slack so that rounding never breaks a line the measurer kept.
    const std::vector<TypesetLine> natural =
        typeset(run.text, run.font, std::nullopt, run.lineLimit, run.direction);
    const bool fits = natural.front().width <= frame.width + 0.01;
    const std::vector<TypesetLine> lines =
        fits ? natural
             : typeset(run.text, run.font, frame.width + (run.lineLimit == 1 ? 0.0 : 0.5), run.lineLimit,
                       run.direction);
    const bool rightToLeft = run.direction == LayoutDirection::rightToLeft;
    const auto fillColor = platformColor(color);
    CGContextSaveGState(context_);
    CGContextSetFillColorWithColor(context_, fillColor.get());
    double top = frame.y;
    for (const TypesetLine& line : lines) {
        if (!line.line) {
            top += line.height;  // not even one character fits: nothing shows
            continue;
        }
        // CoreText draws upwards from the baseline: flip back around it.
        CGContextSaveGState(context_);
        // Right to left, each line ends at the frame's right edge.
        const double x = rightToLeft ? frame.x + frame.width - line.width : frame.x;
        CGContextTranslateCTM(context_, x, top + line.ascent);
        CGContextScaleCTM(context_, 1, -1);
        CGContextSetTextMatrix(context_, CGAffineTransformIdentity);
        CGContextSetTextPosition(context_, 0, 0);
        CTLineDraw(line.line.get(), context_);
        CGContextRestoreGState(context_);
        top += line.height;
    }
    CGContextRestoreGState(context_);
}

void CoreGraphicsCanvas::drawSymbol(std::string_view name, const Font& font, Rect frame, const Paint& paint,
                                    bool mirrored) {
    NSImage* image = symbolImage(name, font);
    if (image == nil) return;  // an unknown symbol leaves its box empty, as the system's symbol views do
    const NSSize size = image.size;
    const CGRect rect{.origin = {.x = frame.x + (frame.width - size.width) / 2,
                                 .y = frame.y + (frame.height - size.height) / 2},
                      .size = size};
    // The symbol's shape, then the paint kept only where the shape is.
    CGContextSaveGState(context_);
    CGContextBeginTransparencyLayerWithRect(context_, rect, nullptr);
    if (mirrored) {
        // Flipped about the frame's centre: the shape only; the paint below
        // fills the same (symmetric) rectangle.
        const double centre = frame.x + frame.width / 2;
        CGContextSaveGState(context_);
        CGContextTranslateCTM(context_, centre, 0);
        CGContextScaleCTM(context_, -1, 1);
        CGContextTranslateCTM(context_, -centre, 0);
        drawUpright(context_, image, rect);
        CGContextRestoreGState(context_);
    } else {
        drawUpright(context_, image, rect);
    }
    CGContextSetBlendMode(context_, kCGBlendModeSourceIn);
    fillClip(context_, paint, rect);
    CGContextEndTransparencyLayer(context_);
    CGContextRestoreGState(context_);
}

void CoreGraphicsCanvas::drawImage(const ViewImage& image, Rect frame) {
    const auto* drawable = dynamic_cast<const CGViewImage*>(&image);
    if (drawable == nullptr || frame.width <= 0 || frame.height <= 0) return;
    // CoreGraphics draws images upwards: flip back around the frame.
    CGContextSaveGState(context_);
    CGContextTranslateCTM(context_, frame.x, frame.maxY());
    CGContextScaleCTM(context_, 1, -1);
    CGContextDrawImage(context_, CGRect{.origin = {.x = 0, .y = 0}, .size = {.width = frame.width, .height = frame.height}},
                       drawable->cgImage());
    CGContextRestoreGState(context_);
}

void CoreGraphicsCanvas::beginClip(const PlacedShape& shape) {
    const auto path = shapePath(shape);
    CGContextSaveGState(context_);
    CGContextAddPath(context_, path.get());
    CGContextClip(context_);
}

void CoreGraphicsCanvas::endClip() { CGContextRestoreGState(context_); }

void CoreGraphicsCanvas::beginOpacity(double opacity, Rect bounds) {
    // The group is composited once, at the context's alpha; its layer is
    // only as large as what it holds.
    CGContextSaveGState(context_);
    CGContextSetAlpha(context_, opacity);
    CGContextBeginTransparencyLayerWithRect(context_, platformRect(bounds), nullptr);
}

void CoreGraphicsCanvas::endOpacity() {
    CGContextEndTransparencyLayer(context_);
    CGContextRestoreGState(context_);
}

void CoreGraphicsCanvas::beginShadow(const ResolvedShadow& shadow, Rect bounds) {
    // One shadow for the whole group: the layer is composited with the
    // shadow set. Base space has y upwards, the tree's y runs down. The
    // layer covers what the group holds and the reach of its shadow (the
    // offset, and the blur on every side).
    const auto color = platformColor(shadow.color);
    const double reachX = std::abs(shadow.x) + 2 * shadow.radius;
    const double reachY = std::abs(shadow.y) + 2 * shadow.radius;
    const Rect layer{bounds.x - reachX, bounds.y - reachY, bounds.width + 2 * reachX, bounds.height + 2 * reachY};
    CGContextSaveGState(context_);
    CGContextSetShadowWithColor(context_, CGSize{.width = shadow.x * shadowScale_, .height = -shadow.y * shadowScale_},
                                shadow.radius * shadowScale_, color.get());
    CGContextBeginTransparencyLayerWithRect(context_, platformRect(layer), nullptr);
}

void CoreGraphicsCanvas::endShadow() {
    CGContextEndTransparencyLayer(context_);
    CGContextRestoreGState(context_);
}

Rgba CoreGraphicsCanvas::resolve(const Color& color, Appearance appearance) {
    NSColor* dynamic = systemColor(color);
    if (dynamic == nil) return standardColor(color, appearance);
    __block CGFloat red = 0;
    __block CGFloat green = 0;
    __block CGFloat blue = 0;
    __block CGFloat alpha = 0;
    __block BOOL resolved = NO;
    // A dynamic colour takes its value when it is converted, under the
    // current drawing appearance.
    void (^resolveColor)(void) = ^{
      NSColor* srgb = [dynamic colorUsingColorSpace:NSColorSpace.sRGBColorSpace];
      if (srgb == nil) return;
      [srgb getRed:&red green:&green blue:&blue alpha:&alpha];
      resolved = YES;
    };
    if (systemColors_ == SystemColors::underCurrentDrawingAppearance) {
        resolveColor();
    } else {
        NSAppearance* named = [NSAppearance
            appearanceNamed:appearance == Appearance::dark ? NSAppearanceNameDarkAqua : NSAppearanceNameAqua];
        if (named == nil) return standardColor(color, appearance);
        [named performAsCurrentDrawingAppearance:resolveColor];
    }
    if (!resolved) return standardColor(color, appearance);
    return Rgba{red, green, blue, alpha * color.opacity};
}

// --- Bitmaps and snapshots --------------------------------------------------------

namespace {

class CGBitmapCanvas final : public BitmapCanvas {
public:
    CGBitmapCanvas(CFRef<CGContextRef> context, double scale)
        : context_(std::move(context)), canvas_(context_.get(), scale) {}

    void fill(const PlacedShape& shape, const Paint& paint) override { canvas_.fill(shape, paint); }
    void strokeInside(const PlacedShape& shape, double width, Rgba color) override {
        canvas_.strokeInside(shape, width, color);
    }
    void drawText(const TextRun& run, Rect frame, Rgba color) override { canvas_.drawText(run, frame, color); }
    void drawSymbol(std::string_view name, const Font& font, Rect frame, const Paint& paint,
                    bool mirrored) override {
        canvas_.drawSymbol(name, font, frame, paint, mirrored);
    }
    void drawImage(const ViewImage& image, Rect frame) override { canvas_.drawImage(image, frame); }
    void beginClip(const PlacedShape& shape) override { canvas_.beginClip(shape); }
    void endClip() override { canvas_.endClip(); }
    void beginOpacity(double opacity, Rect bounds) override { canvas_.beginOpacity(opacity, bounds); }
    void endOpacity() override { canvas_.endOpacity(); }
    void beginShadow(const ResolvedShadow& shadow, Rect bounds) override { canvas_.beginShadow(shadow, bounds); }
    void endShadow() override { canvas_.endShadow(); }
    Rgba resolve(const Color& color, Appearance appearance) override { return canvas_.resolve(color, appearance); }

    std::optional<std::vector<std::uint8_t>> pngData() override {
        const auto image = CFRef<CGImageRef>::adopt(CGBitmapContextCreateImage(context_.get()));
        if (!image) return std::nullopt;
        const auto data = CFRef<CFMutableDataRef>::adopt(CFDataCreateMutable(kCFAllocatorDefault, 0));
        if (!data) return std::nullopt;
        const auto destination = CFRef<CGImageDestinationRef>::adopt(
            CGImageDestinationCreateWithData(data.get(), (__bridge CFStringRef) @"public.png", 1, nullptr));
        if (!destination) return std::nullopt;
        CGImageDestinationAddImage(destination.get(), image.get(), nullptr);
        if (!CGImageDestinationFinalize(destination.get())) return std::nullopt;
        NSData* bytes = (__bridge NSData*)data.get();
        if (bytes.length == 0) return std::nullopt;
        const auto* first = static_cast<const std::uint8_t*>(bytes.bytes);
        return std::vector<std::uint8_t>(first, first + bytes.length);
    }

private:
    CFRef<CGContextRef> context_;
    CoreGraphicsCanvas canvas_;
};

class AppKitSnapshotPlatform final : public SnapshotPlatform {
public:
    TextMeasurer& textMeasurer() override { return measurer_; }

    // The bundle's strings in the current locale, whose language is the
    // first of the preferred localisations, the one the file names carry.
    std::string localized(const LocalizedText& text, std::string_view) override { return localizedString(text); }

    std::vector<std::string> preferredLocalizations() override {
        std::vector<std::string> languages;
        NSString* first = NSBundle.mainBundle.preferredLocalizations.firstObject;
        if (const std::optional<std::string> language = portableString(first)) languages.push_back(*language);
        return languages;
    }

    std::unique_ptr<BitmapCanvas> makeBitmap(int pixelWidth, int pixelHeight, double scale, Appearance) override {
        return makeBitmapCanvas(pixelWidth, pixelHeight, scale);
    }

private:
    CoreTextMeasurer measurer_;
};

}  // namespace

std::unique_ptr<BitmapCanvas> makeBitmapCanvas(int pixelWidth, int pixelHeight, double scale) {
    if (pixelWidth <= 0 || pixelHeight <= 0) return nullptr;
    const auto space = CFRef<CGColorSpaceRef>::adopt(CGColorSpaceCreateWithName(kCGColorSpaceSRGB));
    if (!space) return nullptr;
    auto context = CFRef<CGContextRef>::adopt(CGBitmapContextCreate(nullptr, static_cast<std::size_t>(pixelWidth),
                                                                    static_cast<std::size_t>(pixelHeight), 8, 0,
                                                                    space.get(), kCGImageAlphaPremultipliedLast));
    if (!context) return nullptr;
    // The tree's user space: points, origin at the top left, y down.
    CGContextTranslateCTM(context.get(), 0, pixelHeight);
    CGContextScaleCTM(context.get(), scale, -scale);
    return std::make_unique<CGBitmapCanvas>(std::move(context), scale);
}

std::unique_ptr<SnapshotPlatform> makeSnapshotPlatform() { return std::make_unique<AppKitSnapshotPlatform>(); }

}  // namespace orvik::mac
