// SPDX-License-Identifier: MIT
// What a file may cost: a service makes thumbnails of files that nobody asked it to open.
#pragma once

/// Limits the process to 256 MiB of address space, 0.8 seconds of processor time and 10 seconds on the clock.
/// Past a limit of time the process ends with a line on standard error. Does nothing in a sanitized build,
/// which needs a multiple of both.
void limit_resources();

/// Takes back the limits of time. What is left to do is short, and must not be cut off.
void lift_time_limits();
