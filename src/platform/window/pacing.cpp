// SPDX-License-Identifier: MIT
// Schedules refreshes by the monotonic clock.
#include "platform/window/pacing.h"

#include <algorithm>
#include <chrono>
#include <thread>

namespace host {

namespace {

using Clock = std::chrono::steady_clock;

/// When the current pass is due; in the past before the first. Written by wait_for_refresh.
Clock::time_point due;

} // namespace

void wait_for_refresh(double rate, bool presenting_waits) {
    const auto interval =
        std::chrono::duration_cast<Clock::duration>(std::chrono::duration<double>(1.0 / rate));
    const Clock::duration tolerance = presenting_waits ? interval / 4 : Clock::duration::zero();
    const Clock::time_point now = Clock::now();
    if (now + tolerance < due) {
        std::this_thread::sleep_until(due);
    }
    // At most one interval of delay is caught up.
    due = std::max(due, now - interval) + interval;
}

} // namespace host
