// TolvanePreview: the app's snapshot mode on Linux. Run as
//
//     TolvanePreview --snapshot DIRECTORY [--language CODE | -AppleLanguages '(CODE, …)']
//
// it goes through the same entry check, sample state, menu view and snapshot
// rendering as the Mac app, painted by the Cairo and Pango canvas, with the
// texts of the bundle's own strings tables (read from the source tree), and
// writes menu-<language>-light.png and menu-<language>-dark.png into
// DIRECTORY. The language is the one macOS would choose among the bundle's
// language folders for the preference given (English without one); the
// pictures are named after it and laid out in its direction, as a Mac
// running in that language lays the menu out.
//
//     TolvanePreview --missing-icon DIRECTORY
//
// renders, the same way, the window shown when Tolvane is opened again while
// its menu bar icon is hidden, as macOS 15 and macOS 26 get it:
// menu-en-missing-icon-15-light.png, …-26-dark.png.
//
// Snapshot mode does no system work, so the services handed to the preview
// state stop the program if anything ever calls them
// (MenuSnapshot::refusingServices).
#include <cairo.h>

#include <cmath>
#include <cstdio>
#include <filesystem>
#include <memory>
#include <numbers>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "OrvikKit/CairoCanvas.h"
#include "OrvikKit/MissingIcon.h"
#include "OrvikKit/StringsLocalizer.h"
#include "OrvikKitCore/CommandLineOption.h"
#include "Tolvane/Entry.h"
#include "Tolvane/MenuSnapshot.h"
#include "Tolvane/MenuView.h"
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
    // Its ends on the 8-bit grid, like every colour the canvas draws.
    const auto stop = [gradient](double offset, const tolvane::MenuSnapshot::RGBA& color) {
        orvik::cairo::addColorStop(gradient, offset, orvik::Rgba{color.red, color.green, color.blue, color.alpha});
    };
    stop(0, sample.from);
    stop(1, sample.to);
    cairo_set_source(cr, gradient);
    cairo_paint(cr);
    cairo_pattern_destroy(gradient);
    cairo_destroy(cr);
    auto content = std::make_shared<CairoArtwork>(surface, sample.sizeInPoints, sample.sizeInPoints);
    cairo_surface_destroy(surface);
    return tolvane::MenuSnapshot::artworkImage(std::move(content));
}

// The help window for a hidden status item, in the app's brand, for the
// macOS 15 and macOS 26 texts.
void renderMissingIconWindows(const std::string& directory) {
    const orvik::StringsLocalizer english({TOLVANE_APP_RESOURCES, TOLVANE_KIT_RESOURCES}, "en");
    orvik::cairo::CairoSnapshotPlatform rendering(english);
    for (const auto& [variant, release] : {std::pair{"missing-icon-15", orvik::SystemVersion{15, 7, 0}},
                                           std::pair{"missing-icon-26", orvik::SystemVersion{26, 1, 0}}}) {
        const orvik::SystemVersion version = release;
        orvik::Snapshot::renderMenu(
            directory, variant,
            [version] {
                return orvik::MissingIconView{.help = orvik::missingIconHelp("Tolvane", version),
                                              .state = {},
                                              .perform = nullptr}
                    .body()
                    .appBrand(tolvane::musicBrand());
            },
            rendering);
    }
}

}  // namespace

int main(int argc, char** argv) {
    const std::vector<std::string> arguments(argv, argv + argc);
    if (const auto directory = orvik::CommandLineOption::value("--missing-icon", arguments)) {
        renderMissingIconWindows(*directory);
        return 0;
    }
    // The preference, as "--language CODE" or as the Mac app takes it.
    std::vector<std::string> preferred;
    if (const std::optional<std::string> language = orvik::CommandLineOption::value("--language", arguments)) {
        preferred.push_back(*language);
    } else if (const std::optional<std::string> languages =
                   orvik::CommandLineOption::value(appleLanguagesOption, arguments)) {
        preferred = orvik::StringsLocalizer::languagesArgument(*languages);
    }
    const std::optional<int> status = tolvane::runSnapshotIfAsked(arguments, [&preferred](const std::string& directory) {
        const std::vector<std::filesystem::path> resourceFolders = {TOLVANE_APP_RESOURCES, TOLVANE_KIT_RESOURCES};
        const orvik::StringsLocalizer localizer(
            resourceFolders, orvik::StringsLocalizer::preferredLocalization(
                                 orvik::StringsLocalizer::languagesIn(resourceFolders), preferred));
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
        std::fputs("usage: TolvanePreview --snapshot DIRECTORY [--language CODE | -AppleLanguages '(CODE, ...)'] | "
                   "--missing-icon DIRECTORY\n",
                   stderr);
        return 2;
    }
    return *status;
}
