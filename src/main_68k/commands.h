// SPDX-License-Identifier: MIT
// The keyboard and mouse commands.
#pragma once

#include "platform/intuition.h"

/// What the events of one pass asked the frame loop to do.
struct Requests {
    bool quit = false;
    bool change_mode = false;
};

/// Handles all events that wait at a window's port, in order of arrival, and replies to each.
Requests handle_events(MsgPort *port);
