#include "OrvikKit/HostUpdates.h"

#include <algorithm>
#include <map>
#include <set>
#include <utility>
#include <variant>

namespace orvik {

namespace {

struct ToolTipWalker {
    const std::function<std::string(const LocalizedText&)>& localize;
    HostToolTips tips{};
    std::vector<const TooltipNode*> around{};  // the tooltips around the node visited, outermost first

    std::string innermost() const { return around.empty() ? std::string() : localize(around.back()->text); }

    // Whether `node` holds a native control, which then carries its tooltip.
    static bool holdsControl(const LayoutNode& node) {
        if (std::holds_alternative<SwitchNode>(node.view->node) || std::holds_alternative<PickerNode>(node.view->node)) {
            return true;
        }
        return std::any_of(node.children.begin(), node.children.end(), holdsControl);
    }

    void visit(const LayoutNode& node) {
        const View::Node& payload = node.view->node;
        if (std::holds_alternative<SwitchNode>(payload)) {
            tips.switches.push_back(innermost());
            return;
        }
        if (std::holds_alternative<PickerNode>(payload)) {
            tips.popUpMenus.push_back(innermost());
            return;
        }
        const auto* tooltip = std::get_if<TooltipNode>(&payload);
        if (tooltip != nullptr && !holdsControl(node)) tips.regions.push_back({node.frame, localize(tooltip->text)});
        if (tooltip != nullptr) around.push_back(tooltip);
        for (const LayoutNode& child : node.children) visit(child);
        if (tooltip != nullptr) around.pop_back();
    }
};

// The key of an element before occurrences are counted.
std::string baseKey(const AccessibilityNode& node) {
    switch (node.role) {
    case AccessibilityNode::Role::button: return "button:" + std::get<ButtonNode>(node.node->view->node).id;
    case AccessibilityNode::Role::staticText: {
        const auto& text = std::get<TextNode>(node.node->view->node);
        if (const auto* key = std::get_if<LocalizedText>(&text.content)) {
            return "text:" + (key->table ? *key->table + ":" : std::string()) + key->key;
        }
        return "text";  // shown as it stands: keyed by its place among those
    }
    case AccessibilityNode::Role::switchControl: return "switch";
    case AccessibilityNode::Role::popUpMenu: return "popUpMenu";
    }
    return "element";
}

}  // namespace

HostToolTips hostToolTips(const LayoutNode& root, const std::function<std::string(const LocalizedText&)>& localize) {
    ToolTipWalker walker{localize};
    walker.visit(root);
    return std::move(walker.tips);
}

std::vector<AccessibilityElement> accessibilityElements(
    const LayoutNode& root, const std::function<std::string(const LocalizedText&)>& localize) {
    std::vector<AccessibilityElement> elements;
    std::map<std::string, int, std::less<>> seen;
    for (AccessibilityNode& node : accessibilityNodes(root, localize)) {
        std::string key = baseKey(node);
        const int occurrence = seen[key]++;
        if (occurrence > 0 || node.role == AccessibilityNode::Role::switchControl ||
            node.role == AccessibilityNode::Role::popUpMenu || key == "text") {
            // Places count from 0 for the kinds keyed by their place.
            key += "#" + std::to_string(occurrence);
        }
        elements.push_back({std::move(key), node.role, std::move(node.label), node.node->frame, node.node});
    }
    return elements;
}

AccessibilityChanges accessibilityChanges(const std::vector<AccessibilityElement>& before,
                                          const std::vector<AccessibilityElement>& after) {
    AccessibilityChanges changes;
    std::map<std::string_view, const AccessibilityElement*, std::less<>> earlier;
    for (const AccessibilityElement& element : before) earlier.emplace(element.key, &element);
    std::set<std::string_view, std::less<>> later;
    std::vector<std::string_view> keptInNewOrder;
    for (const AccessibilityElement& element : after) {
        later.insert(element.key);
        const auto found = earlier.find(element.key);
        if (found == earlier.end() || found->second->role != element.role) {
            changes.appeared.push_back(element.key);
            continue;
        }
        keptInNewOrder.push_back(element.key);
        if (found->second->frame != element.frame) changes.moved.push_back(element.key);
        if (found->second->label != element.label) changes.relabelled.push_back(element.key);
    }
    std::vector<std::string_view> keptInOldOrder;
    for (const AccessibilityElement& element : before) {
        const bool sameRole = std::any_of(after.begin(), after.end(), [&element](const AccessibilityElement& other) {
            return other.key == element.key && other.role == element.role;
        });
        if (!later.contains(element.key) || !sameRole) {
            changes.disappeared.push_back(element.key);
        } else {
            keptInOldOrder.push_back(element.key);
        }
    }
    changes.reordered = keptInOldOrder != keptInNewOrder;
    return changes;
}

std::vector<PopUpMenuState> popUpMenus(const LayoutNode& root) {
    std::vector<const LayoutNode*> pickers;
    collect<PickerNode>(root, pickers);
    std::vector<PopUpMenuState> menus;
    menus.reserve(pickers.size());
    for (const LayoutNode* picker : pickers) {
        menus.push_back({picker->options, std::get<PickerNode>(picker->view->node).selectedIndex});
    }
    return menus;
}

PopUpChange popUpChange(const std::optional<PopUpMenuState>& before, const PopUpMenuState& after) {
    if (!before || before->titles != after.titles) return PopUpChange::items;
    if (before->selectedIndex != after.selectedIndex) return PopUpChange::selection;
    return PopUpChange::none;
}

}  // namespace orvik
