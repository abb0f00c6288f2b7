// SPDX-License-Identifier: MIT
// The program's entry: everything up to the frame loop, in a fixed order, and the end of the run.
#pragma once

/// Runs the program from its first library to its end; never returns. `argument_count` is 0 when there is no
/// command line at all, as when a desktop starts it; then a file requester asks for the object at once.
[[noreturn]] void start_up(int argument_count);

/// The same in steps, for a host that must get control back between two passes: begin_run once, run_pass
/// (frame_loop.h) until it returns true, then end_run, which prints the statistics and ends the program.
void begin_run(int argument_count);
[[noreturn]] void end_run();
