// SPDX-License-Identifier: MIT
// The three descriptors that every process is expected to have.
#pragma once

#include <string>

namespace host {

/// Opens the null device on each of the descriptors 0, 1 and 2 that is closed. Otherwise the next file or
/// connection would get that number, and output for the terminal would go into it. Must be called before
/// anything else is opened.
void open_missing_standard_streams();

/// Whether somebody may read standard output: one of the three is a terminal, or it goes into a pipe or into
/// a file that is not the log of a desktop session. A desktop starts programs with the null device, a socket
/// of the system's journal, or its session's log.
bool is_output_seen();

/// Whether a path is that of a log into which a display manager puts what all programs of a session print.
bool is_session_log(const std::string &path);

} // namespace host
