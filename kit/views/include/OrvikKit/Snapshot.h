// Snapshot rendering: a view drawn off screen, in light and dark appearance,
// to PNG files, for pictures of the menu made from the real view code.
//
// `isActive` is the one process-wide snapshot flag: false at start, set by
// `renderMenu` before it renders anything and never reset by it (the
// process exits afterwards). The pieces that draw native controls
// (MenuSwitch, MenuPicker), the hover modifier and the open-at-login row
// read it each time they are built, and draw static forms while it is set.
//
// Rendering reaches the platform through `SnapshotPlatform` (text
// measurement, a bitmap canvas that encodes PNG, the bundle's preferred
// localisations); files are written here, portably. Every failure is
// silent: that file is left missing and rendering goes on.
//
// Main thread only.
#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "OrvikKit/Canvas.h"
#include "OrvikKit/Layout.h"
#include "OrvikKit/ViewColor.h"
#include "OrvikKit/ViewTree.h"

namespace orvik {

// A canvas over a bitmap that can hand its pixels out as PNG data.
class BitmapCanvas : public Canvas {
public:
    // The bitmap encoded as PNG, or nothing when encoding fails.
    virtual std::optional<std::vector<std::uint8_t>> pngData() = 0;
};

class SnapshotPlatform {
public:
    virtual ~SnapshotPlatform() = default;

    virtual TextMeasurer& textMeasurer() = 0;
    // Looks a localised text up in `language`.
    virtual std::string localized(const LocalizedText& text, std::string_view language) = 0;
    // The main bundle's preferred localisations, most preferred first.
    virtual std::vector<std::string> preferredLocalizations() = 0;
    // A transparent bitmap of the given pixel size whose canvas draws `scale`
    // pixels per point in `appearance`; nothing when none can be made.
    virtual std::unique_ptr<BitmapCanvas> makeBitmap(int pixelWidth, int pixelHeight, double scale,
                                                     Appearance appearance) = 0;
};

namespace Snapshot {

bool isActive() noexcept;
void setIsActive(bool active) noexcept;

// The first of the preferred localisations, or "en" when there is none.
std::string language(const std::vector<std::string>& preferredLocalizations);

// One row of the appearance table.
struct AppearanceEntry {
    std::string_view name;  // "light" or "dark"
    Appearance appearance;
    Rgba background;  // sRGB grey of white level 0.93 or 0.16
};
const std::vector<AppearanceEntry>& appearances();

// "menu", the language, the variant when given and the appearance, joined
// by hyphens, with ".png": menu-en-light.png, menu-en-wide-dark.png.
std::string fileName(std::string_view language, std::optional<std::string_view> variant,
                     std::string_view appearance);

// Sets the flag, then for "light" and then "dark": builds the view with
// `content`, and writes it to the directory `to` (not created when missing)
// under its file name.
void renderMenu(std::string_view to, std::optional<std::string_view> variant, const std::function<View()>& content,
                SnapshotPlatform& platform);

// Lays `view` out at its own size on the pixel grid of scale 2 (pixels are
// twice the points; the image is a whole number of points) and paints it
// on `background` under `appearance`, with texts looked up in `language`
// and laid out in its direction (layoutDirectionForLanguage), and writes
// the PNG to `path` (a whole-file write that replaces an existing file).
// Any failure leaves the file unwritten.
void write(const View& view, const std::string& path, Appearance appearance, Rgba background,
           std::string_view language, SnapshotPlatform& platform);

inline constexpr double scale = 2;

}  // namespace Snapshot

}  // namespace orvik
