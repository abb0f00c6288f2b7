// SPDX-License-Identifier: MIT
// Readings of the monotonic clock.
#include "platform/shared/real_clock.h"

#include <chrono>
#include <cstdint>

namespace host {

double clock_lag = 0.0;

ULONG real_elapsed_time(EClockVal &context) {
    // Seconds since an arbitrary start.
    const std::chrono::duration<double> now = std::chrono::steady_clock::now().time_since_epoch();
    const auto reading = static_cast<ULONG>(static_cast<std::uint64_t>((now.count() - clock_lag) * 65536.0));
    const ULONG elapsed = reading - context.ev_lo;
    context.ev_lo = reading;
    return elapsed;
}

} // namespace host
