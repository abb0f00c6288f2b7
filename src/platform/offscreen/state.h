// SPDX-License-Identifier: MIT
// What the parts of the offscreen host share.
#pragma once

#include "platform/offscreen/host.h"
#include "platform/shared/state.h"

#include <csignal>

namespace offscreen {

/// The host's own state, beside what the program holds of it. Started anew by set_up.
struct State {
    Setup setup;
    int pass = 0;
    /// A frame was written in this pass, and its picture not delivered yet.
    bool picture_due = false;
    /// The program was sent the host's own Esc, and ends with this pass.
    bool is_escape_sent = false;
    int refusable_points = 0;
    std::map<std::string, int> call_counts;
};
extern State state;

/// Set by request_quit; outside the state, since a signal may come at any time.
extern volatile std::sig_atomic_t quit_requested;

/// Answers a file requester from the script.
bool answer_file_requester(host::Requester &requester);

/// Answers a screen-mode requester from the script, or confirms it.
bool answer_mode_requester(ScreenModeRequester &requester);

} // namespace offscreen
