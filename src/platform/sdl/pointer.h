// SPDX-License-Identifier: MIT
// Captures the pointer for the window: hidden, with relative motion.
#pragma once

namespace host {

/// From now on the pointer is freed as soon as the window loses the focus. Called once, when SDL has started.
void watch_focus();

/// Called once per pass. Captures the pointer if `is_wanted`, the window has the focus, the pointer is over
/// the picture, no button is down and no other program has grabbed it; otherwise a later pass tries again.
/// Frees it if it is not wanted.
void take_or_free_pointer(bool is_wanted);

/// Frees the pointer at once.
void free_pointer();

/// Whether the window has captured the pointer.
bool is_pointer_held();

} // namespace host
