// TolvanePreview: the app's snapshot mode on Linux. Run as
//
//     TolvanePreview --snapshot DIRECTORY [-AppleLanguages '(de)']
//
// it goes through the same entry check, sample state, menu view and snapshot
// rendering as the Mac app, painted by the Cairo and Pango canvas, with the
// texts of the bundle's own strings tables (read from the source tree) in
// the language macOS would choose for the given preference (English without
// one), and writes menu-<language>-light.png and menu-<language>-dark.png
// into DIRECTORY.
//
// Snapshot mode does no system work, so the services handed to the preview
// state stop the program if anything ever calls them
// (MenuSnapshot::refusingServices).
#include <cairo.h>

#include <cmath>
#include <filesystem>
#include <cstdio>
#include <memory>
#include <numbers>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "OrvikKit/CairoCanvas.h"
#include "OrvikKit/StringsLocalizer.h"
#include "OrvikKitCore/CommandLineOption.h"
#include "Tolvane/Entry.h"
#include "Tolvane/MenuSnapshot.h"
#include "Tolvane/SnapshotServices.h"

namespace {

using tolvane::ArtworkImage;
using tolvane::MenuSnapshot::SampleArtwork;

// The language preference, as the Mac app takes it on the command line.
constexpr std::string_view appleLanguagesOption = "-AppleLanguages";

// The sample artwork as a Cairo image: both the app's artwork content and a
// view image the Cairo canvas draws.
class CairoArtwork final : public ArtworkImage::Content, public orvik::cairo::CairoImage {
public:
    using CairoImage::CairoImage;
    bool equals(const Content& other) const override { return &other == this; }
};

// An image of `sizeInPoints`, at two pixels per point, filled with a linear
// gradient between the two colours drawn across the whole image at the
// sample's angle (counter-clockwise from the positive x axis, y up).
std::optional<ArtworkImage> sampleArtwork(const SampleArtwork& sample) {
    const double scale = 2;
    const int pixels = static_cast<int>(std::lround(sample.sizeInPoints * scale));
    cairo_surface_t* surface = cairo_image_surface_create(CAIRO_FORMAT_ARGB32, pixels, pixels);
    cairo_t* cr = cairo_create(surface);
    const double side = pixels;
    const double radians = sample.angleInDegrees * std::numbers::pi / 180;
    const double dx = std::cos(radians);
    const double dy = -std::sin(radians);  // the image's y runs down
    // The gradient line through the centre, long enough to reach the corners.
    const double half = (std::abs(dx) + std::abs(dy)) * side / 2;
    cairo_pattern_t* gradient = cairo_pattern_create_linear(side / 2 - dx * half, side / 2 - dy * half,
                                                            side / 2 + dx * half, side / 2 + dy * half);
    cairo_pattern_add_color_stop_rgba(gradient, 0, sample.from.red, sample.from.green, sample.from.blue,
                                      sample.from.alpha);
    cairo_pattern_add_color_stop_rgba(gradient, 1, sample.to.red, sample.to.green, sample.to.blue, sample.to.alpha);
    cairo_set_source(cr, gradient);
    cairo_paint(cr);
    cairo_pattern_destroy(gradient);
    cairo_destroy(cr);
    auto content = std::make_shared<CairoArtwork>(surface, sample.sizeInPoints, sample.sizeInPoints);
    cairo_surface_destroy(surface);
    return tolvane::MenuSnapshot::artworkImage(std::move(content));
}

}  // namespace

int main(int argc, char** argv) {
    const std::vector<std::string> arguments(argv, argv + argc);
    const std::optional<int> status = tolvane::runSnapshotIfAsked(arguments, [&arguments](const std::string& directory) {
        const std::vector<std::filesystem::path> resourceFolders = {TOLVANE_APP_RESOURCES, TOLVANE_KIT_RESOURCES};
        const std::optional<std::string> languages =
            orvik::CommandLineOption::value(appleLanguagesOption, arguments);
        const orvik::StringsLocalizer localizer(
            resourceFolders, orvik::StringsLocalizer::preferredLocalization(
                                 orvik::StringsLocalizer::languagesIn(resourceFolders),
                                 orvik::StringsLocalizer::languagesArgument(languages.value_or(""))));
        for (const std::string& problem : localizer.problems()) std::fprintf(stderr, "TolvanePreview: %s\n", problem.c_str());
        orvik::cairo::CairoSnapshotPlatform rendering(localizer);
        tolvane::MenuSnapshot::Platform platform{
            .rendering = rendering,
            .services = tolvane::MenuSnapshot::refusingServices(TOLVANE_PREVIEW_VERSION),
            .loginItem = nullptr,
            .version = TOLVANE_PREVIEW_VERSION,
            .makeArtwork = sampleArtwork,
        };
        tolvane::MenuSnapshot::render(directory, platform);
    });
    if (!status) {
        std::fputs("usage: TolvanePreview --snapshot DIRECTORY [-AppleLanguages '(LANGUAGE)']\n", stderr);
        return 2;
    }
    return *status;
}
