// SPDX-License-Identifier: MIT
// What the system was asked for, and what it was told beforehand. It is told in environment variables:
//   AMIGA_CALLS      the file that gets a line per call
//   AMIGA_FRAMES     the file that gets a PGM picture per WriteChunkyPixels
//   AMIGA_INPUT      events and answers, in the format of zelvo-render's input files
//   AMIGA_LIBRARIES  "NAME=VERSION ...": libraries of another version than the system's own, 0 if there is
//   none AMIGA_REFUSE     the name of a call that returns null AMIGA_WORKBENCH  set if the program is started
//   without a command line
#pragma once

#include <string>

namespace amiga {

/// The value of a variable, empty if it is not set.
std::string told(const char *variable);

/// Writes one line about a call, like printf.
[[gnu::format(printf, 1, 2)]] void record(const char *format, ...);

/// Whether a call of this name has to return null; records that it does.
bool refuses(const char *call);

/// Counts what the program holds: +1 when it gets something of this kind, -1 when it gives it back. When the
/// process ends, whatever is still held is recorded.
void hold(const char *kind, int change);

} // namespace amiga
