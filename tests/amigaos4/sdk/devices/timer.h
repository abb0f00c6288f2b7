// SPDX-License-Identifier: MIT
// The timer's reading of the processor's clock.
#ifndef DEVICES_TIMER_H
#define DEVICES_TIMER_H

#include <exec/types.h>

#pragma pack(2)

struct EClockVal {
    uint32 ev_hi;
    uint32 ev_lo;
};

#pragma pack()

#endif
