#include "OrvikKit/HostSupport.h"

#include <algorithm>
#include <variant>

namespace orvik {

namespace {

void collectHovered(const LayoutNode& node, Point point, std::set<std::string, std::less<>>& into) {
    if (const auto* hover = std::get_if<HoverNode>(&node.view->node)) {
        if (node.frame.contains(point)) into.insert(hover->id);
    }
    for (const LayoutNode& child : node.children) collectHovered(child, point, into);
}

// The texts (and, for icons, the symbol names) inside `node`, joined with
// spaces.
void appendTexts(const LayoutNode& node, std::string& into) {
    const View::Node& payload = node.view->node;
    const std::string* piece = nullptr;
    std::string symbolName;
    if (std::holds_alternative<TextNode>(payload)) {
        piece = &node.text;
    } else if (const auto* symbol = std::get_if<SymbolNode>(&payload)) {
        symbolName = symbol->name;
        piece = &symbolName;
    }
    if (piece != nullptr && !piece->empty()) {
        if (!into.empty()) into += ' ';
        into += *piece;
    }
    for (const LayoutNode& child : node.children) appendTexts(child, into);
}

const LayoutNode* firstText(const LayoutNode& node) {
    if (std::holds_alternative<TextNode>(node.view->node) && !node.text.empty()) return &node;
    for (const LayoutNode& child : node.children) {
        if (const LayoutNode* found = firstText(child)) return found;
    }
    return nullptr;
}

struct Walker {
    const std::function<std::string(const LocalizedText&)>& localize;
    std::vector<const LayoutNode*> ancestors{};
    std::vector<AccessibilityNode> nodes{};

    // The help text of the innermost tooltip around the node being visited.
    std::string helpText() const {
        for (auto ancestor = ancestors.rbegin(); ancestor != ancestors.rend(); ++ancestor) {
            if (const auto* tooltip = std::get_if<TooltipNode>(&(*ancestor)->view->node)) {
                return localize(tooltip->text);
            }
        }
        return {};
    }

    // The first text of the innermost ancestor that holds one: the row a
    // control sits in.
    std::string rowLabel() const {
        for (auto ancestor = ancestors.rbegin(); ancestor != ancestors.rend(); ++ancestor) {
            if (const LayoutNode* text = firstText(**ancestor)) return text->text;
        }
        return {};
    }

    void visit(const LayoutNode& node) {
        const View::Node& payload = node.view->node;
        if (std::holds_alternative<ButtonNode>(payload)) {
            std::string label = helpText();
            if (label.empty()) appendTexts(node, label);
            nodes.push_back({AccessibilityNode::Role::button, std::move(label), &node});
            return;  // the button speaks for its contents
        }
        if (std::holds_alternative<TextNode>(payload)) {
            if (!node.text.empty()) nodes.push_back({AccessibilityNode::Role::staticText, node.text, &node});
            return;
        }
        if (std::holds_alternative<SwitchNode>(payload)) {
            nodes.push_back({AccessibilityNode::Role::switchControl, rowLabel(), &node});
            return;
        }
        if (std::holds_alternative<PickerNode>(payload)) {
            nodes.push_back({AccessibilityNode::Role::popUpMenu, rowLabel(), &node});
            return;
        }
        ancestors.push_back(&node);
        for (const LayoutNode& child : node.children) visit(child);
        ancestors.pop_back();
    }
};

}  // namespace

std::set<std::string, std::less<>> hoveredIDs(const LayoutNode& root, Point point) {
    std::set<std::string, std::less<>> ids;
    collectHovered(root, point, ids);
    return ids;
}

const LayoutNode* buttonForShortcut(const LayoutNode& root, char key) {
    if (const auto* button = std::get_if<ButtonNode>(&root.view->node)) {
        if (button->shortcut == key) return &root;
    }
    for (const LayoutNode& child : root.children) {
        if (const LayoutNode* found = buttonForShortcut(child, key)) return found;
    }
    return nullptr;
}

std::vector<std::string> focusOrder(const LayoutNode& root) {
    std::vector<const LayoutNode*> buttons;
    collect<ButtonNode>(root, buttons);
    std::vector<std::string> ids;
    ids.reserve(buttons.size());
    for (const LayoutNode* button : buttons) {
        const std::string& id = std::get<ButtonNode>(button->view->node).id;
        if (std::find(ids.begin(), ids.end(), id) == ids.end()) ids.push_back(id);
    }
    return ids;
}

std::optional<std::string> movedFocus(const LayoutNode& root, const std::optional<std::string>& focused,
                                      FocusMove move) {
    const std::vector<std::string> order = focusOrder(root);
    if (order.empty()) return std::nullopt;
    const auto at = focused ? std::find(order.begin(), order.end(), *focused) : order.end();
    if (at == order.end()) return move == FocusMove::next ? order.front() : order.back();
    const auto index = static_cast<std::size_t>(at - order.begin());
    if (move == FocusMove::next) return order[(index + 1) % order.size()];
    return order[(index + order.size() - 1) % order.size()];
}

std::optional<std::string> keptFocus(const LayoutNode& root, const std::optional<std::string>& focused) {
    if (!focused || buttonWithID(root, *focused) == nullptr) return std::nullopt;
    return focused;
}

KeyCommand keyCommand(std::string_view characters, bool shift, bool fullKeyboardAccess) {
    if (characters == "\x1b") return KeyCommand::close;
    if (!fullKeyboardAccess) return KeyCommand::none;
    if (characters == "\x19" || (characters == "\t" && shift)) return KeyCommand::focusPrevious;
    if (characters == "\t") return KeyCommand::focusNext;
    if (characters == " " || characters == "\r" || characters == "\x03") return KeyCommand::pressFocused;
    return KeyCommand::none;
}

const LayoutNode* buttonWithID(const LayoutNode& root, std::string_view id) {
    if (const auto* button = std::get_if<ButtonNode>(&root.view->node)) {
        if (button->id == id) return &root;
    }
    for (const LayoutNode& child : root.children) {
        if (const LayoutNode* found = buttonWithID(child, id)) return found;
    }
    return nullptr;
}

std::vector<AccessibilityNode> accessibilityNodes(const LayoutNode& root,
                                                  const std::function<std::string(const LocalizedText&)>& localize) {
    Walker walker{localize};
    walker.visit(root);
    return std::move(walker.nodes);
}

}  // namespace orvik
