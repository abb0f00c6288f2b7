// SPDX-License-Identifier: MIT
// The display: an 8-bit screen with a window on it, and its screen buffers.
#pragma once

#include "platform/graphics.h"
#include "platform/intuition.h"

#include <array>

/// The open screen and its window; null while the display is closed. Written by the functions below.
extern Screen *myscreen;
extern Window *window;

/// The screen buffers as the frame loop reads them; entry 0 is the screen's own, visible bitmap. They are
/// invalid while the display is closed. Written by open_display.
extern std::array<ScreenBuffer *, 3> shown_buffers;

/// The drawing context for all pixels and texts: pen 255, JAM2, the default font. Set up by open_display.
extern RastPort display_context;

/// Allocates the frame buffers in the state's `width` and `height`, opens a screen of this size in the mode
/// `ModeID` with its window and screen buffers, and loads the palette. Every failure ends the program with
/// its message.
void open_display();

/// Releases everything that is open of the display, and the frame buffers. May be called again.
void close_display();

/// Closes the display, asks for a mode and a size with the screen-mode requester, and opens the display again
/// with what the requester holds, even if the user cancelled.
void choose_display_mode();
