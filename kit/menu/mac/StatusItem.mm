// StatusItem over NSStatusItem and NSPopover: the square status item with
// its autosave name, the button's action and label, the symbol image with
// the update badge drawn where badgeGeometry says, the transient popover
// below the button, whose content is a host view over the hosted content
// (its willShow runs each time the popover is shown; the popover takes the
// laid-out size), and the facts of where the item is (its visibility flag,
// the button's window and every screen), which iconPlacement judges.
#import <AppKit/AppKit.h>

#include <functional>
#include <memory>
#include <string>
#include <utility>

#import "OrvikKitMac/HostView.h"
#import "OrvikKitMac/Strings.h"
#include "OrvikKitMac/BaseAdapters.h"
#include "OrvikKitMac/MenuAdapters.h"

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

NSRect platformRect(const ImageRect& rect) {
    return NSRect{.origin = {.x = rect.x, .y = rect.y}, .size = {.width = rect.width, .height = rect.height}};
}

ScreenRect screenRect(NSRect rect) {
    return ScreenRect{.x = rect.origin.x, .y = rect.origin.y, .width = rect.size.width, .height = rect.size.height};
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
    AppKitStatusItem(std::shared_ptr<HostedContent> content, std::shared_ptr<MainThread> mainThread) {
        statusItem_ = [NSStatusBar.systemStatusBar statusItemWithLength:NSSquareStatusItemLength];
        statusItem_.autosaveName = platformString(MenuBarController::autosaveName);

        host_ = [[OrvikHostView alloc] initWithContent:std::move(content) mainThread:std::move(mainThread)];
        NSViewController* controller = [[NSViewController alloc] init];
        controller.view = host_;
        popover_ = [[NSPopover alloc] init];
        popover_.contentViewController = controller;
        popover_.behavior = NSPopoverBehaviorTransient;
        popover_.animates = YES;
        popover_.contentSize = host_.frame.size;
        __weak NSPopover* popover = popover_;
        host_.sizeHandler = ^(NSSize size) {
          popover.contentSize = size;
        };
        // Escape closes the popover as a click outside it would.
        host_.closeHandler = ^{
          [popover performClose:nil];
        };
    }

    bool hasButton() const override { return statusItem_.button != nil; }

    void configureButton(std::string_view accessibilityLabel, std::function<void()> action) override {
        // The popover's view is read as a group named like the button.
        host_.menuTitle = platformString(accessibilityLabel);
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

    StatusItemPlacement placement() const override {
        StatusItemPlacement facts;
        NSStatusBarButton* button = statusItem_.button;
        facts.hasButton = button != nil;
        facts.itemIsVisible = statusItem_.visible;
        NSWindow* window = button.window;
        facts.hasWindow = window != nil;
        if (window != nil) {
            facts.windowIsVisible = window.visible;
            facts.windowIsOccluded = (window.occlusionState & NSWindowOcclusionStateVisible) == 0;
            facts.windowFrame = screenRect(window.frame);
        }
        // An empty area (NSZeroRect) is a screen without a camera housing.
        NSArray<NSScreen*>* screens = NSScreen.screens;
        for (NSUInteger index = 0; index < screens.count; ++index) {
            NSScreen* screen = [screens objectAtIndex:index];
            facts.screens.push_back(ScreenFacts{.frame = screenRect(screen.frame),
                                                .topLeftArea = screenRect(screen.auxiliaryTopLeftArea),
                                                .topRightArea = screenRect(screen.auxiliaryTopRightArea)});
        }
        return facts;
    }

    void activateApplication() override { activateThisApplication(); }

    void showPopover() override {
        NSStatusBarButton* button = statusItem_.button;
        if (button == nil) return;
        [host_ willShow];  // a fresh view state and the content's onAppear, then the tree built again
        [popover_ showRelativeToRect:button.bounds ofView:button preferredEdge:NSRectEdgeMinY];
    }

    void makePopoverKey() override { [popover_.contentViewController.view.window makeKeyWindow]; }

    void closePopover() override { [popover_ performClose:nil]; }

private:
    NSStatusItem* statusItem_;
    NSPopover* popover_;
    OrvikHostView* host_;
    OrvikStatusButtonTarget* target_;
};

}  // namespace

std::shared_ptr<StatusItem> makeStatusItem(std::shared_ptr<HostedContent> content,
                                           std::shared_ptr<MainThread> mainThread) {
    return std::make_shared<AppKitStatusItem>(std::move(content), std::move(mainThread));
}

}  // namespace orvik::mac
