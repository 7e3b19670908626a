#pragma once

// Declarations of the part of AppKit that the program uses; see Foundation/Foundation.h.

#include <AppKit/NSAnimationContext.h>
#include <AppKit/NSAppearance.h>
#include <AppKit/NSApplication.h>
#include <AppKit/NSImage.h>
#include <AppKit/NSMenu.h>
#include <AppKit/NSScreen.h>
#include <AppKit/NSSound.h>
#include <AppKit/NSStatusBar.h>
#include <AppKit/NSView.h>
#include <AppKit/NSVisualEffectView.h>
#include <AppKit/NSWindow.h>
#include <AppKit/NSWorkspace.h>
#include <Foundation/Foundation.h>
