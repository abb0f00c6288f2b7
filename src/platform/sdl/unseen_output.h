// SPDX-License-Identifier: MIT
// The program's last words, where nobody would see them.
#pragma once

namespace host {

/// Where nobody sees standard output, notes what the program prints there. To be called before it prints
/// anything.
void watch_unseen_output();

/// The run was ended by the user, and not by a failure.
void note_good_end();

} // namespace host
