// SPDX-License-Identifier: MIT
// The one window that shows a screen's bitmap.
#pragma once

#include "platform/sdl/display_modes.h"
#include "platform/sdl/picture_placement.h"
#include "platform/shared/bitmap.h"

#include <string>

struct SDL_Window;

namespace desktop {

/// Opens the window, black, for pictures of this size. False if there is no display or none that takes the
/// picture; the reason goes to standard error.
bool open_picture_window(Extent picture, const DisplayMode &mode, const std::string &title);

/// Closes the window; nothing if it is not open.
void close_picture_window();

/// Ends the connection to the display.
void disconnect_display();

/// Shows the bitmap and waits for the display's refresh; a window that cannot be seen is not drawn, and the
/// wait is long, so that it costs next to nothing.
void present_picture(const BitMap &bitmap, const host::Palette &palette);

/// Waits for a refresh without showing anything new.
void wait_for_display();

/// Shows the last picture once more, where the window has been uncovered.
void present_again();

/// From full screen to a window, or back.
void toggle_full_screen();

/// The window itself, null while it is closed.
SDL_Window *picture_window();

/// Shows the window's title, with how to free the pointer while it is held.
void show_title(bool pointer_is_held);

/// Makes room for a requester, as its own screen did: gives the pointer back and takes a full-screen window
/// away from the display.
void make_room_for_requester();

/// Undoes it when the requester is closed.
void return_from_requester();

} // namespace desktop
