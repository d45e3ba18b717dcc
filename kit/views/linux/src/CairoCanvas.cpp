#include "OrvikKit/CairoCanvas.h"

#include <cairo.h>
#include <pango/pangocairo.h>

#include <algorithm>
#include <cmath>
#include <cstring>
#include <utility>

#include "OrvikKit/ShapePath.h"

namespace orvik::cairo {

namespace {

// Inter stands in for the system font; the scripts it lacks come from
// Debian's Noto fonts, as the system font's own fallbacks supply them on a
// Mac. The Chinese, Japanese and Korean faces draw the same characters in
// each language's own forms, so the language picks one.
constexpr std::string_view textFamily = "Inter";
constexpr std::string_view scriptFamilies[] = {"Noto Sans Arabic", "Noto Sans Hebrew"};
struct HanFamily {
    std::string_view language;
    std::string_view family;
};
constexpr HanFamily hanFamilies[] = {
    {"ja", "Noto Sans CJK JP"},
    {"ko", "Noto Sans CJK KR"},
    {"zh-Hant", "Noto Sans CJK TC"},
    {"zh-Hans", "Noto Sans CJK SC"},
};
constexpr const char* symbolFamily = "Material Icons";
// Material icons leave more room inside their em square than SF Symbols do
// at the same point size; drawn a little larger they look about as big.
constexpr double symbolEnlargement = 1.2;

struct SymbolGlyph {
    std::string_view name;
    char32_t codePoint;
};

// Each SF Symbols name the menu draws, and the Material icon closest to it.
constexpr SymbolGlyph symbolGlyphs[] = {
    {"playpause.fill", 0xe037},                 // play_arrow
    {"square.grid.2x2", 0xe9b0},                // grid_view
    {"backward.fill", 0xe020},                  // fast_rewind
    {"forward.fill", 0xe01f},                   // fast_forward
    {"play.fill", 0xe037},                      // play_arrow
    {"pause.fill", 0xe034},                     // pause
    {"music.note", 0xe405},                     // music_note
    {"music.note.house", 0xe030},               // library_music
    {"power", 0xe8ac},                          // power_settings_new
    {"lock.shield.fill", 0xe32a},               // security
    {"network.slash", 0xf1ca},                  // public_off
    {"keyboard", 0xe312},                       // keyboard
    {"hand.raised.fill", 0xe764},               // back_hand
    {"exclamationmark.triangle.fill", 0xe002},  // warning
    {"arrow.down.circle.fill", 0xf181},         // arrow_circle_down
    {"chevron.up.chevron.down", 0xe5d7},        // unfold_more
};

std::string utf8(char32_t codePoint) {
    std::string bytes;
    if (codePoint < 0x80) {
        bytes += static_cast<char>(codePoint);
    } else if (codePoint < 0x800) {
        bytes += static_cast<char>(0xC0 | (codePoint >> 6));
        bytes += static_cast<char>(0x80 | (codePoint & 0x3F));
    } else if (codePoint < 0x10000) {
        bytes += static_cast<char>(0xE0 | (codePoint >> 12));
        bytes += static_cast<char>(0x80 | ((codePoint >> 6) & 0x3F));
        bytes += static_cast<char>(0x80 | (codePoint & 0x3F));
    } else {
        bytes += static_cast<char>(0xF0 | (codePoint >> 18));
        bytes += static_cast<char>(0x80 | ((codePoint >> 12) & 0x3F));
        bytes += static_cast<char>(0x80 | ((codePoint >> 6) & 0x3F));
        bytes += static_cast<char>(0x80 | (codePoint & 0x3F));
    }
    return bytes;
}

PangoWeight pangoWeight(FontWeight weight) {
    switch (weight) {
    case FontWeight::regular: return PANGO_WEIGHT_NORMAL;
    case FontWeight::medium: return PANGO_WEIGHT_MEDIUM;
    case FontWeight::semibold: return PANGO_WEIGHT_SEMIBOLD;
    case FontWeight::bold: return PANGO_WEIGHT_BOLD;
    }
    return PANGO_WEIGHT_NORMAL;
}

int pangoUnits(double points) { return static_cast<int>(std::lround(points * PANGO_SCALE)); }
double fromPangoUnits(int units) { return static_cast<double>(units) / PANGO_SCALE; }

// Unhinted metrics and unrounded glyph positions, so that a text measured at
// scale 1 takes the same room drawn at scale 2.
void prepare(PangoLayout* layout) {
    PangoContext* context = pango_layout_get_context(layout);
    cairo_font_options_t* options = cairo_font_options_create();
    cairo_font_options_set_hint_metrics(options, CAIRO_HINT_METRICS_OFF);
    cairo_font_options_set_hint_style(options, CAIRO_HINT_STYLE_NONE);
    cairo_font_options_set_antialias(options, CAIRO_ANTIALIAS_GRAY);
    pango_cairo_context_set_font_options(context, options);
    cairo_font_options_destroy(options);
    pango_context_set_round_glyph_positions(context, FALSE);
    pango_layout_context_changed(layout);
}

void setFont(PangoLayout* layout, const std::string& family, double size, FontWeight weight) {
    PangoFontDescription* description = pango_font_description_new();
    pango_font_description_set_family(description, family.c_str());
    pango_font_description_set_weight(description, pangoWeight(weight));
    pango_font_description_set_absolute_size(description, size * PANGO_SCALE);
    pango_layout_set_font_description(layout, description);
    pango_font_description_free(description);
}

struct LayoutDeleter {
    void operator()(PangoLayout* layout) const { g_object_unref(layout); }
};
using LayoutPointer = std::unique_ptr<PangoLayout, LayoutDeleter>;

// The fonts and language texts are laid out in.
struct TextFonts {
    std::string families;
    PangoLanguage* language;

    explicit TextFonts(std::string_view languageCode) : language(pango_language_from_string(std::string(languageCode).c_str())) {
        for (const std::string& family : textFamilies(languageCode)) {
            if (!families.empty()) families += ',';
            families += family;
        }
    }
};

// A text laid out as the views ask: natural, one line cut with an ellipsis at
// `width`, or wrapped at `width`.
// `families` is a Pango family list ("Inter,Noto Sans Arabic,…"), `language`
// the text's language, which picks among the fonts' language forms.
LayoutPointer textLayout(cairo_t* cr, const TextFonts& fonts, std::string_view text, const Font& font,
                         std::optional<double> width, std::optional<int> lineLimit) {
    LayoutPointer layout(pango_cairo_create_layout(cr));
    pango_context_set_language(pango_layout_get_context(layout.get()), fonts.language);
    prepare(layout.get());
    setFont(layout.get(), fonts.families, font.size, font.weight);
    pango_layout_set_text(layout.get(), text.data(), static_cast<int>(text.size()));
    if (width) {
        pango_layout_set_width(layout.get(), pangoUnits(*width));
        if (lineLimit == 1) {
            pango_layout_set_ellipsize(layout.get(), PANGO_ELLIPSIZE_END);
            pango_layout_set_height(layout.get(), -1);
        } else {
            pango_layout_set_wrap(layout.get(), PANGO_WRAP_WORD_CHAR);
        }
    }
    return layout;
}

// The paragraph's base direction, given rather than guessed from the text,
// so that mixed runs are reordered around it and lines align to its leading
// edge; a cut line loses its end in reading order.
void setBaseDirection(PangoLayout* layout, LayoutDirection direction) {
    const bool rightToLeft = direction == LayoutDirection::rightToLeft;
    pango_layout_set_auto_dir(layout, FALSE);
    pango_context_set_base_dir(pango_layout_get_context(layout), rightToLeft ? PANGO_DIRECTION_RTL : PANGO_DIRECTION_LTR);
    pango_layout_context_changed(layout);
    pango_layout_set_alignment(layout, rightToLeft ? PANGO_ALIGN_RIGHT : PANGO_ALIGN_LEFT);
}

Size logicalSize(PangoLayout* layout) {
    PangoRectangle logical;
    pango_layout_get_extents(layout, nullptr, &logical);
    return Size{fromPangoUnits(logical.width), fromPangoUnits(logical.height)};
}

// The width of the text's first character (a whole grapheme cluster, as
// `natural` breaks it) followed by an ellipsis: the least a cut line shows.
double firstCharacterAndEllipsisWidth(cairo_t* cr, const TextFonts& fonts, PangoLayout* natural, std::string_view text,
                                      const Font& font, LayoutDirection direction) {
    int count = 0;
    const PangoLogAttr* attributes = pango_layout_get_log_attrs_readonly(natural, &count);
    // One entry per character and one past the end; the first cursor
    // position after the start ends the first cluster.
    int characters = 1;
    while (characters < count - 1 && !attributes[characters].is_cursor_position) ++characters;
    const char* end = g_utf8_offset_to_pointer(text.data(), characters);
    std::string sample(text.data(), static_cast<std::size_t>(end - text.data()));
    sample += "\u2026";
    const LayoutPointer layout = textLayout(cr, fonts, sample, font, std::nullopt, 1);
    setBaseDirection(layout.get(), direction);
    return logicalSize(layout.get()).width;
}

void shapePath(cairo_t* cr, const PlacedShape& placed) {
    for (const PathElement& element : outline(placed)) {
        const auto& p = element.points;
        switch (element.kind) {
        case PathElement::Kind::moveTo: cairo_move_to(cr, p[0].x, p[0].y); break;
        case PathElement::Kind::lineTo: cairo_line_to(cr, p[0].x, p[0].y); break;
        case PathElement::Kind::curveTo: cairo_curve_to(cr, p[0].x, p[0].y, p[1].x, p[1].y, p[2].x, p[2].y); break;
        case PathElement::Kind::close: cairo_close_path(cr); break;
        }
    }
}

void setSource(cairo_t* cr, const Paint& paint) {
    if (!paint.isGradient || paint.colorCount < 2) {
        setSourceColor(cr, paint.colors[0]);
        return;
    }
    cairo_pattern_t* pattern = cairo_pattern_create_linear(paint.start.x, paint.start.y, paint.end.x, paint.end.y);
    for (std::size_t index = 0; index < paint.colorCount; ++index) {
        const double offset = static_cast<double>(index) / static_cast<double>(paint.colorCount - 1);
        addColorStop(pattern, offset, paint.colors[index]);
    }
    cairo_set_source(cr, pattern);
    cairo_pattern_destroy(pattern);
}

// A crossed box: what a symbol or image without a stand-in looks like.
void drawPlaceholder(cairo_t* cr, Rect frame, const Paint& paint) {
    cairo_save(cr);
    setSource(cr, paint);
    cairo_set_line_width(cr, 1);
    cairo_rectangle(cr, frame.x + 0.5, frame.y + 0.5, frame.width - 1, frame.height - 1);
    cairo_move_to(cr, frame.x, frame.y);
    cairo_line_to(cr, frame.maxX(), frame.maxY());
    cairo_move_to(cr, frame.maxX(), frame.y);
    cairo_line_to(cr, frame.x, frame.maxY());
    cairo_stroke(cr);
    cairo_restore(cr);
}

// Three passes of a box blur over an 8-bit alpha plane approximate a
// Gaussian blur of standard deviation `sigma` pixels.
void blurAlpha(std::vector<std::uint8_t>& alpha, int width, int height, double sigma) {
    const int radius = std::max(1, static_cast<int>(std::lround(sigma)));
    std::vector<std::uint8_t> scratch(alpha.size());
    const auto pass = [&](bool horizontal) {
        const int lines = horizontal ? height : width;
        const int length = horizontal ? width : height;
        for (int line = 0; line < lines; ++line) {
            const auto at = [&](int position) -> std::size_t {
                position = std::clamp(position, 0, length - 1);
                return horizontal ? static_cast<std::size_t>(line * width + position)
                                  : static_cast<std::size_t>(position * width + line);
            };
            int sum = 0;
            for (int offset = -radius; offset <= radius; ++offset) sum += alpha[at(offset)];
            for (int position = 0; position < length; ++position) {
                scratch[at(position)] = static_cast<std::uint8_t>(sum / (2 * radius + 1));
                sum += alpha[at(position + radius + 1)] - alpha[at(position - radius)];
            }
        }
        alpha.swap(scratch);
    };
    for (int round = 0; round < 3; ++round) {
        pass(true);
        pass(false);
    }
}

}  // namespace

std::vector<std::string> textFamilies(std::string_view language) {
    std::vector<std::string> families{std::string(textFamily)};
    for (std::string_view family : scriptFamilies) families.emplace_back(family);
    // The language's own Han forms first; Simplified Chinese for the rest.
    std::string_view han = hanFamilies[3].family;
    for (const HanFamily& entry : hanFamilies) {
        if (language == entry.language || language.starts_with(std::string(entry.language) + "-")) han = entry.family;
    }
    families.emplace_back(han);
    for (const HanFamily& entry : hanFamilies) {
        if (entry.family != han) families.emplace_back(entry.family);
    }
    return families;
}

std::vector<std::string> missingFontFamilies() {
    std::vector<std::string> wanted{std::string(textFamily), std::string(symbolFamily)};
    for (std::string_view family : scriptFamilies) wanted.emplace_back(family);
    for (const HanFamily& entry : hanFamilies) wanted.emplace_back(entry.family);
    PangoFontFamily** families = nullptr;
    int count = 0;
    pango_font_map_list_families(pango_cairo_font_map_get_default(), &families, &count);
    std::vector<std::string> missing;
    for (const std::string& name : wanted) {
        bool found = false;
        for (int index = 0; index < count && !found; ++index) {
            found = g_ascii_strcasecmp(pango_font_family_get_name(families[index]), name.c_str()) == 0;
        }
        if (!found) missing.push_back(name);
    }
    g_free(families);
    return missing;
}

std::optional<char32_t> symbolCodePoint(std::string_view name) {
    for (const SymbolGlyph& glyph : symbolGlyphs) {
        if (glyph.name == name) return glyph.codePoint;
    }
    return std::nullopt;
}

// --- Colours on the 8-bit grid ------------------------------------------------------

namespace {

// `level` clamped to [0, 1] (not a number: 0), in 255ths, rounded.
long byteOf(double level) {
    if (!(level > 0)) return 0;
    if (level >= 1) return 255;
    return std::lround(level * 255);
}

}  // namespace

double nearestByteLevel(double level) { return static_cast<double>(byteOf(level)) / 255; }

Rgba nearestByteColor(Rgba color) {
    const long alpha = byteOf(color.alpha);
    if (alpha == 0) return Rgba{0, 0, 0, 0};
    const double exactAlpha = static_cast<double>(alpha) / 255;
    // Premultiplied by the alpha as given, rounded, and divided again by the
    // rounded alpha: Cairo multiplies it back by A / 255 and lands on P / 255.
    // P never exceeds A, as c a <= a.
    const auto component = [&](double level) {
        const double clamped = level > 0 ? std::min(level, 1.0) : 0.0;
        const long premultiplied = std::min(byteOf(clamped * std::clamp(color.alpha, 0.0, 1.0)), alpha);
        return static_cast<double>(premultiplied) / static_cast<double>(alpha);
    };
    return Rgba{component(color.red), component(color.green), component(color.blue), exactAlpha};
}

void setSourceColor(cairo_t* cr, Rgba color) {
    const Rgba onGrid = nearestByteColor(color);
    cairo_set_source_rgba(cr, onGrid.red, onGrid.green, onGrid.blue, onGrid.alpha);
}

void addColorStop(cairo_pattern_t* pattern, double offset, Rgba color) {
    const Rgba onGrid = nearestByteColor(color);
    cairo_pattern_add_color_stop_rgba(pattern, offset, onGrid.red, onGrid.green, onGrid.blue, onGrid.alpha);
}

// --- CairoImage ---------------------------------------------------------------------

CairoImage::CairoImage(cairo_surface_t* surface, double widthInPoints, double heightInPoints)
    : surface_(cairo_surface_reference(surface)), width_(widthInPoints), height_(heightInPoints) {}

CairoImage::~CairoImage() { cairo_surface_destroy(surface_); }

// --- PangoTextMeasurer --------------------------------------------------------------

struct PangoTextMeasurer::Context {
    explicit Context(std::string_view language) : fonts(language) {}
    Context(const Context&) = delete;
    Context& operator=(const Context&) = delete;

    TextFonts fonts;
    cairo_surface_t* surface = cairo_image_surface_create(CAIRO_FORMAT_ARGB32, 1, 1);
    cairo_t* cr = cairo_create(surface);
    ~Context() {
        cairo_destroy(cr);
        cairo_surface_destroy(surface);
    }
};

PangoTextMeasurer::PangoTextMeasurer(std::string_view language)
    : context_(std::make_unique<Context>(language)) {}
PangoTextMeasurer::~PangoTextMeasurer() = default;

Size PangoTextMeasurer::textSize(std::string_view text, const Font& font, std::optional<double> width,
                                 std::optional<int> lineLimit) {
    const LayoutPointer layout = textLayout(context_->cr, context_->fonts, text, font, width, lineLimit);
    Size size = logicalSize(layout.get());
    if (width) size.width = std::min(size.width, *width);
    return size;
}

Size PangoTextMeasurer::symbolSize(std::string_view, const Font& font) { return Size{font.size, font.size}; }

Size PangoTextMeasurer::switchSize(ControlSize size) {
    switch (size) {
    case ControlSize::mini: return Size{26, 15};
    case ControlSize::small: return Size{32, 18};
    case ControlSize::regular:
    case ControlSize::large: return Size{38, 22};
    }
    return Size{38, 22};
}

Size PangoTextMeasurer::popUpSize(const std::vector<std::string>& titles, std::size_t) {
    double widest = 0;
    for (const std::string& title : titles) {
        widest = std::max(widest, textSize(title, Font{13}, std::nullopt, 1).width);
    }
    return Size{widest + 30, 20};
}

// --- CairoCanvas --------------------------------------------------------------------

struct CairoCanvas::State {
    explicit State(TextFonts textFonts) : fonts(std::move(textFonts)) {}

    struct ShadowLayer {
        ResolvedShadow shadow;
        cairo_surface_t* surface;
        cairo_t* cr;
    };

    TextFonts fonts;
    int pixelWidth = 0;
    int pixelHeight = 0;
    double scale = 1;
    cairo_surface_t* surface = nullptr;
    std::vector<cairo_t*> contexts;  // the bitmap's, then one per open shadow group
    std::vector<ShadowLayer> shadows;
    std::vector<double> opacities;  // of the open opacity groups

    cairo_t* cr() const { return contexts.back(); }
};

CairoCanvas::CairoCanvas(int pixelWidth, int pixelHeight, double scale, std::string_view language)
    : state_(std::make_unique<State>(TextFonts(language))) {
    state_->pixelWidth = pixelWidth;
    state_->pixelHeight = pixelHeight;
    state_->scale = scale;
    state_->surface = cairo_image_surface_create(CAIRO_FORMAT_ARGB32, pixelWidth, pixelHeight);
    cairo_t* cr = cairo_create(state_->surface);
    cairo_scale(cr, scale, scale);
    state_->contexts.push_back(cr);
}

CairoCanvas::~CairoCanvas() {
    for (cairo_t* cr : state_->contexts) cairo_destroy(cr);
    for (const State::ShadowLayer& layer : state_->shadows) cairo_surface_destroy(layer.surface);
    cairo_surface_destroy(state_->surface);
}

void CairoCanvas::fill(const PlacedShape& shape, const Paint& paint) {
    cairo_t* cr = state_->cr();
    cairo_new_path(cr);
    shapePath(cr, shape);
    setSource(cr, paint);
    cairo_fill(cr);
}

void CairoCanvas::strokeInside(const PlacedShape& shape, double width, Rgba color) {
    cairo_t* cr = state_->cr();
    cairo_save(cr);
    cairo_new_path(cr);
    shapePath(cr, shape);
    cairo_clip_preserve(cr);
    cairo_set_line_width(cr, 2 * width);
    setSourceColor(cr, color);
    cairo_stroke(cr);
    cairo_restore(cr);
}

void CairoCanvas::drawText(const TextRun& run, Rect frame, Rgba color) {
    cairo_t* cr = state_->cr();
    // Lay out at the frame's width only where the text needs it, with a
    // little slack so that rounding never breaks a line the measurer kept.
    const LayoutPointer natural = textLayout(cr, state_->fonts, run.text, run.font, std::nullopt, run.lineLimit);
    setBaseDirection(natural.get(), run.direction);
    const double naturalWidth = logicalSize(natural.get()).width;
    const bool fits = naturalWidth <= frame.width + 0.01;
    // A cut line shows at least one whole character before its ellipsis;
    // where not even that fits, it shows nothing rather than overflow.
    if (!fits && run.lineLimit == 1 && !run.text.empty() &&
        firstCharacterAndEllipsisWidth(cr, state_->fonts, natural.get(), run.text, run.font, run.direction) >
            frame.width + 0.01) {
        return;
    }
    const double laidOutWidth = fits ? naturalWidth : frame.width + (run.lineLimit == 1 ? 0.0 : 0.5);
    const LayoutPointer layout = fits ? textLayout(cr, state_->fonts, run.text, run.font, std::nullopt, run.lineLimit)
                                      : textLayout(cr, state_->fonts, run.text, run.font, laidOutWidth, run.lineLimit);
    setBaseDirection(layout.get(), run.direction);
    // Right to left, the lines end at the frame's right edge.
    const double x =
        run.direction == LayoutDirection::rightToLeft ? frame.x + frame.width - laidOutWidth : frame.x;
    cairo_move_to(cr, x, frame.y);
    setSourceColor(cr, color);
    pango_cairo_show_layout(cr, layout.get());
}

void CairoCanvas::drawSymbol(std::string_view name, const Font& font, Rect frame, const Paint& paint,
                             bool mirrored) {
    cairo_t* cr = state_->cr();
    const std::optional<char32_t> codePoint = symbolCodePoint(name);
    if (!codePoint) {
        drawPlaceholder(cr, frame, paint);
        return;
    }
    const std::string glyph = utf8(*codePoint);
    LayoutPointer layout(pango_cairo_create_layout(cr));
    prepare(layout.get());
    setFont(layout.get(), std::string(symbolFamily), font.size * symbolEnlargement, FontWeight::regular);
    pango_layout_set_text(layout.get(), glyph.data(), static_cast<int>(glyph.size()));
    PangoRectangle ink;
    pango_layout_get_extents(layout.get(), &ink, nullptr);
    // The glyph's ink centred in the frame.
    const double x = frame.x + frame.width / 2 - (fromPangoUnits(ink.x) + fromPangoUnits(ink.width) / 2);
    const double y = frame.y + frame.height / 2 - (fromPangoUnits(ink.y) + fromPangoUnits(ink.height) / 2);
    cairo_new_path(cr);
    cairo_save(cr);
    if (mirrored) {
        // Flipped about the frame's centre; the path keeps the flip once the
        // matrix is restored, the paint does not take it.
        const double centre = frame.x + frame.width / 2;
        cairo_translate(cr, centre, 0);
        cairo_scale(cr, -1, 1);
        cairo_translate(cr, -centre, 0);
    }
    cairo_move_to(cr, x, y);
    pango_cairo_layout_path(cr, layout.get());
    cairo_restore(cr);
    setSource(cr, paint);
    cairo_fill(cr);
}

void CairoCanvas::drawImage(const ViewImage& image, Rect frame) {
    cairo_t* cr = state_->cr();
    const auto* drawable = dynamic_cast<const CairoImage*>(&image);
    if (drawable == nullptr || frame.width <= 0 || frame.height <= 0) {
        drawPlaceholder(cr, frame, Paint::solid(Rgba{1, 0, 1, 1}));
        return;
    }
    const double pixelWidth = cairo_image_surface_get_width(drawable->surface());
    const double pixelHeight = cairo_image_surface_get_height(drawable->surface());
    cairo_save(cr);
    cairo_translate(cr, frame.x, frame.y);
    cairo_scale(cr, frame.width / pixelWidth, frame.height / pixelHeight);
    cairo_set_source_surface(cr, drawable->surface(), 0, 0);
    cairo_pattern_set_filter(cairo_get_source(cr), CAIRO_FILTER_GOOD);
    cairo_paint(cr);
    cairo_restore(cr);
}

void CairoCanvas::beginClip(const PlacedShape& shape) {
    cairo_t* cr = state_->cr();
    cairo_save(cr);
    cairo_new_path(cr);
    shapePath(cr, shape);
    cairo_clip(cr);
}

void CairoCanvas::endClip() { cairo_restore(state_->cr()); }

// The groups are as large as the bitmap: Cairo's own group is bounded by the
// clip, and the blur of the shadow layer needs room beyond the contents.
void CairoCanvas::beginOpacity(double opacity, Rect) {
    state_->opacities.push_back(opacity);
    cairo_push_group(state_->cr());
}

void CairoCanvas::endOpacity() {
    cairo_t* cr = state_->cr();
    cairo_pop_group_to_source(cr);
    // The group's alpha is a solid mask colour to Cairo, kept as a high byte
    // like any other.
    cairo_paint_with_alpha(cr, nearestByteLevel(state_->opacities.back()));
    state_->opacities.pop_back();
}

void CairoCanvas::beginShadow(const ResolvedShadow& shadow, Rect) {
    cairo_surface_t* layer = cairo_image_surface_create(CAIRO_FORMAT_ARGB32, state_->pixelWidth, state_->pixelHeight);
    cairo_t* cr = cairo_create(layer);
    cairo_matrix_t matrix;
    cairo_get_matrix(state_->cr(), &matrix);
    cairo_set_matrix(cr, &matrix);
    state_->shadows.push_back({shadow, layer, cr});
    state_->contexts.push_back(cr);
}

void CairoCanvas::endShadow() {
    State::ShadowLayer layer = state_->shadows.back();
    state_->shadows.pop_back();
    state_->contexts.pop_back();
    cairo_destroy(layer.cr);
    cairo_surface_flush(layer.surface);

    // The contents' alpha, blurred, becomes the shadow's mask.
    const int width = state_->pixelWidth;
    const int height = state_->pixelHeight;
    const int sourceStride = cairo_image_surface_get_stride(layer.surface);
    const unsigned char* source = cairo_image_surface_get_data(layer.surface);
    std::vector<std::uint8_t> alpha(static_cast<std::size_t>(width) * static_cast<std::size_t>(height));
    for (int row = 0; row < height; ++row) {
        for (int column = 0; column < width; ++column) {
            std::uint32_t pixel;
            std::memcpy(&pixel, source + row * sourceStride + column * 4, sizeof pixel);
            alpha[static_cast<std::size_t>(row * width + column)] = static_cast<std::uint8_t>(pixel >> 24);
        }
    }
    blurAlpha(alpha, width, height, layer.shadow.radius * state_->scale / 2);
    cairo_surface_t* mask = cairo_image_surface_create(CAIRO_FORMAT_A8, width, height);
    cairo_surface_flush(mask);
    unsigned char* maskData = cairo_image_surface_get_data(mask);
    const int maskStride = cairo_image_surface_get_stride(mask);
    for (int row = 0; row < height; ++row) {
        std::memcpy(maskData + row * maskStride, alpha.data() + row * width, static_cast<std::size_t>(width));
    }
    cairo_surface_mark_dirty(mask);

    cairo_t* cr = state_->cr();
    cairo_save(cr);
    cairo_identity_matrix(cr);
    setSourceColor(cr, layer.shadow.color);
    cairo_mask_surface(cr, mask, layer.shadow.x * state_->scale, layer.shadow.y * state_->scale);
    cairo_set_source_surface(cr, layer.surface, 0, 0);
    cairo_paint(cr);
    cairo_restore(cr);
    cairo_surface_destroy(mask);
    cairo_surface_destroy(layer.surface);
}

std::optional<std::vector<std::uint8_t>> CairoCanvas::pngData() {
    cairo_surface_flush(state_->surface);
    std::vector<std::uint8_t> bytes;
    const cairo_status_t status = cairo_surface_write_to_png_stream(
        state_->surface,
        [](void* closure, const unsigned char* data, unsigned int length) {
            auto* out = static_cast<std::vector<std::uint8_t>*>(closure);
            out->insert(out->end(), data, data + length);
            return CAIRO_STATUS_SUCCESS;
        },
        &bytes);
    if (status != CAIRO_STATUS_SUCCESS || bytes.empty()) return std::nullopt;
    return bytes;
}

// --- CairoSnapshotPlatform ----------------------------------------------------------

std::string CairoSnapshotPlatform::localized(const LocalizedText& text, std::string_view) {
    return localizer_.localized(text);
}

std::unique_ptr<BitmapCanvas> CairoSnapshotPlatform::makeBitmap(int pixelWidth, int pixelHeight, double scale,
                                                                Appearance) {
    return std::make_unique<CairoCanvas>(pixelWidth, pixelHeight, scale, localizer_.language());
}

}  // namespace orvik::cairo
