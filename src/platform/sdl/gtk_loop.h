// SPDX-License-Identifier: MIT
// Runs the toolkit's main loop for as long as a requester is open.
#pragma once

#include "platform/window/requesters.h"

#include <gtk/gtk.h>

namespace host {

/// Connects to `requester`, an object with a signal "response", and runs the toolkit's main loop until the
/// user answers or `while_open` cancels. Returns the toolkit's response number. A requester that is a window
/// still exists afterwards, however the user closed it.
int wait_for_response(gpointer requester, const WhileOpen &while_open);

/// Runs the toolkit's main loop until the user wants to close the window, or `while_open` cancels. The window
/// is still there afterwards.
void wait_until_closed(GtkWindow *window, const WhileOpen &while_open);

/// Lets the toolkit finish its work after a requester was destroyed.
void settle();

} // namespace host
