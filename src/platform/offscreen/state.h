// SPDX-License-Identifier: MIT
// What the parts of the offscreen host share.
#pragma once

#include "platform/offscreen/host.h"
#include "platform/shared/state.h"

#include <csignal>

namespace offscreen {

/// The host's own state. Reset by set_up.
struct State {
    Setup setup;
    int pass = 0;
    /// Whether a frame was written in this pass and its picture was not delivered yet.
    bool picture_due = false;
    /// Whether the host has sent Esc to the program, which must end with this pass.
    bool is_escape_sent = false;
    int refusable_points = 0;
    std::map<std::string, int> call_counts;
};
extern State state;

/// Set by request_quit. Not part of the state, because a signal handler may set it.
extern volatile std::sig_atomic_t quit_requested;

/// Answers a file requester from the script.
bool answer_file_requester(host::Requester &requester);

/// Answers a screen-mode requester from the script, or confirms it.
bool answer_mode_requester(ScreenModeRequester &requester);

} // namespace offscreen
