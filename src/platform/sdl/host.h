// SPDX-License-Identifier: MIT
// The host on a desktop: SDL for window, input and clock, GTK for requesters.
#pragma once

#include <string>
#include <vector>

namespace desktop {

/// Starts the host with the words behind the program's name.
void set_up(std::vector<std::string> words);

/// Makes Esc arrive in the next input step; may be called by a signal handler. A requester that is open is
/// cancelled.
void request_quit();

} // namespace desktop
