// What a platform host reads off a laid-out view tree to drive the real
// view it sits in: which hover areas contain the pointer, which button a
// keyboard shortcut presses, and the nodes assistive technology is told
// about, with their roles and labels. Portable, so that the host adapters
// only translate.
//
// Main thread only (a layout's nodes point into its tree).
#pragma once

#include <cstdint>
#include <functional>
#include <set>
#include <string>
#include <vector>

#include "OrvikKit/Layout.h"

namespace orvik {

// The identifiers of the hover areas (trackingHover) whose frames contain
// `point`; a point outside every area gives none.
std::set<std::string, std::less<>> hoveredIDs(const LayoutNode& root, Point point);

// The first button, in tree order, whose shortcut is `key` (pressed with the
// command key); null when none has it.
const LayoutNode* buttonForShortcut(const LayoutNode& root, char key);

// One element assistive technology reads: a button (labelled by the help
// text around it, or else by the texts and symbol names inside it), a text
// outside any button, or a native switch or pop-up menu (labelled by the
// first text of the row it sits in). Images and shapes are decorative and
// left out; so are the contents of a button, which speaks for them.
struct AccessibilityNode {
    enum class Role : std::uint8_t { button, staticText, switchControl, popUpMenu };

    Role role = Role::staticText;
    std::string label;
    const LayoutNode* node = nullptr;  // the button, text or control, in tree order

    friend bool operator==(const AccessibilityNode&, const AccessibilityNode&) = default;
};

// The accessibility elements of a laid-out tree, in tree order, with help
// texts looked up through `localize`.
std::vector<AccessibilityNode> accessibilityNodes(const LayoutNode& root,
                                                  const std::function<std::string(const LocalizedText&)>& localize);

}  // namespace orvik
