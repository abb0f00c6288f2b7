// SPDX-License-Identifier: MIT
// lowlevel.library: the elapsed-time clock.
#pragma once

#include "platform/exec.h"

#ifdef __amigaos4__

#include <proto/lowlevel.h>

#else

struct LowLevelIFace;

/// A reading of the clock, kept between two calls; zeros before the first.
struct EClockVal {
    ULONG ev_hi;
    ULONG ev_lo;
};

/// Seconds since the previous call with the same context, as unsigned 16.16 fixed point. The result of the
/// first call with a zeroed context is meaningless.
ULONG ElapsedTime(EClockVal *context);

#endif
