// SPDX-License-Identifier: MIT
// The three descriptors that every process is expected to have.
#pragma once

namespace host {

/// Opens the null device on each of the descriptors 0, 1 and 2 that is closed. Otherwise the next file or
/// connection would get that number, and output for the terminal would go into it. Must be called before
/// anything else is opened.
void open_missing_standard_streams();

} // namespace host
