// SPDX-License-Identifier: MIT
// The display: one 8-bit screen with a window on it, its screen buffers, and the program's frame buffers.
#pragma once

#include "platform/graphics.h"
#include "platform/intuition.h"

#include <array>

/// The open screen and its window; null while the display is closed. Written here alone.
extern Screen *myscreen;
extern Window *window;

/// The screen buffers as the frame loop reads them: slot 0 is the screen's own, visible bitmap. After a close
/// the slots are stale until the next opening.
extern std::array<ScreenBuffer *, 3> shown_buffers;

/// The program's drawing context, through which all pixels and texts go: pen 255, JAM2, the default text
/// font.
extern RastPort display_context;

/// Allocates the frame buffers at the state's `width` and `height`, opens the screen in the mode `ModeID`,
/// and makes everything that a frame is shown with. Any failure ends the program with its own message.
void open_display();

/// Releases whatever of the display is held; twice in a row does nothing the second time.
void close_display();

/// Closes the display, asks for a mode and a size with the screen-mode requester, and opens it again with
/// what the requester holds then, whether the user confirmed or cancelled.
void choose_display_mode();
