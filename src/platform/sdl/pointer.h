// SPDX-License-Identifier: MIT
// Takes the pointer for the window alone, hidden and with relative motion.
#pragma once

namespace host {

/// Gives the pointer back by itself as soon as the window loses the focus. Called once, when SDL has started.
void watch_focus();

/// Called once per pass. Takes the pointer where that is wanted, the window has the focus, the pointer is
/// over the picture, no button is down and no other program has grabbed it; otherwise a later pass tries
/// again. Frees it where it is not wanted.
void take_or_free_pointer(bool is_wanted);

/// Gives the pointer back at once.
void free_pointer();

/// Whether the pointer is the window's alone.
bool is_pointer_held();

} // namespace host
