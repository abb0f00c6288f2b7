// SPDX-License-Identifier: MIT
// Turns the user's input into the program's window events. Every host with a window defines these functions.
#pragma once

#include "platform/intuition.h"

#include <deque>

namespace host {

/// Appends an event for everything that the user did since the last call, in order. Events of the window
/// itself (full screen, focus, the close button) are handled here; the close button calls request_quit.
void take_input(std::deque<IntuiMessage> &messages);

/// Used while a requester is open. Drops all input since the last call except a request to quit, and shows
/// the picture again if it was uncovered. True if the window has got the focus since the last call.
bool drop_input();

} // namespace host
