// SPDX-License-Identifier: MIT
// lowlevel.library's calls.
#ifndef PROTO_LOWLEVEL_H
#define PROTO_LOWLEVEL_H

#include <devices/timer.h>
#include <exec/exec.h>

struct LowLevelIFace {
    struct InterfaceData Data;
    ULONG ElapsedTime(struct EClockVal *context);
};

extern struct Library *LowLevelBase;
extern struct LowLevelIFace *ILowLevel;

#ifdef __USE_INLINE__
#define ElapsedTime(context) ILowLevel->ElapsedTime((context))
#endif

#endif
