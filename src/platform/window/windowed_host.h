// SPDX-License-Identifier: MIT
// What the shared system calls become where there is a window: passes that are shown, the user's input, and
// the wish to quit.
#pragma once

#include "platform/shared/state.h"
#include "platform/window/requesters.h"

#include <csignal>
#include <string>

namespace host {

/// The settings file that was opened last for loading; empty if none was. Written by open_file.
extern std::string settings_path;

/// Set by request_quit, and never reset; a signal may set it at any time.
extern volatile std::sig_atomic_t quit_requested;

/// Makes Esc arrive in the next input step; may be called by a signal handler. A requester that is open is
/// cancelled.
void request_quit();

/// What an open requester must do now. The window stays alive below it, and a wish to quit reaches it. If the
/// user goes to the viewer, the requester comes forward, since the viewer waits for it.
Order order_to_requester();

} // namespace host
