// SPDX-License-Identifier: MIT
// The host on a desktop: SDL for the window, the input and the clock, GTK for requesters.
#pragma once

#include <string>
#include <vector>

namespace sdl {

/// What a run on this host needs to know.
struct Setup {
    /// The words after the program's name.
    std::vector<std::string> command_line;
    /// Names of files that are installed with the program. If the current directory has no such file, the
    /// installed one is opened.
    std::vector<std::string> installed_files;
};

/// Starts the host with this set-up.
void set_up(Setup setup);

} // namespace sdl
