// The preview program's pictures of the menu, read back from the PNG files
// it writes: the background, a card and the texts and symbols on it land on
// the nearest bytes of the design's colours. The program runs as
// scripts/preview runs it (TolvanePreview --snapshot DIRECTORY); the test
// lays the same menu out to know where the card and its title are.
#include <gtest/gtest.h>

#include <stdlib.h>

#include <cmath>
#include <cstdlib>
#include <filesystem>
#include <optional>
#include <string>
#include <vector>

#include "OrvikKit/CairoCanvas.h"
#include "OrvikKit/Layout.h"
#include "OrvikKit/Snapshot.h"
#include "PngPixels.h"
#include "Tolvane/MenuContent.h"
#include "Tolvane/MenuSnapshot.h"
#include "Tolvane/MenuView.h"
#include "TestSupport/BundleStrings.h"
#include "Tolvane/SnapshotServices.h"

namespace tolvane {
namespace {

using orvik::cairo::testing::blendedByte;
using orvik::cairo::testing::nearestByte;
using orvik::cairo::testing::opaqueGrey;
using orvik::cairo::testing::Pixel;
using orvik::cairo::testing::PngPixels;

// The design's colours: the snapshot backgrounds are white levels 0.93 and
// 0.16; the primary label colour is black (light) or white (dark) at 0.85
// alpha; a card is filled with the primary colour at 5% of its opacity.
struct Design {
    double background;
    double label;  // the primary colour's white level
};
constexpr Design light{0.93, 0};
constexpr Design dark{0.16, 1};
constexpr double primaryAlpha = 0.85;
constexpr double cardOpacity = 0.05;

// A frame in points as the pixels it covers at the snapshot scale, and a
// point as the pixel it falls in.
struct PixelRect {
    int x, y, width, height;
};
PixelRect pixelsOf(orvik::Rect frame) {
    const double scale = orvik::Snapshot::scale;
    const int x = static_cast<int>(std::floor(frame.x * scale));
    const int y = static_cast<int>(std::floor(frame.y * scale));
    return PixelRect{x, y, static_cast<int>(std::ceil(frame.maxX() * scale)) - x,
                     static_cast<int>(std::ceil(frame.maxY() * scale)) - y};
}
int pixelOf(double points) { return static_cast<int>(std::floor(points * orvik::Snapshot::scale)); }

const orvik::LayoutNode* findText(const orvik::LayoutNode& node, std::string_view text) {
    if (std::holds_alternative<orvik::TextNode>(node.view->node) && node.text == text) return &node;
    for (const orvik::LayoutNode& child : node.children) {
        if (const orvik::LayoutNode* found = findText(child, text)) return found;
    }
    return nullptr;
}

const orvik::LayoutNode* findSymbol(const orvik::LayoutNode& root, std::string_view name) {
    std::vector<const orvik::LayoutNode*> symbols;
    orvik::collect<orvik::SymbolNode>(root, symbols);
    for (const orvik::LayoutNode* node : symbols) {
        if (std::get<orvik::SymbolNode>(node->view->node).name == name) return node;
    }
    return nullptr;
}

// The pictures the preview program wrote, and where the now-playing card's
// title and pause symbol are.
struct Pictures {
    std::optional<PngPixels> light;
    std::optional<PngPixels> dark;
    orvik::Size size{};  // of the menu laid out here, in points
    orvik::Rect title{};
    orvik::Rect pause{};
    std::string failure;  // empty when all of the above was found
};

Pictures renderPictures() {
    Pictures pictures;
    std::string pattern = (std::filesystem::temp_directory_path() / "tolvane-preview-XXXXXX").string();
    if (mkdtemp(pattern.data()) == nullptr) {
        pictures.failure = "no temporary directory";
        return pictures;
    }
    const std::filesystem::path directory(pattern);
    const std::string command =
        std::string("'") + TOLVANE_PREVIEW_PROGRAM + "' --snapshot '" + directory.string() + "'";
    const int status = std::system(command.c_str());
    pictures.light = PngPixels::fromFile((directory / "menu-en-light.png").string());
    pictures.dark = PngPixels::fromFile((directory / "menu-en-dark.png").string());
    std::filesystem::remove_all(directory);
    if (status != 0 || !pictures.light || !pictures.dark) {
        pictures.failure = command + " exited with " + std::to_string(status) + " or wrote no readable PNGs";
        return pictures;
    }

    // The menu exactly as MenuSnapshot::render builds it (the sample
    // artwork draws in a frame of fixed size, so none is needed to lay it
    // out), laid out as Snapshot::write lays it out.
    orvik::Snapshot::setIsActive(true);
    orvik::cairo::CairoSnapshotPlatform platform(testsupport::bundleLocalizer("en"));
    const AppServices services = MenuSnapshot::refusingServices(TOLVANE_PREVIEW_VERSION);
    const std::shared_ptr<AppState> state = MenuSnapshot::sampleState(services, std::nullopt);
    MenuContent content = menuContent(state, MenuEnvironment{.loginItem = nullptr,
                                                             .openAtLogin = nullptr,
                                                             .urlOpener = services.urlOpener,
                                                             .version = TOLVANE_PREVIEW_VERSION,
                                                             .quit = [] {}});
    const orvik::View view = MenuView{std::move(content), orvik::ViewState{}}.body();
    const orvik::LayoutContext context{
        .measurer = platform.textMeasurer(),
        .localize = [&platform](const orvik::LocalizedText& text) { return platform.localized(text, "en"); },
        .pixelScale = orvik::Snapshot::scale,
    };
    const orvik::LayoutNode root = orvik::layout(view, orvik::ProposedSize::unspecified(), context);
    pictures.size = orvik::Size{root.frame.width, root.frame.height};
    const orvik::LayoutNode* title = findText(root, MenuSnapshot::sampleTitle);
    const orvik::LayoutNode* pause = findSymbol(root, "pause.fill");
    if (title == nullptr || pause == nullptr) {
        pictures.failure = "the sample's title or the pause symbol is not in the menu";
        return pictures;
    }
    pictures.title = title->frame;
    pictures.pause = pause->frame;
    return pictures;
}

const Pictures& pictures() {
    static const Pictures rendered = renderPictures();
    return rendered;
}

// The pixel of a region whose grey level is furthest from `from` (the
// darkest over a light card, the lightest over a dark one): where a
// glyph covers whole pixels, the glyph's own colour.
Pixel furthestFrom(const PngPixels& pixels, PixelRect region, int from) {
    Pixel furthest = pixels.at(region.x, region.y);
    for (int y = region.y; y < region.y + region.height; ++y) {
        for (int x = region.x; x < region.x + region.width; ++x) {
            const Pixel pixel = pixels.at(x, y);
            if (std::abs(pixel.red - from) > std::abs(furthest.red - from)) furthest = pixel;
        }
    }
    return furthest;
}

// One of the two pictures, and the bytes its design's colours land on.
struct Appearance {
    const char* name;
    const PngPixels& pixels;
    Design design;

    int background() const { return nearestByte(design.background); }
    int card() const { return blendedByte(design.label, primaryAlpha * cardOpacity, background()); }
    int labelOnCard() const { return blendedByte(design.label, primaryAlpha, card()); }
};

class PreviewSnapshotTest : public ::testing::Test {
protected:
    void SetUp() override { ASSERT_EQ(pictures().failure, ""); }

    static std::vector<Appearance> appearances() {
        return {Appearance{"light", *pictures().light, light}, Appearance{"dark", *pictures().dark, dark}};
    }
};

TEST_F(PreviewSnapshotTest, BothPicturesAreTheMenuLaidOutHereAtTwoPixelsAPoint) {
    for (const Appearance& appearance : appearances()) {
        SCOPED_TRACE(appearance.name);
        EXPECT_EQ(appearance.pixels.width(),
                  static_cast<int>(std::ceil(pictures().size.width * orvik::Snapshot::scale)));
        EXPECT_EQ(appearance.pixels.height(),
                  static_cast<int>(std::ceil(pictures().size.height * orvik::Snapshot::scale)));
    }
}

TEST_F(PreviewSnapshotTest, TheMenuIsAWholeNumberOfPointsSoNoRowOrColumnIsPartlyTransparent) {
    EXPECT_EQ(pictures().size.width, std::round(pictures().size.width));
    EXPECT_EQ(pictures().size.height, std::round(pictures().size.height));
    for (const Appearance& appearance : appearances()) {
        SCOPED_TRACE(appearance.name);
        EXPECT_EQ(appearance.pixels.height() % 2, 0) << "a whole number of points at two pixels a point";
        // The background fills the whole picture and the menu is drawn over
        // it: every pixel, the last row and column included, is opaque.
        int translucent = 0;
        std::string first;
        for (int y = 0; y < appearance.pixels.height(); ++y) {
            for (int x = 0; x < appearance.pixels.width(); ++x) {
                if (appearance.pixels.at(x, y).alpha == 255) continue;
                if (translucent++ == 0) {
                    first = "(" + std::to_string(x) + ", " + std::to_string(y) + ") has alpha " +
                            std::to_string(appearance.pixels.at(x, y).alpha);
                }
            }
        }
        EXPECT_EQ(translucent, 0) << "the first: " << first;
    }
}

TEST_F(PreviewSnapshotTest, TheBackgroundIsTheNearestByteOfItsWhiteLevel) {
    const std::vector<Appearance> both = appearances();
    EXPECT_EQ(both[0].background(), 237) << "round(255 x 0.93)";
    EXPECT_EQ(both[1].background(), 41) << "round(255 x 0.16)";
    // The background fills the menu's frame; where the frame ends within a
    // pixel, that last row or column is only partly covered, so the corners
    // checked are those of the whole pixels inside the frame.
    const int right = static_cast<int>(std::floor(pictures().size.width * orvik::Snapshot::scale)) - 1;
    const int bottom = static_cast<int>(std::floor(pictures().size.height * orvik::Snapshot::scale)) - 1;
    for (const Appearance& appearance : both) {
        SCOPED_TRACE(appearance.name);
        const Pixel expected = opaqueGrey(appearance.background());
        EXPECT_EQ(appearance.pixels.at(0, 0), expected);
        EXPECT_EQ(appearance.pixels.at(right, 0), expected);
        EXPECT_EQ(appearance.pixels.at(0, bottom), expected);
        EXPECT_EQ(appearance.pixels.at(right, bottom), expected);
    }
}

TEST_F(PreviewSnapshotTest, TheCardIsItsTranslucentFillBlendedOverTheBackground) {
    const std::vector<Appearance> both = appearances();
    // Light: black at alpha 0.0425 (11/255) over 237 is 227; dark: white at
    // the same alpha over 41 is 11 + 39 = 50.
    EXPECT_EQ(both[0].card(), 227);
    EXPECT_EQ(both[1].card(), 50);
    // Inside the now-playing card, four points above its title, where
    // nothing else is drawn: the pixel and all around it are the fill.
    const int x = pixelOf(pictures().title.x + 1);
    const int y = pixelOf(pictures().title.y - 4);
    for (const Appearance& appearance : both) {
        SCOPED_TRACE(appearance.name);
        for (int dy = -2; dy <= 2; ++dy) {
            for (int dx = -2; dx <= 2; ++dx) {
                EXPECT_EQ(appearance.pixels.at(x + dx, y + dy), opaqueGrey(appearance.card()))
                    << "at (" << x + dx << ", " << y + dy << ")";
            }
        }
    }
}

TEST_F(PreviewSnapshotTest, TheTitleAndThePauseSymbolOnTheCardAreThePrimaryLabelColorBlendedOverTheCard) {
    const std::vector<Appearance> both = appearances();
    // Light: black at alpha 0.85 (217/255) over 227 is 34; dark: white at
    // 0.85 over 50 is 217 + 7 = 224.
    EXPECT_EQ(both[0].labelOnCard(), 34);
    EXPECT_EQ(both[1].labelOnCard(), 224);
    for (const Appearance& appearance : both) {
        SCOPED_TRACE(appearance.name);
        const Pixel expected = opaqueGrey(appearance.labelOnCard());
        EXPECT_EQ(furthestFrom(appearance.pixels, pixelsOf(pictures().title), appearance.card()), expected)
            << "the title";
        EXPECT_EQ(furthestFrom(appearance.pixels, pixelsOf(pictures().pause), appearance.card()), expected)
            << "the pause symbol";
    }
}

}  // namespace
}  // namespace tolvane
