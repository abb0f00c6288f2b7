// SPDX-License-Identifier: MIT
// SDL's connection to the display.
#pragma once

namespace host {

/// Starts SDL's video for this viewer, unless it is started; false if there is no display. The reason goes to
/// standard error. disconnect_display ends it.
bool connect_display();

/// Writes what failed, and SDL's reason, to standard error. Returns false.
bool complain(const char *what);

} // namespace host
