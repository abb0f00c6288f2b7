// SPDX-License-Identifier: MIT
// lowlevel.library on a desktop: the monotonic clock.
#include "platform/lowlevel.h"

#include "platform/shared/real_clock.h"

ULONG ElapsedTime(EClockVal *context) {
    return host::real_elapsed_time(*context);
}
