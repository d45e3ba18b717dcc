// The one AppKit view that hosts a kit view tree (a HostedContent): a
// flipped NSView that lays the tree out, paints it with the CoreGraphics
// canvas, places a real NSSwitch and NSPopUpButton where the tree has live
// controls, tracks hover with one tracking area, runs buttons on click and
// on their command-key shortcuts, shows help texts as tooltips, and tells
// VoiceOver about buttons, texts and controls, updating tooltips, elements
// and pop-up menus in place from one layout to the next. Every rule it follows
// (frames, hover areas, labels) is the portable kit's; the view translates.
// Objective-C++: for .mm files only.
//
// Main thread only.
#pragma once

#import <AppKit/AppKit.h>

#include <memory>

#include "OrvikKit/HostedContent.h"
#include "OrvikKit/MainThread.h"

NS_ASSUME_NONNULL_BEGIN

@interface OrvikHostView : NSView

// A host for `content`; it rebuilds at once, and again in a later
// main-thread task each time the content's change signal fires.
- (instancetype)initWithContent:(std::shared_ptr<orvik::HostedContent>)content
                     mainThread:(std::shared_ptr<orvik::MainThread>)mainThread;

// Called with the laid-out size each time it is built (the popover takes
// it as its content size).
@property (nullable, copy) void (^sizeHandler)(NSSize size);

// Closes what the view is shown in (the popover, the window): Escape
// calls it.
@property (nullable, copy) void (^closeHandler)(void);

// The menu's or window's title: assistive technology reads the view as a
// group of that name.
@property (nullable, copy) NSString* menuTitle;

// The content's willShow, then a rebuild: call each time the host is about
// to be shown.
- (void)willShow;

// Builds, lays out and places everything again, and redisplays.
- (void)rebuild;

@end

NS_ASSUME_NONNULL_END
