// SPDX-License-Identifier: MIT
// lowlevel.library offscreen: a clock that advances by the same amount a reading, or the real one.
#include "platform/lowlevel.h"

#include "platform/offscreen/state.h"

#include <chrono>

using namespace offscreen;

ULONG ElapsedTime(EClockVal *context) {
    record("ElapsedTime", {});
    if (state.setup.tick) {
        return *state.setup.tick;
    }
    // 16.16 seconds since an arbitrary start; the difference of two wrapping readings is right for 18 hours.
    const std::chrono::duration<double> now = std::chrono::steady_clock::now().time_since_epoch();
    const auto reading = static_cast<ULONG>(static_cast<std::uint64_t>(now.count() * 65536.0));
    const ULONG elapsed = reading - context->ev_lo;
    context->ev_lo = reading;
    return elapsed;
}
