// SPDX-License-Identifier: MIT
// Runs the whole program in a separate process and reports the result.
#pragma once

#include "platform/offscreen/host.h"

#include <functional>
#include <string>
#include <vector>

/// The result of a run.
struct ProgramRun {
    /// The exit code, or the negative number of the signal that ended the run.
    int exit_code = 0;
    /// Everything on standard output.
    std::string output;
    /// Everything on standard error.
    std::string errors;
    /// The host's record of calls.
    std::vector<std::string> calls;
    /// What the program had not given back to the host when it ended.
    std::vector<std::string> held;
    /// Lines that `note` recorded during the run.
    std::vector<std::string> notes;
    /// How many calls the host could have refused, and how many heap allocations the program made.
    int refusable_points = 0;
    int allocations = 0;
};

/// How a run differs from an ordinary one.
struct RunOptions {
    /// The number (from 1) of the heap allocation that fails; 0 for none.
    int refused_allocation = 0;
    /// The argument count for the entry routine; by default the number of words plus one for the program's
    /// name.
    int argument_count = -1;
    /// Called in the program's process before the program starts, and at its end with its state still intact.
    std::function<void()> before;
    std::function<void()> at_end;
};

/// Runs the program on a fresh offscreen host with this set-up, calls recorded.
ProgramRun run_program(offscreen::Setup setup, const RunOptions &options = {});

/// Records a line of text for `ProgramRun::notes`. Must be called in the program's process.
void note(const std::string &line);

/// A set-up that runs an object of the golden cases for this many passes, with a texture and empty settings
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
