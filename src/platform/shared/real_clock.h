// SPDX-License-Identifier: MIT
// The system's clock in the units of lowlevel.library.
#pragma once

#include "platform/lowlevel.h"

namespace host {

/// Seconds by which the readings are behind the system's clock; 0 unless a host writes it.
extern double clock_lag;

/// The time since this context's last reading, in 16.16 seconds; the context then holds the new reading.
/// Correct for up to 18 hours, although readings wrap, because their difference wraps in the same way.
ULONG real_elapsed_time(EClockVal &context);

} // namespace host
