// The host view over AppKit. Layout, hover areas, shortcuts, tooltips and
// accessibility labels come from the portable kit (Layout.h,
// HostSupport.h), and so does what changed from one layout to the next
// (HostUpdates.h): tooltips, accessibility elements and pop-up menus are
// updated in place, never made anew for a hover change or a click. Drawing
// comes from the CoreGraphics canvas.
#import "OrvikKitMac/HostView.h"

#include <algorithm>
#include <functional>
#include <map>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "OrvikKit/Canvas.h"
#include "OrvikKit/HostSupport.h"
#include "OrvikKit/HostUpdates.h"
#include "OrvikKit/Layout.h"
#include "OrvikKitMac/CoreGraphicsCanvas.h"
#include "OrvikKitMac/BaseAdapters.h"
#import "OrvikKitMac/Strings.h"

// The target of a native control: calls what the tree's control asks for.
@interface OrvikControlTarget : NSObject
- (instancetype)initWithAction:(std::function<void(id)>)action;
- (void)performAction:(id)sender;
@end

@implementation OrvikControlTarget {
    std::function<void(id)> _action;
}

- (instancetype)initWithAction:(std::function<void(id)>)action {
    self = [super init];
    if (self != nil) _action = std::move(action);
    return self;
}

- (void)performAction:(id)sender {
    if (_action) _action(sender);
}

@end

// A drawn button as assistive technology sees it: pressing it runs the
// button's action.
@interface OrvikAccessibleButton : NSAccessibilityElement
@property (nonatomic, copy) void (^press)(void);
@end

@implementation OrvikAccessibleButton

- (BOOL)accessibilityPerformPress {
    if (self.press == nil) return NO;
    self.press();
    return YES;
}

@end

namespace {

NSRect platformRect(const orvik::Rect& rect) {
    return NSRect{.origin = {.x = rect.x, .y = rect.y}, .size = {.width = rect.width, .height = rect.height}};
}

NSString* nonNilString(const std::string& text) {
    NSString* string = orvik::mac::platformString(text);
    return string != nil ? string : @"";
}

std::string localized(const orvik::LocalizedText& text) { return orvik::mac::localizedString(text); }

// A control's tooltip: the text, or none when it is empty.
NSString* _Nullable toolTipText(const std::string& text) {
    return text.empty() ? nil : orvik::mac::platformString(text);
}

// The live control node of `Kind` at `index` in tree order, in the current
// layout; null when the tree has fewer.
template <class Kind>
const orvik::LayoutNode* liveControl(const orvik::LayoutNode& root, std::size_t index) {
    std::vector<const orvik::LayoutNode*> nodes;
    orvik::collect<Kind>(root, nodes);
    return index < nodes.size() ? nodes[index] : nullptr;
}

NSControlSize platformControlSize(orvik::ControlSize size) {
    switch (size) {
    case orvik::ControlSize::mini: return NSControlSizeMini;
    case orvik::ControlSize::small: return NSControlSizeSmall;
    case orvik::ControlSize::regular: return NSControlSizeRegular;
    case orvik::ControlSize::large:
        if (@available(macOS 11.0, *)) return NSControlSizeLarge;
        return NSControlSizeRegular;
    }
    return NSControlSizeRegular;
}

}  // namespace

@implementation OrvikHostView {
    std::shared_ptr<orvik::HostedContent> _content;
    std::shared_ptr<orvik::MainThread> _mainThread;
    orvik::Subscription _changes;
    orvik::mac::CoreTextMeasurer _measurer;
    std::unique_ptr<orvik::View> _tree;
    orvik::LayoutNode _layout;
    NSTrackingArea* _trackingArea;
    std::vector<NSSwitch*> _switches;              // the native switches, in tree order
    std::vector<NSPopUpButton*> _pickers;          // the native pop-up menus, in tree order
    std::vector<OrvikControlTarget*> _switchTargets;  // their targets (controls keep targets weakly)
    std::vector<OrvikControlTarget*> _pickerTargets;
    std::vector<orvik::PopUpMenuState> _pickerStates;  // what each pop-up menu shows
    orvik::HostToolTips _toolTips;                 // what the tooltip rectangles show
    std::vector<NSString*> _toolTipOwners;         // their owners (views keep them weakly)
    std::vector<orvik::AccessibilityElement> _elements;  // as last described (frames, labels, keys)
    std::map<std::string, id> _elementObjects;     // the drawn buttons' and texts' elements, by key
    bool _rebuildPosted;
}

- (instancetype)initWithContent:(std::shared_ptr<orvik::HostedContent>)content
                     mainThread:(std::shared_ptr<orvik::MainThread>)mainThread {
    self = [super initWithFrame:NSRect{}];
    if (self == nil) return nil;
    _content = std::move(content);
    _mainThread = std::move(mainThread);
    _rebuildPosted = false;
    __weak OrvikHostView* weakSelf = self;
    std::weak_ptr<orvik::MainThread> weakThread = _mainThread;
    _changes = _content->changeSignal().subscribe([weakSelf, weakThread] {
        // The change has not landed yet: rebuild once, in a later task.
        OrvikHostView* host = weakSelf;
        const auto thread = weakThread.lock();
        if (host == nil || !thread || host->_rebuildPosted) return;
        host->_rebuildPosted = true;
        thread->post([weakSelf] {
            OrvikHostView* later = weakSelf;
            if (later == nil) return;
            later->_rebuildPosted = false;
            [later rebuild];
        });
    });
    [self rebuild];
    return self;
}

- (BOOL)isFlipped {
    return YES;
}

- (NSSize)intrinsicContentSize {
    return NSSize{.width = _layout.frame.width, .height = _layout.frame.height};
}

- (BOOL)acceptsFirstMouse:(NSEvent*)event {
    (void)event;
    return YES;  // a click in the popover acts at once
}

- (void)willShow {
    _content->willShow();
    [self rebuild];
}

- (void)rebuild {
    auto tree = std::make_unique<orvik::View>(_content->body());
    const orvik::LayoutContext context{
        .measurer = _measurer,
        .localize = localized,
        // The application's direction, which follows the language macOS runs it in.
        .direction = NSApplication.sharedApplication.userInterfaceLayoutDirection ==
                             NSUserInterfaceLayoutDirectionRightToLeft
                         ? orvik::LayoutDirection::rightToLeft
                         : orvik::LayoutDirection::leftToRight,
        // Edges on the device pixels of the display the view is on.
        .pixelScale = [self backingScale],
    };
    orvik::LayoutNode laidOut = orvik::layout(*tree, orvik::ProposedSize::unspecified(), context);
    _layout = std::move(laidOut);
    _tree = std::move(tree);  // the layout points into the tree, which keeps its address
    // A focused button that is no longer shown loses the focus.
    orvik::ViewState& viewState = _content->viewState();
    viewState.focused = orvik::keptFocus(_layout, viewState.focused);

    const NSSize size{.width = _layout.frame.width, .height = _layout.frame.height};
    [self setFrameSize:size];
    [self invalidateIntrinsicContentSize];
    [self placeControls];
    [self placeToolTips];
    [self describeForAccessibility];
    self.needsDisplay = YES;
    if (self.sizeHandler != nil) self.sizeHandler(size);
}

// The pixels per point of the window's display; before the view is in a
// window, the main display's.
- (double)backingScale {
    if (NSWindow* window = self.window) return window.backingScaleFactor;
    if (NSScreen* screen = NSScreen.mainScreen) return screen.backingScaleFactor;
    return 2;
}

// Moved to a display of another scale: laid out again on its pixel grid.
- (void)viewDidChangeBackingProperties {
    [super viewDidChangeBackingProperties];
    [self rebuild];
}

// --- Drawing ----------------------------------------------------------------------

- (orvik::Appearance)drawingAppearance {
    NSAppearanceName dark = NSAppearanceNameDarkAqua;
    NSAppearanceName names[] = {NSAppearanceNameAqua, dark};
    NSAppearanceName match = [self.effectiveAppearance
        bestMatchFromAppearancesWithNames:[NSArray arrayWithObjects:names count:2]];
    return orvik::mac::portableString(match) == orvik::mac::portableString(dark) ? orvik::Appearance::dark
                                                                                  : orvik::Appearance::light;
}

- (void)drawRect:(NSRect)dirtyRect {
    (void)dirtyRect;
    NSGraphicsContext* context = NSGraphicsContext.currentContext;
    if (context == nil || !_tree) return;
    // A view's context: shadows are given in points. The system's colours
    // resolve under the view's own appearance, with its accessibility
    // variants (Increase Contrast), which is current while the block runs.
    orvik::mac::CoreGraphicsCanvas canvas(context.CGContext, 1,
                                          orvik::mac::SystemColors::underCurrentDrawingAppearance);
    orvik::mac::CoreGraphicsCanvas* drawingCanvas = &canvas;
    const orvik::LayoutNode* root = &_layout;
    const orvik::Appearance appearance = [self drawingAppearance];
    const std::optional<std::string> focused = _content->viewState().focused;
    [self.effectiveAppearance performAsCurrentDrawingAppearance:^{
      orvik::paint(*root, *drawingCanvas, appearance,
                   focused ? std::optional<std::string_view>(*focused) : std::nullopt);
    }];
}

// --- Native controls --------------------------------------------------------------

- (void)switchAtIndex:(std::size_t)index changedTo:(bool)isOn {
    if (const orvik::LayoutNode* node = liveControl<orvik::SwitchNode>(_layout, index)) {
        const auto set = std::get<orvik::SwitchNode>(node->view->node).isOn.set;
        if (set) set(isOn);
    }
    [self rebuild];
}

- (void)pickerAtIndex:(std::size_t)index selected:(std::size_t)selected {
    if (const orvik::LayoutNode* node = liveControl<orvik::PickerNode>(_layout, index)) {
        const auto select = std::get<orvik::PickerNode>(node->view->node).select;
        if (select) select(selected);
    }
    [self rebuild];
}

- (void)placeControls {
    // The controls are kept across rebuilds (a hover change must not make
    // the switch anew under the pointer): the n-th switch and the n-th pop-up
    // menu of the tree reuse the n-th of their kind, the rest are removed.
    // Their targets stay too and act on the n-th control of the tree as it
    // is when they act.
    __weak OrvikHostView* weakSelf = self;

    std::vector<const orvik::LayoutNode*> switchNodes;
    orvik::collect<orvik::SwitchNode>(_layout, switchNodes);
    while (_switches.size() > switchNodes.size()) {
        [_switches.back() removeFromSuperview];
        _switches.pop_back();
        _switchTargets.pop_back();
    }
    for (std::size_t index = 0; index < switchNodes.size(); ++index) {
        const orvik::LayoutNode* node = switchNodes[index];
        const auto& payload = std::get<orvik::SwitchNode>(node->view->node);
        if (index == _switches.size()) {
            NSSwitch* made = [[NSSwitch alloc] initWithFrame:platformRect(node->frame)];
            OrvikControlTarget* target = [[OrvikControlTarget alloc] initWithAction:[weakSelf, index](id sender) {
                [weakSelf switchAtIndex:index changedTo:((NSSwitch*)sender).state == NSControlStateValueOn];
            }];
            made.target = target;
            made.action = @selector(performAction:);
            [self addSubview:made];
            _switches.push_back(made);
            _switchTargets.push_back(target);
        }
        // NSSwitch has no tint: it follows the system accent colour.
        NSSwitch* control = _switches[index];
        control.frame = platformRect(node->frame);
        control.controlSize = platformControlSize(payload.size);
        const NSControlStateValue state = payload.isOn.value ? NSControlStateValueOn : NSControlStateValueOff;
        if (control.state != state) control.state = state;
    }

    std::vector<const orvik::LayoutNode*> pickerNodes;
    orvik::collect<orvik::PickerNode>(_layout, pickerNodes);
    const std::vector<orvik::PopUpMenuState> menus = orvik::popUpMenus(_layout);
    while (_pickers.size() > pickerNodes.size()) {
        [_pickers.back() removeFromSuperview];
        _pickers.pop_back();
        _pickerTargets.pop_back();
        _pickerStates.pop_back();
    }
    for (std::size_t index = 0; index < pickerNodes.size(); ++index) {
        const orvik::LayoutNode* node = pickerNodes[index];
        std::optional<orvik::PopUpMenuState> shown;
        if (index == _pickers.size()) {
            NSPopUpButton* made = [[NSPopUpButton alloc] initWithFrame:platformRect(node->frame) pullsDown:NO];
            OrvikControlTarget* target = [[OrvikControlTarget alloc] initWithAction:[weakSelf, index](id sender) {
                const NSInteger selected = ((NSPopUpButton*)sender).indexOfSelectedItem;
                if (selected >= 0) [weakSelf pickerAtIndex:index selected:static_cast<std::size_t>(selected)];
            }];
            made.target = target;
            made.action = @selector(performAction:);
            [self addSubview:made];
            _pickers.push_back(made);
            _pickerTargets.push_back(target);
            _pickerStates.push_back(menus[index]);
        } else {
            shown = _pickerStates[index];
        }
        NSPopUpButton* control = _pickers[index];
        control.frame = platformRect(node->frame);
        // The items are changed only when they differ: state changes arrive
        // while the menu may be open, and refilling it would close or empty it.
        const orvik::PopUpMenuState& menu = menus[index];
        switch (orvik::popUpChange(shown, menu)) {
        case orvik::PopUpChange::items:
            [control removeAllItems];
            for (const std::string& title : menu.titles) [control addItemWithTitle:nonNilString(title)];
            if (menu.selectedIndex < menu.titles.size()) {
                [control selectItemAtIndex:static_cast<NSInteger>(menu.selectedIndex)];
            }
            break;
        case orvik::PopUpChange::selection:
            if (menu.selectedIndex < menu.titles.size()) {
                [control selectItemAtIndex:static_cast<NSInteger>(menu.selectedIndex)];
            }
            break;
        case orvik::PopUpChange::none: break;
        }
        _pickerStates[index] = menu;
    }
}

// --- Tooltips ---------------------------------------------------------------------

- (void)placeToolTips {
    orvik::HostToolTips tips = orvik::hostToolTips(_layout, localized);
    // A native control shows its own tooltip (the header's switch): set only
    // when it differs, so the control's tooltip tracking is left alone.
    for (std::size_t index = 0; index < _switches.size() && index < tips.switches.size(); ++index) {
        if (orvik::mac::portableString(_switches[index].toolTip).value_or("") != tips.switches[index]) {
            _switches[index].toolTip = toolTipText(tips.switches[index]);
        }
    }
    for (std::size_t index = 0; index < _pickers.size() && index < tips.popUpMenus.size(); ++index) {
        if (orvik::mac::portableString(_pickers[index].toolTip).value_or("") != tips.popUpMenus[index]) {
            _pickers[index].toolTip = toolTipText(tips.popUpMenus[index]);
        }
    }
    // The rectangles are made again only when one of them or its text
    // changed: a rectangle added under the pointer gets its exit first, so
    // making them anew on every hover change would keep any tooltip from
    // showing.
    if (tips.regions != _toolTips.regions || _toolTipOwners.size() != tips.regions.size()) {
        [self removeAllToolTips];
        _toolTipOwners.clear();
        for (const orvik::ToolTipRegion& region : tips.regions) {
            // A string owner is its own tooltip text.
            NSString* text = nonNilString(region.text);
            _toolTipOwners.push_back(text);
            [self addToolTipRect:platformRect(region.frame) owner:text userData:nullptr];
        }
    }
    _toolTips = std::move(tips);
}

// --- Accessibility ----------------------------------------------------------------

- (void)pressButtonWithID:(const std::string&)identifier {
    std::vector<const orvik::LayoutNode*> buttons;
    orvik::collect<orvik::ButtonNode>(_layout, buttons);
    for (const orvik::LayoutNode* button : buttons) {
        const auto& payload = std::get<orvik::ButtonNode>(button->view->node);
        if (payload.id != identifier) continue;
        const std::function<void()> action = payload.action;
        if (action) action();
        break;
    }
    [self rebuild];
}

- (void)describeForAccessibility {
    std::vector<orvik::AccessibilityElement> elements = orvik::accessibilityElements(_layout, localized);
    const orvik::AccessibilityChanges changes = orvik::accessibilityChanges(_elements, elements);
    for (const std::string& key : changes.disappeared) _elementObjects.erase(key);

    // Elements that stay keep their objects: only a frame or a label that
    // changed is set, so VoiceOver's cursor stays where it was.
    __weak OrvikHostView* weakSelf = self;
    std::size_t switchIndex = 0;
    std::size_t pickerIndex = 0;
    for (const orvik::AccessibilityElement& element : elements) {
        NSString* label = nonNilString(element.label);
        switch (element.role) {
        case orvik::AccessibilityNode::Role::button:
        case orvik::AccessibilityNode::Role::staticText: {
            auto found = _elementObjects.find(element.key);
            if (found == _elementObjects.end()) {
                NSAccessibilityElement* made = nil;
                if (element.role == orvik::AccessibilityNode::Role::button) {
                    OrvikAccessibleButton* button =
                        [OrvikAccessibleButton accessibilityElementWithRole:NSAccessibilityButtonRole
                                                                      frame:NSRect{}
                                                                      label:label
                                                                     parent:self];
                    const std::string identifier = std::get<orvik::ButtonNode>(element.node->view->node).id;
                    button.press = ^{
                      [weakSelf pressButtonWithID:identifier];
                    };
                    made = button;
                } else {
                    made = [NSAccessibilityElement accessibilityElementWithRole:NSAccessibilityStaticTextRole
                                                                          frame:NSRect{}
                                                                          label:label
                                                                         parent:self];
                }
                made.accessibilityFrameInParentSpace = platformRect(element.frame);
                _elementObjects.emplace(element.key, made);
                break;
            }
            NSAccessibilityElement* kept = found->second;
            const auto changed = [&element](const std::vector<std::string>& keys) {
                return std::find(keys.begin(), keys.end(), element.key) != keys.end();
            };
            if (changed(changes.moved)) kept.accessibilityFrameInParentSpace = platformRect(element.frame);
            if (changed(changes.relabelled)) kept.accessibilityLabel = label;
            break;
        }
        case orvik::AccessibilityNode::Role::switchControl:
            // The native control speaks for itself, labelled with its row.
            if (switchIndex < _switches.size()) _switches[switchIndex].accessibilityLabel = label;
            ++switchIndex;
            break;
        case orvik::AccessibilityNode::Role::popUpMenu:
            if (pickerIndex < _pickers.size()) _pickers[pickerIndex].accessibilityLabel = label;
            ++pickerIndex;
            break;
        }
    }
    _elements = std::move(elements);
    // Assistive technology reads the children again only when told.
    if (changes.setChanged()) NSAccessibilityPostNotification(self, NSAccessibilityLayoutChangedNotification);
}

// The object that stands for an element: the drawn button's or text's, or
// the native control.
- (nullable id)objectForElementAtIndex:(std::size_t)position {
    const orvik::AccessibilityElement& element = _elements[position];
    std::size_t switchIndex = 0;
    std::size_t pickerIndex = 0;
    for (std::size_t index = 0; index < position; ++index) {
        if (_elements[index].role == orvik::AccessibilityNode::Role::switchControl) ++switchIndex;
        if (_elements[index].role == orvik::AccessibilityNode::Role::popUpMenu) ++pickerIndex;
    }
    switch (element.role) {
    case orvik::AccessibilityNode::Role::switchControl:
        return switchIndex < _switches.size() ? _switches[switchIndex] : nil;
    case orvik::AccessibilityNode::Role::popUpMenu:
        return pickerIndex < _pickers.size() ? _pickers[pickerIndex] : nil;
    case orvik::AccessibilityNode::Role::button:
    case orvik::AccessibilityNode::Role::staticText: {
        const auto found = _elementObjects.find(element.key);
        return found != _elementObjects.end() ? found->second : nil;
    }
    }
    return nil;
}

// The menu as one group, named with its title, holding its elements in
// reading order (the native controls where they sit).
- (BOOL)isAccessibilityElement {
    return YES;
}

- (NSAccessibilityRole)accessibilityRole {
    return NSAccessibilityGroupRole;
}

- (nullable NSString*)accessibilityLabel {
    return self.menuTitle;
}

- (NSArray*)accessibilityChildren {
    std::vector<id> children;
    for (std::size_t index = 0; index < _elements.size(); ++index) {
        if (id object = [self objectForElementAtIndex:index]) children.push_back(object);
    }
    return [NSArray arrayWithObjects:children.data() count:children.size()];
}

// Pointing (VoiceOver's mouse tracking, Accessibility Inspector) finds the
// drawn element under the point, which comes in screen coordinates from
// the bottom left; the innermost, last drawn, first.
- (nullable id)accessibilityHitTest:(NSPoint)point {
    NSWindow* window = self.window;
    if (window == nil) return self;
    const NSPoint local = [self convertPoint:[window convertPointFromScreen:point] fromView:nil];
    const orvik::Point at{local.x, local.y};
    for (std::size_t index = _elements.size(); index > 0; --index) {
        if (!_elements[index - 1].frame.contains(at)) continue;
        if (id object = [self objectForElementAtIndex:index - 1]) {
            const orvik::AccessibilityNode::Role role = _elements[index - 1].role;
            const bool isControl = role == orvik::AccessibilityNode::Role::switchControl ||
                                   role == orvik::AccessibilityNode::Role::popUpMenu;
            // A native control answers for what is inside it.
            return isControl ? [(NSView*)object accessibilityHitTest:point] : object;
        }
    }
    return self;
}

// --- Hover ------------------------------------------------------------------------

- (void)updateTrackingAreas {
    if (_trackingArea != nil) [self removeTrackingArea:_trackingArea];
    // One area over the visible rectangle, active even when the app is not
    // (a popover's window may not be key).
    _trackingArea = [[NSTrackingArea alloc]
        initWithRect:NSRect{}
             options:NSTrackingMouseEnteredAndExited | NSTrackingMouseMoved | NSTrackingActiveAlways |
                     NSTrackingInVisibleRect
               owner:self
            userInfo:nil];
    [self addTrackingArea:_trackingArea];
    [super updateTrackingAreas];
}

- (orvik::Point)pointOfEvent:(NSEvent*)event {
    const NSPoint point = [self convertPoint:event.locationInWindow fromView:nil];
    return orvik::Point{point.x, point.y};
}

- (void)hoverAt:(std::optional<orvik::Point>)point {
    auto hovered = point ? orvik::hoveredIDs(_layout, *point) : std::set<std::string, std::less<>>{};
    orvik::ViewState& state = _content->viewState();
    if (hovered == state.hovered) return;
    state.hovered = std::move(hovered);
    [self rebuild];
}

- (void)mouseEntered:(NSEvent*)event {
    [self hoverAt:[self pointOfEvent:event]];
}

- (void)mouseMoved:(NSEvent*)event {
    [self hoverAt:[self pointOfEvent:event]];
}

- (void)mouseExited:(NSEvent*)event {
    (void)event;
    [self hoverAt:std::nullopt];
}

// --- Buttons ----------------------------------------------------------------------

- (void)mouseDown:(NSEvent*)event {
    const orvik::LayoutNode* button = orvik::hitTest<orvik::ButtonNode>(_layout, [self pointOfEvent:event]);
    _content->viewState().pressed =
        button != nullptr ? std::optional<std::string>(std::get<orvik::ButtonNode>(button->view->node).id)
                          : std::nullopt;
    [self rebuild];
}

- (void)mouseUp:(NSEvent*)event {
    const orvik::LayoutNode* button = orvik::hitTest<orvik::ButtonNode>(_layout, [self pointOfEvent:event]);
    orvik::ViewState& state = _content->viewState();
    std::function<void()> action;
    if (button != nullptr) {
        const auto& payload = std::get<orvik::ButtonNode>(button->view->node);
        // A click counts where it began and ended on the same button.
        if (state.pressed == payload.id) action = payload.action;
    }
    state.pressed.reset();
    if (action) action();
    [self rebuild];
}

// --- Keyboard ---------------------------------------------------------------------

// The view takes key events, so that Escape closes it; Tab, Shift-Tab,
// Space and Return move and press the focus only with Full Keyboard Access
// on (System Settings › Keyboard › Keyboard navigation), as in AppKit's own
// controls.
- (BOOL)acceptsFirstResponder {
    return YES;
}

- (void)viewDidMoveToWindow {
    [super viewDidMoveToWindow];
    if (NSWindow* window = self.window) [window makeFirstResponder:self];
}

- (void)moveFocus:(orvik::FocusMove)move {
    orvik::ViewState& state = _content->viewState();
    state.focused = orvik::movedFocus(_layout, state.focused, move);
    self.needsDisplay = YES;
}

- (void)keyDown:(NSEvent*)event {
    const std::string characters = orvik::mac::portableString(event.charactersIgnoringModifiers).value_or("");
    const bool shift = (event.modifierFlags & NSEventModifierFlagShift) != 0;
    switch (orvik::keyCommand(characters, shift, NSApplication.sharedApplication.fullKeyboardAccessEnabled)) {
    case orvik::KeyCommand::close: [self cancelOperation:self]; return;
    case orvik::KeyCommand::focusNext: [self moveFocus:orvik::FocusMove::next]; return;
    case orvik::KeyCommand::focusPrevious: [self moveFocus:orvik::FocusMove::previous]; return;
    case orvik::KeyCommand::pressFocused:
        if (const std::optional<std::string> focused = _content->viewState().focused) {
            [self pressButtonWithID:*focused];
            return;
        }
        break;
    case orvik::KeyCommand::none: break;
    }
    [super keyDown:event];
}

- (void)cancelOperation:(id)sender {
    (void)sender;
    if (self.closeHandler != nil) self.closeHandler();
}

- (BOOL)performKeyEquivalent:(NSEvent*)event {
    if ((event.modifierFlags & NSEventModifierFlagCommand) != 0) {
        const std::optional<std::string> key = orvik::mac::portableString(event.charactersIgnoringModifiers);
        if (key && key->size() == 1) {
            if (const orvik::LayoutNode* button = orvik::buttonForShortcut(_layout, (*key)[0])) {
                const std::function<void()> action = std::get<orvik::ButtonNode>(button->view->node).action;
                if (action) action();
                [self rebuild];
                return YES;
            }
        }
    }
    return [super performKeyEquivalent:event];
}

@end
