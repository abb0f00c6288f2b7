// SPDX-License-Identifier: MIT
// The one window that shows a screen's bitmap. Every host with a window defines these functions.
#pragma once

#include "platform/shared/bitmap.h"
#include "platform/window/display_modes.h"
#include "platform/window/picture_placement.h"

#include <string>

namespace host {

/// Opens a black window for pictures of this size. False if there is no display or it refuses the size, with
/// the reason on standard error.
bool open_picture_window(Extent picture, const DisplayMode &mode, const std::string &title);

/// Closes the window; nothing if it is not open.
void close_picture_window();

/// Ends the connection to the display.
void disconnect_display();

/// Shows the bitmap and waits for the display's refresh. A window that cannot be seen is not drawn; the wait
/// is then long, to save processor time.
void present_picture(const BitMap &bitmap, const Palette &palette);

/// Waits for a refresh without showing anything new.
void wait_for_display();

/// Makes room for a requester: frees the pointer and leaves full screen or hides the window.
void make_room_for_requester();

/// Undoes make_room_for_requester when the requester is closed. Keys and buttons that are down are ignored
/// until they are released, and so is the second half of a double click that closed the requester.
void return_from_requester();

} // namespace host
