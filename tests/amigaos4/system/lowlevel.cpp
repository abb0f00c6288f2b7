// SPDX-License-Identifier: MIT
// lowlevel.library: a clock that adds 1/256 s per reading.
#include <proto/lowlevel.h>

ULONG LowLevelIFace::ElapsedTime(EClockVal *context) {
    ++context->ev_lo;
    return 0x10000 / 256;
}
