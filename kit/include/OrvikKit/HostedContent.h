// What a platform host view shows and drives: a view tree built on demand
// from the current state, the host's transient view state (hover, press),
// the moment the host is about to be shown, and the signal that the tree
// must be built again. The menu's popover (MenuPopover) is one.
//
// Main thread only.
#pragma once

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

}  // namespace orvik
