// SPDX-License-Identifier: MIT
// Limits on the time and the memory that work on an untrusted file may take.
#pragma once

#include <cstddef>

struct ResourceLimits {
    /// In bytes. Not applied in a sanitized build, which needs many times as much.
    std::size_t address_space;
    /// In seconds. The limit on the clock is for file systems that do not answer, and must be long enough for
    /// a busy machine.
    double processor_time;
    double clock_time;
};

/// Limits this process. It gets SIGPROF when its processor time is used up, and SIGALRM when its time on the
/// clock is; both end it unless it handles them. Memory past the limit cannot be allocated.
void limit_resources(const ResourceLimits &limits);

/// Removes the limits on time, for a last step that is short and must not be interrupted.
void lift_time_limits();
