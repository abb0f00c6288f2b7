// SPDX-License-Identifier: MIT
// The part of a host that all hosts with a window share: showing passes, the user's input, and quitting.
#pragma once

#include "platform/shared/state.h"
#include "platform/window/chosen_screen.h"
#include "platform/window/requesters.h"

#include <csignal>
#include <string>

namespace host {

/// The path of the settings file that was last opened for loading; empty if none was. Written by open_file.
extern std::string settings_path;

/// The path of the object, the first file that the program opens to read bytes; empty before that. Written by
/// open_file.
extern std::string object_path;

/// Not 0 once the program must quit. Set by request_quit, also from a signal handler, and never reset.
extern volatile std::sig_atomic_t quit_requested;

/// Makes Esc arrive in the next input step and cancels an open requester. May be called by a signal handler.
void request_quit();

/// The path of the object whose run follows this one; empty if none does. Written by request_next_run.
extern std::string next_object;

/// Makes Esc arrive like request_quit. When the program has ended, another run begins on this object, in a
/// screen and a window like those of this run.
void request_next_run(const std::string &path);

/// The mode and the size of the screen that was opened last.
ChosenScreen last_screen();

/// What an open requester must do now: cancel if the program must quit, come forward if the user went to the
/// viewer, which waits for it. Also keeps the viewer's window responsive meanwhile.
Order order_to_requester();

} // namespace host
