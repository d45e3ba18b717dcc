// StatusItem over NSStatusItem and NSPopover: the square status item with
// its autosave name, the button's action and label, the symbol image with
// the update badge drawn where badgeGeometry says, and the transient popover
// below the button.
#import <AppKit/AppKit.h>

#include <functional>
#include <memory>
#include <string>
#include <utility>

#import "OrvikKitMac/Strings.h"
#include "OrvikKitMac/Services.h"

// The button's target: calls the action the controller wired.
@interface OrvikStatusButtonTarget : NSObject
- (instancetype)initWithAction:(std::function<void()>)action;
- (void)performAction:(id)sender;
@end

@implementation OrvikStatusButtonTarget {
    std::function<void()> _action;
}

- (instancetype)initWithAction:(std::function<void()>)action {
    self = [super init];
    if (self != nil) _action = std::move(action);
    return self;
}

- (void)performAction:(id)sender {
    (void)sender;
    if (_action) _action();
}

@end

namespace orvik::mac {

namespace {

// The menu's width in points: the popover's content is this wide.
constexpr CGFloat menuWidth = 330;

NSRect platformRect(const ImageRect& rect) {
    return NSRect{.origin = {.x = rect.x, .y = rect.y}, .size = {.width = rect.width, .height = rect.height}};
}

// The symbol with the update dot, as badgeGeometry places it: a new
// template image of the same size and accessibility description.
NSImage* badgedImage(NSImage* source) {
    const NSSize size = source.size;
    const BadgeGeometry geometry = badgeGeometry(ImageSize{.width = size.width, .height = size.height});
    NSImage* badged = [NSImage imageWithSize:size
                                     flipped:NO
                              drawingHandler:^BOOL(NSRect) {
                                [source drawInRect:NSRect{.origin = {.x = 0, .y = 0}, .size = size}];
                                NSGraphicsContext* context = NSGraphicsContext.currentContext;
                                if (context != nil) {
                                    context.compositingOperation = NSCompositingOperationClear;
                                    [[NSBezierPath bezierPathWithOvalInRect:platformRect(geometry.ring)] fill];
                                    context.compositingOperation = NSCompositingOperationSourceOver;
                                }
                                [NSColor.blackColor setFill];
                                [[NSBezierPath bezierPathWithOvalInRect:platformRect(geometry.dot)] fill];
                                return YES;
                              }];
    [badged setTemplate:YES];
    badged.accessibilityDescription = source.accessibilityDescription;
    return badged;
}

class AppKitStatusItem final : public StatusItem {
public:
    AppKitStatusItem() {
        statusItem_ = [NSStatusBar.systemStatusBar statusItemWithLength:NSSquareStatusItemLength];
        statusItem_.autosaveName = platformString(MenuBarController::autosaveName);

        // Until the menu's views are hosted here, the popover holds an empty
        // view of the menu's width.
        NSViewController* content = [[NSViewController alloc] init];
        content.view = [[NSView alloc] initWithFrame:NSRect{.origin = {.x = 0, .y = 0},
                                                            .size = {.width = menuWidth, .height = 0}}];
        popover_ = [[NSPopover alloc] init];
        popover_.contentViewController = content;
        popover_.behavior = NSPopoverBehaviorTransient;
        popover_.animates = YES;
    }

    bool hasButton() const override { return statusItem_.button != nil; }

    void configureButton(std::string_view accessibilityLabel, std::function<void()> action) override {
        NSStatusBarButton* button = statusItem_.button;
        if (button == nil) return;
        target_ = [[OrvikStatusButtonTarget alloc] initWithAction:std::move(action)];
        button.target = target_;
        button.action = @selector(performAction:);
        button.accessibilityLabel = platformString(accessibilityLabel);
    }

    bool setImage(const StatusItemImage& image) override {
        NSStatusBarButton* button = statusItem_.button;
        if (button == nil) return false;
        NSImage* symbol = [NSImage imageWithSystemSymbolName:platformString(image.symbolName)
                                    accessibilityDescription:platformString(image.accessibilityDescription)];
        if (symbol == nil) return false;
        [symbol setTemplate:image.isTemplate ? YES : NO];
        button.image = image.badged ? badgedImage(symbol) : symbol;
        return true;
    }

    bool isPopoverShown() const override { return popover_.shown; }

    void activateApplication() override { [NSApplication.sharedApplication activateIgnoringOtherApps:YES]; }

    void showPopover() override {
        NSStatusBarButton* button = statusItem_.button;
        if (button == nil) return;
        [popover_ showRelativeToRect:button.bounds ofView:button preferredEdge:NSRectEdgeMinY];
    }

    void makePopoverKey() override { [popover_.contentViewController.view.window makeKeyWindow]; }

    void closePopover() override { [popover_ performClose:nil]; }

private:
    NSStatusItem* statusItem_;
    NSPopover* popover_;
    OrvikStatusButtonTarget* target_;
};

}  // namespace

std::shared_ptr<StatusItem> makeStatusItem() { return std::make_shared<AppKitStatusItem>(); }

}  // namespace orvik::mac
