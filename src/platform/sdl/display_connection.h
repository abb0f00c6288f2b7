// SPDX-License-Identifier: MIT
// SDL's connection to the display.
#pragma once

namespace host {

/// Starts SDL's video for this viewer if it is not running yet; disconnect_display ends it. Returns false if
/// there is no display, with the reason on standard error.
bool connect_display();

/// Whether the connection to a Wayland compositor is broken. SDL must then be asked for no more events: it
/// asks libdecor first, and libdecor 0.1 waits forever for events from before the break that nobody handles.
bool is_display_lost();

/// Writes what failed, and SDL's reason, to standard error. Returns false.
bool complain(const char *what);

} // namespace host
