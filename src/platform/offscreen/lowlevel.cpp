// SPDX-License-Identifier: MIT
// lowlevel.library offscreen: a clock that advances by the same amount a reading, or the real one.
#include "platform/lowlevel.h"

#include "platform/offscreen/state.h"
#include "platform/shared/real_clock.h"

using namespace offscreen;

ULONG ElapsedTime(EClockVal *context) {
    record("ElapsedTime", {});
    return state.setup.tick ? *state.setup.tick : host::real_elapsed_time(*context);
}
