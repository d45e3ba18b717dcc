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
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <vector>

#include "OrvikKit/Layout.h"

namespace orvik {

// The identifiers of the hover areas (trackingHover) whose frames contain
// `point`; a point outside every area gives none.
std::set<std::string, std::less<>> hoveredIDs(const LayoutNode& root, Point point);

// The first button, in tree order, whose shortcut is `key` (pressed with the
// command key); null when none has it.
const LayoutNode* buttonForShortcut(const LayoutNode& root, char key);

// --- Keyboard focus (Full Keyboard Access) ---------------------------------------

// The drawn buttons that take keyboard focus, by id, in reading order: tree
// order, which runs top to bottom and leading to trailing (left to right,
// and right to left in a right-to-left layout, whose stacks are mirrored).
// The native switch and pop-up menu are not among them: they are real
// controls and take focus through AppKit's own key-view loop.
std::vector<std::string> focusOrder(const LayoutNode& root);

enum class FocusMove : std::uint8_t { next, previous };

// Where focus goes from `focused` (Tab: next, Shift-Tab: previous): the
// next or previous button in reading order, wrapping round at either end;
// from no focus (or a button no longer shown), the first or the last. None
// when the tree has no button.
std::optional<std::string> movedFocus(const LayoutNode& root, const std::optional<std::string>& focused,
                                      FocusMove move);

// `focused` while its button is still shown; none once it is gone (the tree
// was built again without it), so that Tab starts again from the first.
std::optional<std::string> keptFocus(const LayoutNode& root, const std::optional<std::string>& focused);

// What a key pressed in the host means, from its characters (ignoring
// modifiers) and whether Shift is down: Escape closes the host; with Full
// Keyboard Access on, Tab and Shift-Tab (which arrives as the back-tab
// character) move the focus, and Space, Return and Enter press the focused
// button. Anything else is not the host's (the responder chain has it).
enum class KeyCommand : std::uint8_t { none, focusNext, focusPrevious, pressFocused, close };

KeyCommand keyCommand(std::string_view characters, bool shift, bool fullKeyboardAccess);

// The button with `id`, first in tree order; null when none has it.
const LayoutNode* buttonWithID(const LayoutNode& root, std::string_view id);

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
