// ContentWindow over NSWindow: one titled, closable window whose content
// view is a host view (OrvikHostView) over the content, sized to the laid-out
// tree, centred when it comes on screen, in front of every other app's
// windows once the app is activated. The window is kept after closing
// (releasedWhenClosed off: ARC owns it) and shown again with new content.
#import <AppKit/AppKit.h>

#include <memory>
#include <string_view>
#include <utility>

#import "OrvikKitMac/HostView.h"
#import "OrvikKitMac/Strings.h"
#include "OrvikKitMac/BaseAdapters.h"
#include "OrvikKitMac/ViewAdapters.h"

namespace orvik::mac {

namespace {

class AppKitContentWindow final : public ContentWindow {
public:
    explicit AppKitContentWindow(std::shared_ptr<MainThread> mainThread) : mainThread_(std::move(mainThread)) {}

    void show(std::shared_ptr<HostedContent> content, std::string_view title) override {
        assertOnMainThread(*mainThread_);
        if (window_ == nil) {
            window_ = [[NSWindow alloc] initWithContentRect:NSRect{}
                                                  styleMask:NSWindowStyleMaskTitled | NSWindowStyleMaskClosable
                                                    backing:NSBackingStoreBuffered
                                                      defer:YES];
            window_.releasedWhenClosed = NO;
        }
        const bool wasShown = window_.visible;
        host_ = [[OrvikHostView alloc] initWithContent:std::move(content) mainThread:mainThread_];
        __weak NSWindow* window = window_;
        host_.sizeHandler = ^(NSSize size) {
          [window setContentSize:size];
        };
        // Escape closes the window.
        host_.closeHandler = ^{
          [window close];
        };
        window_.contentView = host_;
        NSString* name = platformString(title);
        window_.title = name != nil ? name : @"";
        host_.menuTitle = window_.title;
        [host_ willShow];  // a fresh view state, then the tree built again (which sizes the window)
        if (!wasShown) [window_ center];
        activateThisApplication();
        [window_ makeKeyAndOrderFront:nil];
    }

    void close() override {
        assertOnMainThread(*mainThread_);
        [window_ close];
    }

    bool isShown() const override { return window_ != nil && window_.visible; }

private:
    std::shared_ptr<MainThread> mainThread_;
    NSWindow* window_ = nil;
    OrvikHostView* host_ = nil;
};

}  // namespace

std::shared_ptr<ContentWindow> makeContentWindow(std::shared_ptr<MainThread> mainThread) {
    return std::make_shared<AppKitContentWindow>(std::move(mainThread));
}

}  // namespace orvik::mac
