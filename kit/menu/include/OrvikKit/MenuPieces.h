// The kit's menu building blocks as view descriptions: each holds its inputs
// and builds its part of the view tree, reading the brand from the
// environment where it needs it (never as an argument). Sizes are points;
// fonts the system font; rounded rectangles have continuous corners.
//
// The pieces that stand for native controls (MenuSwitch, MenuPicker) build
// the live control while Snapshot::isActive is false, and a drawn static form
// while it is true, because an off-screen rendering has no native controls.
//
// Main thread only.
#pragma once

#include <cstddef>
#include <functional>
#include <string>
#include <utility>
#include <vector>

#include "OrvikKit/LocalizedText.h"
#include "OrvikKit/MenuChrome.h"
#include "OrvikKit/Snapshot.h"
#include "OrvikKit/ViewTree.h"

namespace orvik {

// A rounded square filled with the brand gradient, the brand symbol on it in
// white, with a shadow in the brand accent.
struct AppGlyph {
    double size = 0;

    static constexpr double cornerRatio = 0.2237;
    View body() const;
};

// The content padded, stretched to the full width, on a faint rounded
// rectangle with a faint border.
struct Card {
    double padding = 0;
    View content{};

    static constexpr double cornerRadius = 12;
    View body() &&;
};

// A white symbol on a tile filled with the automatic gradient of the brand
// accent.
struct ActionIcon {
    std::string symbol{};
    double size = 0;

    View body() const;
};

// An icon, a one-line title and a trailing accessory, 38 high.
struct SettingRow {
    std::string symbol{};
    LocalizedText title{};
    View accessory{};

    View body() &&;
};

struct MenuSwitch {
    Binding<bool> isOn{};
    ControlSize size = ControlSize::regular;

    // The drawn form's size: 26 × 15 at the mini size, 32 × 18 otherwise.
    static constexpr double drawnWidth(ControlSize size) { return size == ControlSize::mini ? 26 : 32; }
    static constexpr double drawnHeight(ControlSize size) { return size == ControlSize::mini ? 15 : 18; }
    View body() const;
};

// A pop-up menu over a list of options.
template <class Option>
struct MenuPicker {
    Binding<Option> selection{};
    std::vector<Option> options{};
    std::function<LocalizedText(const Option&)> title;

    View body() const;
};

// The drawn pop-up: the selection's title and an up-down chevron on a faint
// rounded rectangle.
View menuPickerDrawn(LocalizedText selectionTitle);

// A capsule button; the prominent one is filled with the automatic gradient of
// the brand accent. The whole is drawn at opacity 0.7 while pressed.
struct PillButtonStyle {
    bool prominent = false;

    // The button `id` with `label` that runs `action`; `isPressed` from the
    // host's view state.
    View body(std::string id, LocalizedText label, std::function<void()> action, bool isPressed) const;
};

// One cap per key, in order (equal keys may repeat).
struct KeyCaps {
    std::vector<std::string> keys{};

    View body() const;
};

// The platform's bordered button at the small control size.
View borderedButton(std::string id, LocalizedText label, std::function<void()> action, bool isPressed);

// The warning card: the symbol in orange, the title, the message wrapping
// as far as it needs, and a bordered button.
View body(const WarningCard& card, const ViewState& state = {});

template <class Option>
View MenuPicker<Option>::body() const {
    std::size_t selectedIndex = 0;
    std::vector<LocalizedText> titles{};
    titles.reserve(options.size());
    for (std::size_t index = 0; index < options.size(); ++index) {
        titles.push_back(title(options[index]));
        if (options[index] == selection.value) selectedIndex = index;
    }
    if (Snapshot::isActive()) return menuPickerDrawn(title(selection.value));
    return nativePicker(std::move(titles), selectedIndex,
                        [options = options, set = selection.set](std::size_t index) {
                            if (index < options.size() && set) set(options[index]);
                        });
}

}  // namespace orvik
