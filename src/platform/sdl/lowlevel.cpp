// SPDX-License-Identifier: MIT
// lowlevel.library on a desktop: the monotonic clock.
#include "platform/lowlevel.h"

#include <chrono>

ULONG ElapsedTime(EClockVal *context) {
    // 16.16 seconds since an arbitrary start; the difference of two wrapping readings is right for 18 hours.
    const std::chrono::duration<double> now = std::chrono::steady_clock::now().time_since_epoch();
    const auto reading = static_cast<ULONG>(static_cast<std::uint64_t>(now.count() * 65536.0));
    const ULONG elapsed = reading - context->ev_lo;
    context->ev_lo = reading;
    return elapsed;
}
