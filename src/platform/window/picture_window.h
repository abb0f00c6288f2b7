// SPDX-License-Identifier: MIT
// The one window that shows a screen's bitmap. Every host with a window defines these functions.
#pragma once

#include "platform/shared/bitmap.h"
#include "platform/window/display_modes.h"
#include "platform/window/picture_placement.h"

#include <string>

namespace host {

/// Opens the window, black, for pictures of this size. False if there is no display or none that takes the
/// picture; the reason goes to standard error.
bool open_picture_window(Extent picture, const DisplayMode &mode, const std::string &title);

/// Closes the window; nothing if it is not open.
void close_picture_window();

/// Ends the connection to the display.
void disconnect_display();

/// Shows the bitmap and waits for the display's refresh. A window that cannot be seen is not drawn, and the
/// wait is long, so that it costs next to nothing.
void present_picture(const BitMap &bitmap, const Palette &palette);

/// Waits for a refresh without showing anything new.
void wait_for_display();

/// Makes room for a requester: gives the pointer back and takes a full-screen window away from the display.
void make_room_for_requester();

/// Undoes it when the requester is closed. Keys and buttons that are down are ignored until they are
/// released, and so is the second half of a double click that closed the requester.
void return_from_requester();

} // namespace host
