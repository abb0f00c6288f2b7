// SPDX-License-Identifier: MIT
// The host on a desktop: SDL for the window, the input and the clock, GTK for requesters.
#pragma once

#include "platform/window/chosen_screen.h"

#include <map>
#include <optional>
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
    /// Files that are opened in place of others, by the exact name that the program asks for.
    std::map<std::string, std::string> stand_ins = {};
    /// The folders of ENV: and ENVARC:, where they are not the user's usual ones.
    std::optional<std::string> env_folder = {};
    std::optional<std::string> envarc_folder = {};
    /// The file into which the run is written; empty for none.
    std::string recording = {};
    /// What is known of the first screen before the program asks for it.
    host::ChosenScreen screen = {};
};

/// Starts the host with this set-up. If another run of the viewer left its window's state to this process,
/// the first window is like that one.
void set_up(Setup setup);

/// Begins to write the run into a file, as an input script (window/recording.h); false if that cannot be
/// made, with the reason in errno. To be called after set_up.
bool record_run(const std::string &path);

/// Leaves the state of the window that was closed last to the program that takes this process's place, in its
/// environment.
void leave_window();

} // namespace sdl
