// What a host view keeps in step with the tree it shows, and what changed
// between two layouts of it, so that the host updates its platform objects
// in place rather than making them anew on every hover change, click or
// state change: its tooltip rectangles (a tooltip rectangle made again under
// the pointer loses its tooltip), its accessibility elements (assistive
// technology keeps its place on an element whose frame or label changed) and
// its native pop-up menus (emptied and refilled, an open menu would lose its
// items). The decisions are here; the host only applies them.
//
// Main thread only (the elements point into a layout).
#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "OrvikKit/HostSupport.h"
#include "OrvikKit/Layout.h"

namespace orvik {

// --- Tooltips ---------------------------------------------------------------------

// A tooltip the host shows over a rectangle of its own.
struct ToolTipRegion {
    Rect frame{};
    std::string text{};

    friend bool operator==(const ToolTipRegion&, const ToolTipRegion&) = default;
};

// Every tooltip of a laid-out tree. A tooltip around a native control is
// the control's own (the control, a view above the host's, would hide a
// rectangle of the host): one text per switch and per pop-up menu, in tree
// order, empty where the control has none. The rest are rectangles.
struct HostToolTips {
    std::vector<ToolTipRegion> regions{};
    std::vector<std::string> switches{};
    std::vector<std::string> popUpMenus{};

    friend bool operator==(const HostToolTips&, const HostToolTips&) = default;
};

HostToolTips hostToolTips(const LayoutNode& root, const std::function<std::string(const LocalizedText&)>& localize);

// --- Accessibility ----------------------------------------------------------------

// One accessibility element as the host keeps it, under a key that stays
// the same from one layout to the next while the element is the same thing
// on screen: a button is keyed by its id; a text of ours by its
// localisation key, a text shown as it stands (a track's title) by its place
// among those; a native control by its kind and place. A key that would
// repeat gets its occurrence ("#1", "#2") appended.
struct AccessibilityElement {
    std::string key;
    AccessibilityNode::Role role = AccessibilityNode::Role::staticText;
    std::string label;
    Rect frame{};
    const LayoutNode* node = nullptr;  // in the layout it was read from; not compared

    friend bool operator==(const AccessibilityElement& lhs, const AccessibilityElement& rhs) {
        return lhs.key == rhs.key && lhs.role == rhs.role && lhs.label == rhs.label && lhs.frame == rhs.frame;
    }
};

// The accessibility elements of a laid-out tree (accessibilityNodes), keyed,
// in tree order.
std::vector<AccessibilityElement> accessibilityElements(
    const LayoutNode& root, const std::function<std::string(const LocalizedText&)>& localize);

// What changed between two element lists, by key: the elements that came
// and went, those that stayed but moved or were relabelled (each key in
// the order of the list it is in).
struct AccessibilityChanges {
    std::vector<std::string> appeared{};
    std::vector<std::string> disappeared{};
    std::vector<std::string> moved{};
    std::vector<std::string> relabelled{};
    bool reordered = false;  // the same keys in another order

    // Elements came or went, or changed their order: the host tells
    // assistive technology that the layout changed.
    bool setChanged() const noexcept { return !appeared.empty() || !disappeared.empty() || reordered; }
    bool none() const noexcept { return !setChanged() && moved.empty() && relabelled.empty(); }

    friend bool operator==(const AccessibilityChanges&, const AccessibilityChanges&) = default;
};

AccessibilityChanges accessibilityChanges(const std::vector<AccessibilityElement>& before,
                                          const std::vector<AccessibilityElement>& after);

// --- Pop-up menus -----------------------------------------------------------------

// A native pop-up menu's items as shown and its selection.
struct PopUpMenuState {
    std::vector<std::string> titles{};
    std::size_t selectedIndex = 0;

    friend bool operator==(const PopUpMenuState&, const PopUpMenuState&) = default;
};

// The pop-up menus of a laid-out tree, in tree order.
std::vector<PopUpMenuState> popUpMenus(const LayoutNode& root);

// What the host changes on a pop-up menu it shows as `before` (none: a new
// one) to show `after`: nothing, only the selection, or its items (and then
// the selection).
enum class PopUpChange : std::uint8_t { none, selection, items };

PopUpChange popUpChange(const std::optional<PopUpMenuState>& before, const PopUpMenuState& after);

}  // namespace orvik
