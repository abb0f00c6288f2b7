// SPDX-License-Identifier: MIT
// The program's entry: everything up to the frame loop, in a fixed order.
#pragma once

/// Runs the program from its first library to its end; never returns. `argument_count` is 0 when there is no
/// command line at all, as when a desktop starts it; then a file requester asks for the object at once.
[[noreturn]] void start_up(int argument_count);
