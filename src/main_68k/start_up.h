// SPDX-License-Identifier: MIT
// The program's entry: everything up to the frame loop, in a fixed order, and the end of the run.
#pragma once

/// Runs the whole program and never returns. `argument_count` is that of main. If it is 0, there is no
/// command line at all, as when a desktop starts the program, and a file requester asks for the object.
[[noreturn]] void start_up(int argument_count);

/// The parts of start_up, for a host that must get control back between two passes: begin_run once, run_pass
/// (frame_loop.h) until it returns true, then end_run, which prints the statistics and ends the program.
void begin_run(int argument_count);
[[noreturn]] void end_run();
