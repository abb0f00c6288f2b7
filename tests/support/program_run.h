// SPDX-License-Identifier: MIT
// Runs the whole program in a process of its own and reports the result.
#pragma once

#include "platform/offscreen/host.h"

#include <functional>
#include <string>
#include <vector>

/// What a run left.
struct ProgramRun {
    /// The exit code, or minus the number of the signal that ended it.
    int exit_code = 0;
    /// Everything on standard output.
    std::string output;
    /// Everything on standard error.
    std::string errors;
    /// The host's record of calls.
    std::vector<std::string> calls;
    /// What the program still held of the host when it ended.
    std::vector<std::string> held;
    /// Lines that the run noted with `note`.
    std::vector<std::string> notes;
    /// How many calls of the host could have been refused, and how many heap allocations the program made.
    int refusable_points = 0;
    int allocations = 0;
};

/// How a run differs from an ordinary one.
struct RunOptions {
    /// The number of the heap allocation that fails, from 1; 0 for none.
    int refused_allocation = 0;
    /// The argument count that the entry routine gets; by default the number of words and the program's name.
    int argument_count = -1;
    /// Called in the program's process before it starts, and with its state still there when it ends.
    std::function<void()> before;
    std::function<void()> at_end;
};

/// Runs the program on a fresh offscreen host with this set-up, calls recorded.
ProgramRun run_program(offscreen::Setup setup, const RunOptions &options = {});

/// Keeps a line of text for `ProgramRun::notes`; to be called in the program's process.
void note(const std::string &line);

/// A set-up that runs an object of the golden cases for some passes, with a texture and empty settings
/// folders.
offscreen::Setup viewer_setup(const std::string &object, int passes = 1);

/// Events for `Setup::events`.
offscreen::Event key(int pass, char character);
offscreen::Event raw_key(int pass, UWORD code);
offscreen::Event mouse_move(int pass, WORD dx, WORD dy);
offscreen::Event left_button(int pass);
offscreen::Event right_button(int pass);

/// A path below the folder of test data, such as "golden/objects/cube.lwo".
std::string test_file(const std::string &name);
