// <HIToolbox/Events.h>: the Event Manager's modifier bits and masks (the
// modifiers RegisterEventHotKey takes).
#pragma once

#include <MacTypes.h>

enum {
    cmdKeyBit = 8,
    shiftKeyBit = 9,
    optionKeyBit = 11,
    controlKeyBit = 12,
};

enum {
    cmdKey = 1 << cmdKeyBit,
    shiftKey = 1 << shiftKeyBit,
    optionKey = 1 << optionKeyBit,
    controlKey = 1 << controlKeyBit,
};
