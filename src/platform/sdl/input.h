// SPDX-License-Identifier: MIT
// The user's input as the window events that the program knows.
#pragma once

#include "platform/intuition.h"

#include <deque>

namespace desktop {

/// Appends everything that the user did since the last call, in order. What concerns the window alone (full
/// screen, focus, the close button) is dealt with here; closing counts as request_quit.
void take_input(std::deque<IntuiMessage> &messages);

/// Forgets what the user did since the last call, but for the wish to close the window; shows the picture
/// again where it was uncovered. For the time when a requester has the user's attention. True if the window
/// has got the focus since the last call.
bool drop_input();

/// Called when a requester is closed: keys and buttons that are down are ignored until they are released, and
/// so is the second half of a double click that closed it.
void ignore_what_is_held();

} // namespace desktop
