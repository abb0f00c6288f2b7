// SPDX-License-Identifier: MIT
// The keyboard and mouse commands.
#pragma once

#include "platform/intuition.h"

/// What the events of a pass asked of the frame loop.
struct Requests {
    bool quit = false;
    bool change_mode = false;
};

/// Takes every event waiting at a window's port, carries it out in order of arrival and replies to it.
Requests handle_events(MsgPort *port);
