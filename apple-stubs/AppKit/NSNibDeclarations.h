// <AppKit/NSNibDeclarations.h>
#pragma once

#ifndef IBOutlet
#define IBOutlet
#endif
