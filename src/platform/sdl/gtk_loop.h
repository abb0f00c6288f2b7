// SPDX-License-Identifier: MIT
// Runs the toolkit's main loop for as long as a requester is open.
#pragma once

#include "platform/window/requesters.h"

#include <gtk/gtk.h>

namespace host {

/// Connects to `requester`, an object with a signal "response", and runs the toolkit's main loop until the
/// user answered or `while_open` cancels; the answer as the toolkit's response number. A requester that is a
/// window is still there afterwards, however it was closed.
int wait_for_response(gpointer requester, const WhileOpen &while_open);

/// Lets the toolkit finish what it has to do after a requester was taken away.
void settle();

} // namespace host
