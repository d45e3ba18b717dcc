// The host view over AppKit. Layout, hover areas, shortcuts, tooltips and
// accessibility labels come from the portable kit (Layout.h,
// HostSupport.h); drawing from the CoreGraphics canvas.
#import "OrvikKitMac/HostView.h"

#include <functional>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "OrvikKit/Canvas.h"
#include "OrvikKit/HostSupport.h"
#include "OrvikKit/Layout.h"
#include "OrvikKitMac/CoreGraphicsCanvas.h"
#include "OrvikKitMac/Services.h"
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
    std::vector<OrvikControlTarget*> _targets;     // their targets (controls keep targets weakly)
    std::vector<NSString*> _toolTips;              // tooltip owners (views keep them weakly)
    std::vector<id> _accessibilityElements;        // the drawn buttons and texts
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

- (std::string)localized:(const orvik::LocalizedText&)text {
    return orvik::mac::localizedString(text);
}

- (void)rebuild {
    auto tree = std::make_unique<orvik::View>(_content->body());
    const orvik::LayoutContext context{
        .measurer = _measurer,
        .localize = [](const orvik::LocalizedText& text) { return orvik::mac::localizedString(text); },
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
    [self.effectiveAppearance performAsCurrentDrawingAppearance:^{
      orvik::paint(*root, *drawingCanvas, appearance);
    }];
}

// --- Native controls --------------------------------------------------------------

- (void)placeControls {
    // The controls are kept across rebuilds (a hover change must not make
    // the switch anew under the pointer): the n-th switch and the n-th pop-up
    // menu of the tree reuse the n-th of their kind, the rest are removed.
    _targets.clear();
    __weak OrvikHostView* weakSelf = self;

    std::vector<const orvik::LayoutNode*> switchNodes;
    orvik::collect<orvik::SwitchNode>(_layout, switchNodes);
    while (_switches.size() > switchNodes.size()) {
        [_switches.back() removeFromSuperview];
        _switches.pop_back();
    }
    for (std::size_t index = 0; index < switchNodes.size(); ++index) {
        const orvik::LayoutNode* node = switchNodes[index];
        const auto& payload = std::get<orvik::SwitchNode>(node->view->node);
        if (index == _switches.size()) {
            NSSwitch* made = [[NSSwitch alloc] initWithFrame:platformRect(node->frame)];
            [self addSubview:made];
            _switches.push_back(made);
        }
        // NSSwitch has no tint: it follows the system accent colour.
        NSSwitch* control = _switches[index];
        control.frame = platformRect(node->frame);
        control.controlSize = platformControlSize(payload.size);
        control.state = payload.isOn.value ? NSControlStateValueOn : NSControlStateValueOff;
        OrvikControlTarget* target = [[OrvikControlTarget alloc]
            initWithAction:[set = payload.isOn.set, weakSelf](id sender) {
                const bool isOn = ((NSSwitch*)sender).state == NSControlStateValueOn;
                if (set) set(isOn);
                [weakSelf rebuild];
            }];
        control.target = target;
        control.action = @selector(performAction:);
        _targets.push_back(target);
    }

    std::vector<const orvik::LayoutNode*> pickerNodes;
    orvik::collect<orvik::PickerNode>(_layout, pickerNodes);
    while (_pickers.size() > pickerNodes.size()) {
        [_pickers.back() removeFromSuperview];
        _pickers.pop_back();
    }
    for (std::size_t index = 0; index < pickerNodes.size(); ++index) {
        const orvik::LayoutNode* node = pickerNodes[index];
        const auto& payload = std::get<orvik::PickerNode>(node->view->node);
        if (index == _pickers.size()) {
            NSPopUpButton* made = [[NSPopUpButton alloc] initWithFrame:platformRect(node->frame) pullsDown:NO];
            [self addSubview:made];
            _pickers.push_back(made);
        }
        NSPopUpButton* control = _pickers[index];
        control.frame = platformRect(node->frame);
        [control removeAllItems];
        for (const std::string& option : node->options) [control addItemWithTitle:nonNilString(option)];
        if (payload.selectedIndex < node->options.size()) {
            [control selectItemAtIndex:static_cast<NSInteger>(payload.selectedIndex)];
        }
        OrvikControlTarget* target = [[OrvikControlTarget alloc]
            initWithAction:[select = payload.select, weakSelf](id sender) {
                const NSInteger selected = ((NSPopUpButton*)sender).indexOfSelectedItem;
                if (select && selected >= 0) select(static_cast<std::size_t>(selected));
                [weakSelf rebuild];
            }];
        control.target = target;
        control.action = @selector(performAction:);
        _targets.push_back(target);
    }
}

// --- Tooltips ---------------------------------------------------------------------

- (void)placeToolTips {
    [self removeAllToolTips];
    _toolTips.clear();
    std::vector<const orvik::LayoutNode*> tips;
    orvik::collect<orvik::TooltipNode>(_layout, tips);
    for (const orvik::LayoutNode* node : tips) {
        const auto& payload = std::get<orvik::TooltipNode>(node->view->node);
        // A string owner is its own tooltip text.
        NSString* text = nonNilString(orvik::mac::localizedString(payload.text));
        _toolTips.push_back(text);
        [self addToolTipRect:platformRect(node->frame) owner:text userData:nullptr];
    }
}

// --- Accessibility ----------------------------------------------------------------

- (void)describeForAccessibility {
    _accessibilityElements.clear();
    __weak OrvikHostView* weakSelf = self;
    const auto localize = [](const orvik::LocalizedText& text) { return orvik::mac::localizedString(text); };
    for (const orvik::AccessibilityNode& node : orvik::accessibilityNodes(_layout, localize)) {
        NSString* label = nonNilString(node.label);
        switch (node.role) {
        case orvik::AccessibilityNode::Role::button: {
            OrvikAccessibleButton* element = [OrvikAccessibleButton accessibilityElementWithRole:NSAccessibilityButtonRole
                                                                                           frame:NSRect{}
                                                                                           label:label
                                                                                          parent:self];
            element.accessibilityFrameInParentSpace = platformRect(node.node->frame);
            std::function<void()> action = std::get<orvik::ButtonNode>(node.node->view->node).action;
            element.press = ^{
              if (action) action();
              [weakSelf rebuild];
            };
            _accessibilityElements.push_back(element);
            break;
        }
        case orvik::AccessibilityNode::Role::staticText: {
            NSAccessibilityElement* element = [NSAccessibilityElement accessibilityElementWithRole:NSAccessibilityStaticTextRole
                                                                                             frame:NSRect{}
                                                                                             label:label
                                                                                            parent:self];
            element.accessibilityFrameInParentSpace = platformRect(node.node->frame);
            _accessibilityElements.push_back(element);
            break;
        }
        case orvik::AccessibilityNode::Role::switchControl:
        case orvik::AccessibilityNode::Role::popUpMenu:
            // The native control speaks for itself; labelControls gives it
            // its row's text.
                    break;
        }
    }
    [self labelControls:localize];
}

- (void)labelControls:(const std::function<std::string(const orvik::LocalizedText&)>&)localize {
    std::vector<std::string> switchLabels;
    std::vector<std::string> pickerLabels;
    for (const orvik::AccessibilityNode& node : orvik::accessibilityNodes(_layout, localize)) {
        if (node.role == orvik::AccessibilityNode::Role::switchControl) switchLabels.push_back(node.label);
        if (node.role == orvik::AccessibilityNode::Role::popUpMenu) pickerLabels.push_back(node.label);
    }
    for (std::size_t index = 0; index < switchLabels.size() && index < _switches.size(); ++index) {
        _switches[index].accessibilityLabel = nonNilString(switchLabels[index]);
    }
    for (std::size_t index = 0; index < pickerLabels.size() && index < _pickers.size(); ++index) {
        _pickers[index].accessibilityLabel = nonNilString(pickerLabels[index]);
    }
}

- (NSArray*)accessibilityChildren {
    std::vector<id> children = _accessibilityElements;
    for (NSSwitch* control : _switches) children.push_back(control);
    for (NSPopUpButton* control : _pickers) children.push_back(control);
    return [NSArray arrayWithObjects:children.data() count:children.size()];
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
