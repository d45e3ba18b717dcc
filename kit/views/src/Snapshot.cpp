#include "OrvikKit/Snapshot.h"

#include <atomic>
#include <cmath>
#include <cstdio>

namespace orvik::Snapshot {

namespace {

std::atomic<bool> flag{false};

// Replaces the whole file, or leaves nothing behind when it cannot be opened.
void writeFile(const std::string& path, const std::vector<std::uint8_t>& bytes) {
    std::FILE* file = std::fopen(path.c_str(), "wb");
    if (file == nullptr) return;
    const std::size_t written = std::fwrite(bytes.data(), 1, bytes.size(), file);
    const bool closed = std::fclose(file) == 0;
    if (written != bytes.size() || !closed) std::remove(path.c_str());
}

std::string joinedPath(std::string_view directory, const std::string& name) {
    std::string path(directory);
    if (!path.empty() && path.back() != '/') path += '/';
    return path + name;
}

}  // namespace

bool isActive() noexcept { return flag.load(std::memory_order_relaxed); }
void setIsActive(bool active) noexcept { flag.store(active, std::memory_order_relaxed); }

std::string language(const std::vector<std::string>& preferredLocalizations) {
    return preferredLocalizations.empty() ? std::string("en") : preferredLocalizations.front();
}

const std::vector<AppearanceEntry>& appearances() {
    static const std::vector<AppearanceEntry> table{
        {"light", Appearance::light, Rgba{0.93, 0.93, 0.93, 1}},
        {"dark", Appearance::dark, Rgba{0.16, 0.16, 0.16, 1}},
    };
    return table;
}

std::string fileName(std::string_view language, std::optional<std::string_view> variant,
                     std::string_view appearance) {
    std::string name = "menu-";
    name += language;
    if (variant) {
        name += '-';
        name += *variant;
    }
    name += '-';
    name += appearance;
    name += ".png";
    return name;
}

void renderMenu(std::string_view to, std::optional<std::string_view> variant, const std::function<View()>& content,
                SnapshotPlatform& platform) {
    setIsActive(true);
    const std::string lang = language(platform.preferredLocalizations());
    for (const AppearanceEntry& entry : appearances()) {
        const View view = content();
        write(view, joinedPath(to, fileName(lang, variant, entry.name)), entry.appearance, entry.background, lang,
              platform);
    }
}

void write(const View& view, const std::string& path, Appearance appearance, Rgba background,
           std::string_view language, SnapshotPlatform& platform) {
    const LayoutContext context{
        .measurer = platform.textMeasurer(),
        .localize = [&platform, language](const LocalizedText& text) { return platform.localized(text, language); },
        .direction = layoutDirectionForLanguage(language),
        .pixelScale = scale,
    };
    const LayoutNode root = layout(view, ProposedSize::unspecified(), context);
    const double pixelWidth = std::ceil(root.frame.width * scale);
    const double pixelHeight = std::ceil(root.frame.height * scale);
    if (!(pixelWidth >= 1 && pixelHeight >= 1 && pixelWidth < 1e5 && pixelHeight < 1e5)) return;

    const std::unique_ptr<BitmapCanvas> canvas =
        platform.makeBitmap(static_cast<int>(pixelWidth), static_cast<int>(pixelHeight), scale, appearance);
    if (!canvas) return;
    // The background fills the whole image, the menu is drawn over it.
    canvas->fill(PlacedShape{Shape::rectangle(), root.frame}, Paint::solid(background));
    paint(root, *canvas, appearance);
    const std::optional<std::vector<std::uint8_t>> png = canvas->pngData();
    if (!png) return;
    writeFile(path, *png);
}

}  // namespace orvik::Snapshot
