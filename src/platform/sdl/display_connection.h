// SPDX-License-Identifier: MIT
// SDL's connection to the display.
#pragma once

namespace host {

/// Starts SDL's video for this viewer, unless it is started; false if there is no display. The reason goes to
/// standard error. disconnect_display ends it.
bool connect_display();

/// Whether the connection to a Wayland compositor is broken. SDL must then be asked for no more events:
/// libdecor 0.1, which it asks first, waits for ever until the events that came before the break are handled,
/// which no longer happens.
bool is_display_lost();

/// Writes what failed, and SDL's reason, to standard error. Returns false.
bool complain(const char *what);

} // namespace host
