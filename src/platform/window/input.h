// SPDX-License-Identifier: MIT
// The user's input as the window events that the program knows. Every host with a window defines these
// functions.
#pragma once

#include "platform/intuition.h"

#include <deque>

namespace host {

/// Appends everything that the user did since the last call, in order. What concerns the window alone (full
/// screen, focus, the close button) is handled here; closing counts as request_quit.
void take_input(std::deque<IntuiMessage> &messages);

/// Forgets what the user did since the last call, except a wish to quit; shows the picture again where it was
/// uncovered. For the time when a requester has the user's attention. True if the window has got the focus
/// since the last call.
bool drop_input();

} // namespace host
