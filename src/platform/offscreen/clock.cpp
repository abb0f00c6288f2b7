// SPDX-License-Identifier: MIT
// A clock that advances by the same amount with each reading, or the real one. Waiting for the display's
// refresh returns at once.
#include "platform/graphics.h"
#include "platform/lowlevel.h"
#include "platform/offscreen/state.h"
#include "platform/shared/call_record.h"
#include "platform/shared/real_clock.h"

using namespace offscreen;

ULONG ElapsedTime(EClockVal *context) {
    host::note_call("ElapsedTime");
    return state.setup.tick ? *state.setup.tick : host::real_elapsed_time(*context);
}

void WaitTOF() {
    host::note_call("WaitTOF");
}
