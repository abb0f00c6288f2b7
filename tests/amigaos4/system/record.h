// SPDX-License-Identifier: MIT
// Records the calls of the system. The test sets options in environment variables:
//   AMIGA_CALLS      the file that gets a line per call
//   AMIGA_FRAMES     the file that gets a PGM picture per WriteChunkyPixels
//   AMIGA_INPUT      events and answers, in the format of zelvo-render's input files
//   AMIGA_LIBRARIES  "NAME=VERSION ...": libraries with another version than usual, 0 for a missing one
//   AMIGA_REFUSE     the name of a call that returns null
//   AMIGA_WORKBENCH  set if the program is started without a command line
#pragma once

#include <string>

namespace amiga {

/// The value of a variable, empty if it is not set.
std::string told(const char *variable);

/// Writes one line about a call, like printf.
[[gnu::format(printf, 1, 2)]] void record(const char *format, ...);

/// Whether a call with this name must return null. If so, records that it does.
bool refuses(const char *call);

/// Counts what the program holds: +1 when it gets something of this kind, -1 when it gives it back. When the
/// process ends, whatever is still held is recorded.
void hold(const char *kind, int change);

} // namespace amiga
