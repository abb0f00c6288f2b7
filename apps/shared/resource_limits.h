// SPDX-License-Identifier: MIT
// What a file may cost that nobody knows: a service makes thumbnails of files that nobody asked it to open,
// and an import reads files of any origin.
#pragma once

#include <cstddef>

struct ResourceLimits {
    /// In bytes. Does not hold in a sanitized build, which needs a multiple of it.
    std::size_t address_space;
    /// In seconds. A busy machine must not reach the limit of the clock, which is for file systems that do
    /// not answer.
    double processor_time;
    double clock_time;
};

/// Limits this process. Past a limit of time the process gets SIGPROF or SIGALRM, which end it unless it
/// handles them. Memory past the limit cannot be allocated.
void limit_resources(const ResourceLimits &limits);

/// Takes back the limits of time. What is left to do is short, and must not be cut off.
void lift_time_limits();
