// SPDX-License-Identifier: MIT
// The system's own clock as lowlevel.library counts time.
#pragma once

#include "platform/lowlevel.h"

namespace host {

/// Seconds by which the readings are behind the system's clock; 0 unless a host writes it.
extern double clock_lag;

/// The time since the last reading by this context in 16.16 seconds, which becomes its last reading. Right up
/// to 18 hours, since the difference of two readings wraps as they do.
ULONG real_elapsed_time(EClockVal &context);

} // namespace host
