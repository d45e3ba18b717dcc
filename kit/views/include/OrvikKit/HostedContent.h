// What a platform host view shows and drives: a view tree built on demand
// from the current state, the host's transient view state (hover, press),
// the moment the host is about to be shown, and the signal that the tree
// must be built again. The menu's popover (MenuPopover) is one. A
// `ContentWindow` is a window of the app's own that shows one.
//
// Main thread only.
#pragma once

#include <memory>
#include <string_view>

#include "OrvikKit/Signal.h"
#include "OrvikKit/ViewTree.h"

namespace orvik {

class HostedContent {
public:
    virtual ~HostedContent() = default;

    // The tree for the state as it is now.
    virtual View body() = 0;
    // The host's hover and press state; a change needs a new body.
    virtual ViewState& viewState() noexcept = 0;
    // Each time the host is about to be shown.
    virtual void willShow() = 0;
    // Sent before a change that needs a new body: the host rebuilds in a
    // later main-thread task, once the change has landed.
    virtual ChangeSignal& changeSignal() noexcept = 0;
};

// A window of the app's own that hosts a kit view tree (the help for a
// hidden status item is one).
class ContentWindow {
public:
    virtual ~ContentWindow() = default;

    // Shows `content` in a titled, closable window called `title`, sized to
    // the content, centred on the screen, activating the app and making the
    // window key. A window already shown takes the new content and comes to
    // the front.
    virtual void show(std::shared_ptr<HostedContent> content, std::string_view title) = 0;
    // Closes the window; nothing when none is shown.
    virtual void close() = 0;
    virtual bool isShown() const = 0;
};

}  // namespace orvik
